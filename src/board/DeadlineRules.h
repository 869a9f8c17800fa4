#pragma once

#include "DeadlineUrgency.h"
#include "VeltoDate.h"

#include <QString>
#include <QTimeZone>

#include <optional>

struct Card;

// The day count, urgency and words of a deadline. Everything is counted in calendar days of the
// given zone, so the answer changes at midnight, not 24 hours after the deadline was set.
// Callers pass `QTimeZone::systemTimeZone()` and `VeltoDate::now()`.
namespace DeadlineRules {

// Whole calendar days from the day of `now` to the day of `deadline` in `zone`: a day with a
// daylight-saving change counts as one, a past day is negative, and an unusable zone gives 0.
[[nodiscard]] int daysUntil(VeltoDate deadline, VeltoDate now, const QTimeZone &zone);

// None without a deadline or once complete; otherwise by the day count: overdue before today,
// near up to two days ahead, soon up to seven, none beyond.
[[nodiscard]] DeadlineUrgency deadlineUrgency(std::optional<VeltoDate> deadline, bool isComplete,
                                              VeltoDate now, const QTimeZone &zone);
[[nodiscard]] DeadlineUrgency deadlineUrgency(const Card &card, VeltoDate now, const QTimeZone &zone);

// "Due today", "Due in 3 days", "Overdue by 1 day", ...: the same words whatever the card's status.
[[nodiscard]] QString deadlineText(VeltoDate deadline, VeltoDate now, const QTimeZone &zone);

} // namespace DeadlineRules
