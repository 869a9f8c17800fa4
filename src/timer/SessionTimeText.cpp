#include "SessionTimeText.h"

#include "ElapsedFormat.h"

#include <QDateTime>

#include <cmath>
#include <cstdlib>

using namespace Qt::StringLiterals;

QString SessionTimeText::duration(double seconds)
{
    // Lengths are differences of dates; one that is not finite is a fault upstream.
    if (!std::isfinite(seconds))
        std::abort();
    const qint64 total = std::llround(seconds);
    if (total < 1)
        return u"—"_s;
    if (total < 60)
        return u"%1s"_s.arg(total);
    if (total < 3600)
        return u"%1m"_s.arg(total / 60);
    const qint64 hours = total / 3600;
    const qint64 minutes = total % 3600 / 60;
    return minutes == 0 ? u"%1h"_s.arg(hours) : u"%1h %2m"_s.arg(hours).arg(minutes);
}

QString SessionTimeText::clock(double seconds)
{
    return ElapsedFormat::text(seconds);
}

QString SessionTimeText::between(const QDateTime &start, const QDateTime &end)
{
    return duration(double(start.msecsTo(end)) / 1000.0);
}
