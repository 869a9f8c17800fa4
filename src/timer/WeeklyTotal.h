#pragma once

#include "VeltoDate.h"

#include <QString>

#include <optional>

// The time tracked on one project, or on cards without one, in one calendar week.
struct WeeklyTotal {
    VeltoDate weekStart;
    std::optional<QString> projectID;
    double seconds = 0.0;

    // The week's start in seconds since 1970, a hyphen, and the project's id or "none", so that a
    // chart can tell its bars apart.
    [[nodiscard]] QString identity() const;

    bool operator==(const WeeklyTotal &) const = default;
};
