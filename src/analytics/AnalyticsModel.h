#pragma once

#include "CompletionRow.h"
#include "ProjectTotalRow.h"
#include "StuckCard.h"
#include "Task.h"
#include "VeltoDate.h"
#include "VeltoServices.h"
#include "WeekCalendar.h"
#include "WeeklyChartRow.h"

#include <QHash>
#include <QList>
#include <QLocale>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <QVariantMap>
#include <QtQml/qqmlregistration.h>

#include <optional>

// The figures of the analytics window: hours per project per week, all-time totals, completions
// per week and the cards that have waited too long. Each reload reads the cards, projects and
// sessions whole and recomputes everything; nothing is kept on disk or updated piecemeal.
class AnalyticsModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application makes its one AnalyticsModel")
    Q_PROPERTY(QVariantList stuckInWaiting READ stuckInWaitingForViews NOTIFY stuckInWaitingChanged)
    Q_PROPERTY(QVariantList weeklyRows READ weeklyRowsForViews NOTIFY weeklyRowsChanged)
    Q_PROPERTY(QStringList weekLabels READ weekLabels NOTIFY weekLabelsChanged)
    Q_PROPERTY(QStringList seriesNames READ seriesNames NOTIFY seriesNamesChanged)
    Q_PROPERTY(QVariantMap seriesColors READ seriesColorsForViews NOTIFY seriesColorsChanged)
    Q_PROPERTY(QVariantList completions READ completionsForViews NOTIFY completionsChanged)
    Q_PROPERTY(QVariantList projectTotals READ projectTotalsForViews NOTIFY projectTotalsChanged)
    Q_PROPERTY(bool isLoading READ isLoading NOTIFY isLoadingChanged)
    Q_PROPERTY(QString errorMessage READ errorMessageText NOTIFY errorMessageChanged)
    Q_PROPERTY(bool hasAnyTrackedTime READ hasAnyTrackedTime NOTIFY hasAnyTrackedTimeChanged)

public:
    static constexpr int windowWeeks = 8;
    static constexpr int namedSeriesLimit = 8;
    static constexpr int stuckFromDays = 8;

    explicit AnalyticsModel(VeltoServices services, QObject *parent = nullptr);

    [[nodiscard]] static QString fallbackColor();
    [[nodiscard]] static QString noProjectSeries();
    [[nodiscard]] static QString otherSeries();

    [[nodiscard]] const QList<StuckCard> &stuckInWaiting() const { return m_stuckInWaiting; }
    [[nodiscard]] const QList<WeeklyChartRow> &weeklyRows() const { return m_weeklyRows; }
    [[nodiscard]] const QStringList &weekLabels() const { return m_weekLabels; }
    [[nodiscard]] const QStringList &seriesNames() const { return m_seriesNames; }
    [[nodiscard]] const QHash<QString, QString> &seriesColors() const { return m_seriesColors; }
    [[nodiscard]] const QList<CompletionRow> &completions() const { return m_completions; }
    [[nodiscard]] const QList<ProjectTotalRow> &projectTotals() const { return m_projectTotals; }
    [[nodiscard]] bool isLoading() const { return m_isLoading; }
    [[nodiscard]] const std::optional<QString> &errorMessage() const { return m_errorMessage; }
    [[nodiscard]] bool hasAnyTrackedTime() const { return m_hasAnyTrackedTime; }

    // Reads everything again and recomputes every figure for the weeks up to the one holding
    // `now`; a failed read leaves the last good figures and says why in errorMessage.
    Task<> reload(VeltoDate now, WeekCalendar calendar, QLocale locale = QLocale());

    // What the window calls when it opens: the present moment and the user's own weeks.
    Q_INVOKABLE void requestReload();
    Q_INVOKABLE void clearError();

signals:
    void stuckInWaitingChanged();
    void weeklyRowsChanged();
    void weekLabelsChanged();
    void seriesNamesChanged();
    void seriesColorsChanged();
    void completionsChanged();
    void projectTotalsChanged();
    void isLoadingChanged();
    void errorMessageChanged();
    void hasAnyTrackedTimeChanged();

private:
    [[nodiscard]] QVariantList stuckInWaitingForViews() const;
    [[nodiscard]] QVariantList weeklyRowsForViews() const;
    [[nodiscard]] QVariantMap seriesColorsForViews() const;
    [[nodiscard]] QVariantList completionsForViews() const;
    [[nodiscard]] QVariantList projectTotalsForViews() const;
    [[nodiscard]] QString errorMessageText() const { return m_errorMessage.value_or(QString()); }

    void setStuckInWaiting(QList<StuckCard> value);
    void setWeeklyRows(QList<WeeklyChartRow> value);
    void setWeekLabels(QStringList value);
    void setSeriesNames(QStringList value);
    void setSeriesColors(QHash<QString, QString> value);
    void setCompletions(QList<CompletionRow> value);
    void setProjectTotals(QList<ProjectTotalRow> value);
    void setLoading(bool value);
    void setErrorMessage(std::optional<QString> value);
    void setHasAnyTrackedTime(bool value);

    VeltoServices m_services;
    QList<StuckCard> m_stuckInWaiting;
    QList<WeeklyChartRow> m_weeklyRows;
    QStringList m_weekLabels;
    QStringList m_seriesNames;
    QHash<QString, QString> m_seriesColors;
    QList<CompletionRow> m_completions;
    QList<ProjectTotalRow> m_projectTotals;
    bool m_isLoading = false;
    std::optional<QString> m_errorMessage;
    bool m_hasAnyTrackedTime = false;
};
