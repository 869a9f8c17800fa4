#include "VeltoDate.h"

#include <QtNumeric>

#include <cmath>
#include <cstdlib>

namespace {

// Seconds from 1970-01-01 to 2001-01-01, both UTC.
constexpr qint64 referenceDateSince1970 = 978307200;

} // namespace

VeltoDate VeltoDate::now()
{
    return VeltoDate(double(QDateTime::currentMSecsSinceEpoch()) / 1000.0 - double(referenceDateSince1970));
}

VeltoDate VeltoDate::fromStoredSeconds(qint64 secondsSince1970)
{
    return VeltoDate(double(secondsSince1970) - double(referenceDateSince1970));
}

VeltoDate VeltoDate::floored() const
{
    return VeltoDate(std::floor(m_seconds));
}

qint64 VeltoDate::storedSeconds() const
{
    // 2^63 is exact as a double; every double in [-2^63, 2^63) converts without overflow.
    constexpr double limit = 9223372036854775808.0;
    const double whole = std::floor(m_seconds);
    if (!std::isfinite(whole) || whole < -limit || whole >= limit)
        std::abort();
    qint64 stored = 0;
    if (qAddOverflow(qint64(whole), referenceDateSince1970, &stored))
        std::abort();
    return stored;
}

QDateTime VeltoDate::toDateTime() const
{
    const double millis = (m_seconds + double(referenceDateSince1970)) * 1000.0;
    return QDateTime::fromMSecsSinceEpoch(qint64(std::floor(millis)), Qt::UTC);
}
