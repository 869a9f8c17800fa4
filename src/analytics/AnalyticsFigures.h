#pragma once

#include "Card.h"
#include "CompletionRow.h"
#include "Project.h"
#include "ProjectTotalRow.h"
#include "StuckCard.h"
#include "TimeSession.h"
#include "VeltoDate.h"
#include "WeekCalendar.h"
#include "WeeklyChartRow.h"

#include <QHash>
#include <QList>
#include <QLocale>
#include <QString>
#include <QStringList>

// Every figure of the analytics window, computed at once from the whole of the cards, projects
// and sessions. Pure: the moment, the weeks and the locale are arguments.
struct AnalyticsFigures {
    QList<StuckCard> stuckInWaiting;
    QList<ProjectTotalRow> projectTotals;
    QStringList weekLabels;
    QStringList seriesNames;
    QHash<QString, QString> seriesColors;
    QList<WeeklyChartRow> weeklyRows;
    QList<CompletionRow> completions;
    bool hasAnyTrackedTime = false;

    // `cards` in board order (by sort_order), as the store reads them.
    [[nodiscard]] static AnalyticsFigures compute(const QList<Card> &cards, const QList<Project> &projects,
                                                  const QList<TimeSession> &sessions, VeltoDate now,
                                                  const WeekCalendar &calendar, const QLocale &locale);

    bool operator==(const AnalyticsFigures &) const = default;
};
