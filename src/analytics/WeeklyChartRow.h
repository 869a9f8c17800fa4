#pragma once

#include <QString>

// One bar segment of the hours chart: a series' hours in one week, zero included.
struct WeeklyChartRow {
    QString weekLabel;
    QString seriesName;
    double hours = 0.0;

    // The week's label and the series joined by a vertical bar.
    [[nodiscard]] QString identity() const { return weekLabel + u'|' + seriesName; }

    bool operator==(const WeeklyChartRow &) const = default;
};
