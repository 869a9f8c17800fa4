#pragma once

#include <QDateTime>
#include <QtGlobal>

#include <compare>

// An instant as a double of seconds since 2001-01-01 00:00:00 UTC. Records hold it floored to a
// whole second; the database holds whole seconds since 1970, which is what `storedSeconds` and
// `fromStoredSeconds` convert to and from.
class VeltoDate {
public:
    constexpr VeltoDate() = default;
    constexpr explicit VeltoDate(double secondsSinceReferenceDate)
        : m_seconds(secondsSinceReferenceDate)
    {
    }

    [[nodiscard]] static VeltoDate now();
    [[nodiscard]] static VeltoDate fromStoredSeconds(qint64 secondsSince1970);

    [[nodiscard]] constexpr double secondsSinceReferenceDate() const { return m_seconds; }
    [[nodiscard]] VeltoDate floored() const;
    // Floors and shifts to 1970. An instant that is not finite or does not fit 64 bits cannot come
    // from a clock, so it ends the program rather than corrupting a row.
    [[nodiscard]] qint64 storedSeconds() const;
    [[nodiscard]] QDateTime toDateTime() const;

    constexpr auto operator<=>(const VeltoDate &) const = default;

private:
    double m_seconds = 0.0;
};
