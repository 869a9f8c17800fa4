#pragma once

#include "VeltoDate.h"

#include <QTimeZone>

#include <optional>

// The weeks of one place: a time zone with its daylight-saving rules and the day a week starts on.
// Callers that show weeks to the user pass `current()`; tests pin both.
struct WeekCalendar {
    struct Interval {
        VeltoDate start;
        VeltoDate end;

        bool operator==(const Interval &) const = default;
    };

    QTimeZone zone;
    Qt::DayOfWeek firstDayOfWeek = Qt::Monday;

    // The system's time zone and the week of the user's locale.
    [[nodiscard]] static WeekCalendar current();

    // The week that holds `instant`, from the first instant of its first day to the first instant
    // of the next week; absent for an unusable zone or a date out of range.
    [[nodiscard]] std::optional<Interval> week(VeltoDate instant) const;

    // `weeks` calendar weeks later (or earlier), at the same wall-clock time, so a week start stays
    // a week start across a daylight-saving change.
    [[nodiscard]] std::optional<VeltoDate> addingWeeks(int weeks, VeltoDate date) const;

    bool operator==(const WeekCalendar &) const = default;
};
