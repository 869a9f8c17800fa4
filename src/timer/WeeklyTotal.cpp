#include "WeeklyTotal.h"

#include <QLocale>

#include <cmath>

using namespace Qt::StringLiterals;

QString WeeklyTotal::identity() const
{
    const double since1970 =
        weekStart.secondsSinceReferenceDate() - VeltoDate::fromStoredSeconds(0).secondsSinceReferenceDate();
    // A double's shortest exact digits, with ".0" kept on a whole number so the text reads as one.
    QString seconds = QString::number(since1970, 'f', QLocale::FloatingPointShortest);
    if (std::isfinite(since1970) && since1970 == std::trunc(since1970))
        seconds += u".0"_s;
    return seconds + u'-' + projectID.value_or(u"none"_s);
}
