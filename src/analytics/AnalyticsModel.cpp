#include "AnalyticsModel.h"

#include "AnalyticsFigures.h"
#include "AssignIfChanged.h"
#include "TimeAggregation.h"

#include <QPointer>

#include <exception>

using namespace Qt::StringLiterals;

AnalyticsModel::AnalyticsModel(VeltoServices services, QObject *parent)
    : QObject(parent), m_services(std::move(services))
{
}

QString AnalyticsModel::fallbackColor()
{
    return u"#8E8E93"_s;
}

QString AnalyticsModel::noProjectSeries()
{
    return u"No Project"_s;
}

QString AnalyticsModel::otherSeries()
{
    return u"Other"_s;
}

Task<> AnalyticsModel::reload(VeltoDate now, WeekCalendar calendar, QLocale locale)
{
    QPointer<AnalyticsModel> self(this);
    const auto database = m_services.database;
    setLoading(true);
    QList<Card> cards;
    QList<Project> projects;
    QList<TimeSession> sessions;
    try {
        // Three reads, one after the other and not one transaction: a figure off by a write that
        // fell between them is corrected by the next opening.
        cards = co_await database->allCards();
        projects = co_await database->allProjects();
        sessions = co_await database->allSessions();
    } catch (const std::exception &failure) {
        if (self) {
            setErrorMessage(QString::fromUtf8(failure.what()));
            setLoading(false);
        }
        co_return;
    }
    if (!self)
        co_return;

    AnalyticsFigures figures = AnalyticsFigures::compute(cards, projects, sessions, now, calendar, locale);
    setStuckInWaiting(std::move(figures.stuckInWaiting));
    setProjectTotals(std::move(figures.projectTotals));
    setWeekLabels(std::move(figures.weekLabels));
    setSeriesNames(std::move(figures.seriesNames));
    setSeriesColors(std::move(figures.seriesColors));
    setWeeklyRows(std::move(figures.weeklyRows));
    setCompletions(std::move(figures.completions));
    setHasAnyTrackedTime(figures.hasAnyTrackedTime);
    setErrorMessage(std::nullopt);
    setLoading(false);
}

void AnalyticsModel::requestReload()
{
    reload(VeltoDate::now(), WeekCalendar::current());
}

void AnalyticsModel::clearError()
{
    setErrorMessage(std::nullopt);
}

QVariantList AnalyticsModel::stuckInWaitingForViews() const
{
    QVariantList rows;
    for (const StuckCard &stuck : m_stuckInWaiting)
        rows.append(QVariantMap{{u"cardID"_s, stuck.card.id},
                                {u"displayName"_s, stuck.card.displayName},
                                {u"projectName"_s, stuck.projectName.value_or(QString())},
                                {u"days"_s, stuck.days}});
    return rows;
}

QVariantList AnalyticsModel::weeklyRowsForViews() const
{
    QVariantList rows;
    for (const WeeklyChartRow &row : m_weeklyRows)
        rows.append(QVariantMap{{u"weekLabel"_s, row.weekLabel}, {u"seriesName"_s, row.seriesName}, {u"hours"_s, row.hours}});
    return rows;
}

QVariantMap AnalyticsModel::seriesColorsForViews() const
{
    QVariantMap colors;
    for (auto entry = m_seriesColors.cbegin(); entry != m_seriesColors.cend(); ++entry)
        colors.insert(entry.key(), entry.value());
    return colors;
}

QVariantList AnalyticsModel::completionsForViews() const
{
    QVariantList rows;
    for (const CompletionRow &row : m_completions)
        rows.append(QVariantMap{{u"weekLabel"_s, row.weekLabel}, {u"count"_s, row.count}});
    return rows;
}

QVariantList AnalyticsModel::projectTotalsForViews() const
{
    QVariantList rows;
    for (const ProjectTotalRow &row : m_projectTotals)
        rows.append(QVariantMap{{u"seriesName"_s, row.seriesName},
                                {u"colorHex"_s, row.colorHex},
                                {u"duration"_s, TimeAggregation::durationText(row.seconds)}});
    return rows;
}

void AnalyticsModel::setStuckInWaiting(QList<StuckCard> value)
{
    if (assignIfChanged(m_stuckInWaiting, std::move(value)))
        emit stuckInWaitingChanged();
}

void AnalyticsModel::setWeeklyRows(QList<WeeklyChartRow> value)
{
    if (assignIfChanged(m_weeklyRows, std::move(value)))
        emit weeklyRowsChanged();
}

void AnalyticsModel::setWeekLabels(QStringList value)
{
    if (assignIfChanged(m_weekLabels, std::move(value)))
        emit weekLabelsChanged();
}

void AnalyticsModel::setSeriesNames(QStringList value)
{
    if (assignIfChanged(m_seriesNames, std::move(value)))
        emit seriesNamesChanged();
}

void AnalyticsModel::setSeriesColors(QHash<QString, QString> value)
{
    if (assignIfChanged(m_seriesColors, std::move(value)))
        emit seriesColorsChanged();
}

void AnalyticsModel::setCompletions(QList<CompletionRow> value)
{
    if (assignIfChanged(m_completions, std::move(value)))
        emit completionsChanged();
}

void AnalyticsModel::setProjectTotals(QList<ProjectTotalRow> value)
{
    if (assignIfChanged(m_projectTotals, std::move(value)))
        emit projectTotalsChanged();
}

void AnalyticsModel::setLoading(bool value)
{
    if (assignIfChanged(m_isLoading, value))
        emit isLoadingChanged();
}

void AnalyticsModel::setErrorMessage(std::optional<QString> value)
{
    if (assignIfChanged(m_errorMessage, std::move(value)))
        emit errorMessageChanged();
}

void AnalyticsModel::setHasAnyTrackedTime(bool value)
{
    if (assignIfChanged(m_hasAnyTrackedTime, value))
        emit hasAnyTrackedTimeChanged();
}
