#include "AnalyticsFigures.h"

#include "AnalyticsModel.h"
#include "TimeAggregation.h"
#include "WeekLabel.h"

#include <QSet>

#include <algorithm>
#include <map>

namespace {

constexpr double secondsPerDay = 86400.0;

QList<StuckCard> stuckCards(const QList<Card> &cards, const QHash<QString, Project> &projectByID, VeltoDate now)
{
    QList<StuckCard> stuck;
    for (const Card &card : cards) {
        if (card.status != CardStatus::waiting)
            continue;
        // Whole 24-hour periods, not calendar days: 7 days and 23 hours is still 7.
        const int days = int((now.secondsSinceReferenceDate() - card.statusChangedAt.secondsSinceReferenceDate())
                             / secondsPerDay);
        if (days < AnalyticsModel::stuckFromDays)
            continue;
        std::optional<QString> projectName;
        if (card.projectID) {
            if (const auto project = projectByID.constFind(*card.projectID); project != projectByID.cend())
                projectName = project->name;
        }
        stuck.append({card, days, projectName});
    }
    std::ranges::stable_sort(stuck, [](const StuckCard &a, const StuckCard &b) { return a.days > b.days; });
    return stuck;
}

QList<ProjectTotalRow> projectTotalRows(const QList<TimeSession> &sessions,
                                        const TimeAggregation::ProjectByCard &projectByCard,
                                        const QHash<QString, Project> &projectByID)
{
    QList<ProjectTotalRow> rows;
    for (const auto &[projectID, seconds] : TimeAggregation::projectTotals(sessions, projectByCard)) {
        const auto project = projectID ? projectByID.constFind(*projectID) : projectByID.cend();
        // A project that has gone since keeps a row of its own, under the name of cards without one.
        if (project != projectByID.cend())
            rows.append({project->name, project->color, seconds});
        else
            rows.append({AnalyticsModel::noProjectSeries(), AnalyticsModel::fallbackColor(), seconds});
    }
    std::ranges::stable_sort(rows, [](const ProjectTotalRow &a, const ProjectTotalRow &b) { return a.seconds > b.seconds; });
    return rows;
}

} // namespace

AnalyticsFigures AnalyticsFigures::compute(const QList<Card> &cards, const QList<Project> &projects,
                                           const QList<TimeSession> &sessions, VeltoDate now,
                                           const WeekCalendar &calendar, const QLocale &locale)
{
    TimeAggregation::ProjectByCard projectByCard;
    projectByCard.reserve(cards.size());
    for (const Card &card : cards)
        projectByCard.insert(card.id, card.projectID);
    QHash<QString, Project> projectByID;
    projectByID.reserve(projects.size());
    for (const Project &project : projects)
        projectByID.insert(project.id, project);

    AnalyticsFigures figures;
    figures.stuckInWaiting = stuckCards(cards, projectByID, now);
    figures.projectTotals = projectTotalRows(sessions, projectByCard, projectByID);

    // The weeks, by their labels, oldest first.
    const QList<VeltoDate> weeks = TimeAggregation::weekStarts(now, AnalyticsModel::windowWeeks, calendar);
    std::map<VeltoDate, QString> labelOf;
    for (const VeltoDate start : weeks) {
        const QString label = WeekLabel::of(start, calendar, locale);
        figures.weekLabels.append(label);
        labelOf.emplace(start, label);
    }

    // The named series are the largest of all time, not of the window. A name already taken (a
    // vanished project beside the cards without one) is not named twice, or its hours would stack
    // twice.
    const bool hasOther = figures.projectTotals.size() > AnalyticsModel::namedSeriesLimit;
    QSet<QString> named;
    for (const ProjectTotalRow &row : figures.projectTotals.first(
             std::min<qsizetype>(figures.projectTotals.size(), AnalyticsModel::namedSeriesLimit))) {
        if (named.contains(row.seriesName))
            continue;
        named.insert(row.seriesName);
        figures.seriesNames.append(row.seriesName);
        figures.seriesColors.insert(row.seriesName, row.colorHex);
    }
    if (hasOther) {
        figures.seriesNames.append(AnalyticsModel::otherSeries());
        figures.seriesColors.insert(AnalyticsModel::otherSeries(), AnalyticsModel::fallbackColor());
    }

    QHash<QString, double> hours;
    for (const WeeklyTotal &total : TimeAggregation::weeklyTotals(sessions, projectByCard, now,
                                                                  AnalyticsModel::windowWeeks, calendar)) {
        const auto project = total.projectID ? projectByID.constFind(*total.projectID) : projectByID.cend();
        QString series = project != projectByID.cend() ? project->name : AnalyticsModel::noProjectSeries();
        if (!named.contains(series))
            series = AnalyticsModel::otherSeries();
        const auto known = labelOf.find(total.weekStart);
        const QString label = known != labelOf.end() ? known->second : WeekLabel::of(total.weekStart, calendar, locale);
        hours[WeeklyChartRow{label, series}.identity()] += total.seconds / 3600.0;
    }
    // A full grid, zeros included, so that the stacking and the legend keep their order.
    figures.weeklyRows.reserve(figures.weekLabels.size() * figures.seriesNames.size());
    for (const QString &label : figures.weekLabels) {
        for (const QString &series : figures.seriesNames) {
            WeeklyChartRow row{label, series};
            row.hours = hours.value(row.identity(), 0.0);
            figures.weeklyRows.append(row);
        }
    }

    const auto completed = TimeAggregation::completionsByWeek(cards, now, AnalyticsModel::windowWeeks, calendar);
    for (const VeltoDate start : weeks) {
        const auto count = completed.find(start);
        figures.completions.append({labelOf.at(start), count != completed.end() ? count->second : 0});
    }

    figures.hasAnyTrackedTime = std::ranges::any_of(sessions, [](const TimeSession &s) { return s.endedAt.has_value(); });
    return figures;
}
