#pragma once

#include <QString>

// All the time tracked on one series of the chart: a project, or the cards without one.
struct ProjectTotalRow {
    QString seriesName;
    QString colorHex;
    double seconds = 0.0;

    bool operator==(const ProjectTotalRow &) const = default;
};
