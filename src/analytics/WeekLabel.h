#pragma once

#include "VeltoDate.h"
#include "WeekCalendar.h"

#include <QLocale>
#include <QString>

// The short name of a week on the analytics charts: the day and abbreviated month of its start,
// in the order the locale writes them ("12 Jan" or "Jan 12").
namespace WeekLabel {

// The locale's own arrangement of a day and an abbreviated month.
[[nodiscard]] QString format(const QLocale &locale);

// The label of the week that starts at `weekStart`, read in the calendar's time zone.
[[nodiscard]] QString of(VeltoDate weekStart, const WeekCalendar &calendar, const QLocale &locale);

} // namespace WeekLabel
