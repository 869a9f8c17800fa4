#include "WeekCalendar.h"

#include <QDateTime>
#include <QLocale>

namespace {

std::optional<VeltoDate> dateOf(const QDateTime &moment)
{
    if (!moment.isValid())
        return std::nullopt;
    const double referenceInMSecs = -VeltoDate::fromStoredSeconds(0).secondsSinceReferenceDate() * 1000.0;
    return VeltoDate((double(moment.toMSecsSinceEpoch()) - referenceInMSecs) / 1000.0);
}

} // namespace

WeekCalendar WeekCalendar::current()
{
    return {QTimeZone::systemTimeZone(), QLocale().firstDayOfWeek()};
}

std::optional<WeekCalendar::Interval> WeekCalendar::week(VeltoDate instant) const
{
    if (!zone.isValid())
        return std::nullopt;
    const QDate day = instant.toDateTime().toTimeZone(zone).date();
    if (!day.isValid())
        return std::nullopt;
    const int daysIntoWeek = (day.dayOfWeek() - int(firstDayOfWeek) + 7) % 7;
    const QDate firstDay = day.addDays(-daysIntoWeek);
    // The start of a day, not its midnight: where a zone skips midnight, the day begins later.
    const auto start = dateOf(firstDay.startOfDay(zone));
    const auto end = dateOf(firstDay.addDays(7).startOfDay(zone));
    if (!start || !end)
        return std::nullopt;
    return Interval{*start, *end};
}

std::optional<VeltoDate> WeekCalendar::addingWeeks(int weeks, VeltoDate date) const
{
    if (!zone.isValid())
        return std::nullopt;
    const QDateTime local = date.toDateTime().toTimeZone(zone);
    if (!local.isValid())
        return std::nullopt;
    const QDate targetDay = local.date().addDays(qint64(weeks) * 7);
    // A day's first instant maps to the first instant of the target day, even when one of the two
    // days starts later than midnight.
    if (local == local.date().startOfDay(zone))
        return dateOf(targetDay.startOfDay(zone));
    return dateOf(local.addDays(qint64(weeks) * 7));
}
