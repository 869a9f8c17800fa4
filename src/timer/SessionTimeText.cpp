#include "SessionTimeText.h"

#include "TimeAggregation.h"

#include <QDateTime>

QString SessionTimeText::duration(double seconds)
{
    return TimeAggregation::durationText(seconds);
}

QString SessionTimeText::clock(double seconds)
{
    return TimeAggregation::clockText(seconds);
}

QString SessionTimeText::between(const QDateTime &start, const QDateTime &end)
{
    return duration(double(start.msecsTo(end)) / 1000.0);
}
