#pragma once

#include "AnalyticsModel.h"
#include "Await.h"
#include "Identifier.h"
#include "StoreFixture.h"

#include <QDateTime>
#include <QTimeZone>

#include <memory>

// A real database whose projects, cards and sessions a test places by hand, and an analytics model
// over it. The present is Wednesday 11 March 2026 at noon, UTC; weeks start on Monday.
class AnalyticsFixture : public StoreFixture {
protected:
    static constexpr double hour = 3600.0;
    static constexpr double day = 86400.0;

    void SetUp() override
    {
        StoreFixture::SetUp();
        if (IsSkipped())
            return;
        VeltoServices services{{}, database().shared_from_this(), {}, {}};
        m_model = std::make_unique<AnalyticsModel>(services);
    }

    static VeltoDate now()
    {
        return VeltoDate::fromStoredSeconds(QDateTime(QDate(2026, 3, 11), QTime(12, 0), QTimeZone::utc()).toSecsSinceEpoch());
    }
    static VeltoDate ago(double seconds) { return VeltoDate(now().secondsSinceReferenceDate() - seconds); }
    static WeekCalendar calendar(Qt::DayOfWeek first = Qt::Monday) { return {QTimeZone::utc(), first}; }

    AnalyticsModel &model() { return *m_model; }

    void reload(WeekCalendar weeks = calendar(), QLocale locale = QLocale(QLocale::English, QLocale::UnitedKingdom))
    {
        await(m_model->reload(now(), weeks, locale));
    }

    QString project(const QString &name, const QString &color = QStringLiteral("#2A78D6"))
    {
        const QString id = newIdentifier();
        await(database().insertProject({id, name, color}));
        return id;
    }

    QString card(const QString &name, std::optional<QString> projectID = std::nullopt,
                 CardStatus status = CardStatus::inProgress, VeltoDate statusChangedAt = VeltoDate(1000),
                 double sortOrder = -1)
    {
        Card made = makeCard(name, status, sortOrder < 0 ? ++m_order : sortOrder);
        made.projectID = std::move(projectID);
        made.statusChangedAt = statusChangedAt;
        await(database().insertCard(made));
        return made.id;
    }

    // A finished session of `hours` that ended `endedAgo` seconds before now.
    void tracked(const QString &cardID, double hours, double endedAgo = hour)
    {
        const double end = now().secondsSinceReferenceDate() - endedAgo;
        await(database().insertSession(makeSession(newIdentifier(), cardID, end - hours * hour, end)));
    }

    // The hours of `series` in each of the eight weeks, oldest first.
    QList<double> hoursOf(const QString &series)
    {
        QList<double> hours;
        for (const WeeklyChartRow &row : model().weeklyRows())
            if (row.seriesName == series)
                hours.append(row.hours);
        return hours;
    }

private:
    std::unique_ptr<AnalyticsModel> m_model;
    double m_order = 0;
};
