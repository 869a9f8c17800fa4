#pragma once

#include <QAnyStringView>
#include <QString>

#include <array>
#include <optional>

// How urgent a card is, highest first; the declaration order is the rank used when sorting.
enum class Priority { now, next, today, thisWeek, later };

inline constexpr std::array allPriorities{Priority::now, Priority::next, Priority::today,
                                          Priority::thisWeek, Priority::later};

[[nodiscard]] std::optional<Priority> priorityFromRawValue(QAnyStringView raw);
[[nodiscard]] QString rawValue(Priority priority);
[[nodiscard]] QString label(Priority priority);
[[nodiscard]] QString symbol(Priority priority);
// 0 for `now`, growing towards `later`.
[[nodiscard]] int rank(Priority priority);
