#include "ElapsedFormat.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

using namespace Qt::StringLiterals;

QString ElapsedFormat::text(double seconds)
{
    // A clock that reads NaN or infinity is a fault upstream, not something to paper over.
    if (!std::isfinite(seconds))
        std::abort();
    const qint64 total = std::max<qint64>(0, std::llround(seconds));
    const qint64 hours = total / 3600;
    const qint64 minutes = total % 3600 / 60;
    const qint64 rest = total % 60;
    if (hours > 0)
        return u"%1:%2:%3"_s.arg(hours).arg(minutes, 2, 10, QLatin1Char('0')).arg(rest, 2, 10, QLatin1Char('0'));
    return u"%1:%2"_s.arg(minutes).arg(rest, 2, 10, QLatin1Char('0'));
}
