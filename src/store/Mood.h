#pragma once

#include <QAnyStringView>
#include <QString>

#include <array>
#include <optional>

// How a finished focus session felt. The raw values are the only words the system has for them.
enum class Mood { deep, focused, ok, scattered, interrupted };

inline constexpr std::array allMoods{Mood::deep, Mood::focused, Mood::ok, Mood::scattered,
                                     Mood::interrupted};

[[nodiscard]] std::optional<Mood> moodFromRawValue(QAnyStringView raw);
[[nodiscard]] QString rawValue(Mood mood);
// The word the rating shows for the mood.
[[nodiscard]] QString label(Mood mood);
// The symbol the rating shows beside the word.
[[nodiscard]] QString symbol(Mood mood);
