#pragma once

#include "ColorPair.h"

#include <QAnyStringView>
#include <QString>

#include <array>
#include <optional>

// The four columns of the board, left to right; the raw values are the words stored in `cards`.
enum class CardStatus { notStarted, inProgress, waiting, complete };

inline constexpr std::array allCardStatuses{CardStatus::notStarted, CardStatus::inProgress,
                                            CardStatus::waiting, CardStatus::complete};

[[nodiscard]] std::optional<CardStatus> cardStatusFromRawValue(QAnyStringView raw);
[[nodiscard]] QString rawValue(CardStatus status);
[[nodiscard]] QString label(CardStatus status);
[[nodiscard]] QString symbol(CardStatus status);

// Marks the status on a card and on drop targets.
[[nodiscard]] ColorPair accentColor(CardStatus status);
// The background of the status's column.
[[nodiscard]] ColorPair columnFill(CardStatus status);
// The count pill in the column's head: its fill and its text.
[[nodiscard]] ColorPair pillFill(CardStatus status);
[[nodiscard]] ColorPair pillText(CardStatus status);
