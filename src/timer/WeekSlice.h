#pragma once

#include "VeltoDate.h"

// The part of one interval that falls into one calendar week, labelled by the week's start.
struct WeekSlice {
    VeltoDate weekStart;
    double seconds = 0.0;

    bool operator==(const WeekSlice &) const = default;
};
