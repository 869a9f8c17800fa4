#include "Durations.h"

#include "TimeAggregation.h"

QString Durations::clockText(double seconds)
{
    return TimeAggregation::clockText(seconds);
}
