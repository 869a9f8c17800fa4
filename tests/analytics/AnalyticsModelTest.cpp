#include "AnalyticsFixture.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

using AnalyticsModelTest = AnalyticsFixture;

TEST_F(AnalyticsModelTest, NothingEndedLeavesEmptySeriesButEightWeeks)
{
    const struct {
        const char *name;
        bool running;
    } cases[] = {{"no sessions at all", false}, {"only a running session", true}};
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        SetUp(); // a fresh database and model for each case
        const QString cardID = card(u"Atlas"_s, project(u"Thesis"_s));
        if (c.running)
            await(database().insertSession(makeSession(newIdentifier(), cardID, ago(hour).secondsSinceReferenceDate())));
        reload();
        EXPECT_FALSE(model().hasAnyTrackedTime());
        EXPECT_TRUE(model().seriesNames().isEmpty());
        EXPECT_TRUE(model().weeklyRows().isEmpty());
        EXPECT_TRUE(model().projectTotals().isEmpty());
        EXPECT_EQ(model().weekLabels().size(), 8);
        ASSERT_EQ(model().completions().size(), 8);
        for (const CompletionRow &row : model().completions())
            EXPECT_EQ(row.count, 0);
        EXPECT_FALSE(model().isLoading());
    }
}

// Each line: a series and its hours this week and twenty weeks ago (outside the window); an empty
// name is a card without a project.
struct Tracked {
    QString series;
    double hoursNow;
    double hoursLongAgo = 0;
};

TEST_F(AnalyticsModelTest, TheEightLargestOfAllTimeAreNamedAndTheRestIsOther)
{
    const QStringList eight{u"P1"_s, u"P2"_s, u"P3"_s, u"P4"_s, u"P5"_s, u"P6"_s, u"P7"_s, u"P8"_s};
    const struct {
        const char *name;
        QList<Tracked> tracked;
        QStringList series;
        double otherHoursNow;
    } cases[] = {
        {"exactly eight projects",
         {{u"P1"_s, 8}, {u"P2"_s, 7}, {u"P3"_s, 6}, {u"P4"_s, 5}, {u"P5"_s, 4}, {u"P6"_s, 3}, {u"P7"_s, 2}, {u"P8"_s, 1}},
         eight,
         0},
        {"nine projects",
         {{u"P1"_s, 9}, {u"P2"_s, 8}, {u"P3"_s, 7}, {u"P4"_s, 6}, {u"P5"_s, 5}, {u"P6"_s, 4}, {u"P7"_s, 3}, {u"P8"_s, 2},
          {u"P9"_s, 1}},
         eight + QStringList{u"Other"_s},
         1},
        {"time without a project takes a place among the eight",
         {{u"P1"_s, 9}, {u"P2"_s, 8}, {u""_s, 7.5}, {u"P3"_s, 7}, {u"P4"_s, 6}, {u"P5"_s, 5}, {u"P6"_s, 4}, {u"P7"_s, 3},
          {u"P8"_s, 2}},
         {u"P1"_s, u"P2"_s, u"No Project"_s, u"P3"_s, u"P4"_s, u"P5"_s, u"P6"_s, u"P7"_s, u"Other"_s},
         2},
        {"time without a project can itself end in Other",
         {{u"P1"_s, 9}, {u"P2"_s, 8}, {u"P3"_s, 7}, {u"P4"_s, 6}, {u"P5"_s, 5}, {u"P6"_s, 4}, {u"P7"_s, 3}, {u"P8"_s, 2},
          {u""_s, 0.5}},
         eight + QStringList{u"Other"_s},
         0.5},
        {"ranked by all time, not by the window",
         {{u"P1"_s, 0, 100}, {u"P2"_s, 8}, {u"P3"_s, 7}, {u"P4"_s, 6}, {u"P5"_s, 5}, {u"P6"_s, 4}, {u"P7"_s, 3},
          {u"P8"_s, 2}, {u"P9"_s, 1.5}},
         eight + QStringList{u"Other"_s},
         1.5},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        SetUp(); // a fresh database and model for each case
        for (const Tracked &line : c.tracked) {
            const QString cardID = line.series.isEmpty() ? card(u"loose"_s + QString::number(line.hoursNow))
                                                         : card(line.series, project(line.series));
            if (line.hoursNow > 0)
                tracked(cardID, line.hoursNow);
            if (line.hoursLongAgo > 0)
                tracked(cardID, line.hoursLongAgo, 20 * 7 * day);
        }
        reload();

        EXPECT_EQ(model().seriesNames(), c.series);
        EXPECT_EQ(model().seriesColors().size(), c.series.size());
        EXPECT_EQ(model().seriesColors().value(u"Other"_s, u"absent"_s),
                  c.series.contains(u"Other"_s) ? u"#8E8E93"_s : u"absent"_s);
        // A full grid: a row for every week and series, in label order, then series order.
        ASSERT_EQ(model().weeklyRows().size(), 8 * c.series.size());
        for (qsizetype i = 0; i < model().weeklyRows().size(); ++i) {
            EXPECT_EQ(model().weeklyRows()[i].weekLabel, model().weekLabels()[i / c.series.size()]);
            EXPECT_EQ(model().weeklyRows()[i].seriesName, c.series[i % c.series.size()]);
        }
        if (c.series.contains(u"Other"_s)) {
            EXPECT_DOUBLE_EQ(hoursOf(u"Other"_s).last(), c.otherHoursNow);
        }
        // A named series with no time in the window keeps its eight rows, all zero.
        if (c.tracked.first().hoursNow == 0) {
            EXPECT_EQ(hoursOf(c.tracked.first().series), QList<double>(8, 0.0));
        }
        EXPECT_DOUBLE_EQ(hoursOf(u"P2"_s).last(), c.tracked[1].hoursNow);
        EXPECT_TRUE(model().hasAnyTrackedTime());
    }
}

TEST_F(AnalyticsModelTest, TotalsAreAllTimeLargestFirstAndADeletedProjectsTimeHasNoProject)
{
    const QString thesis = project(u"Thesis"_s, u"#FF9500"_s);
    const QString gone = project(u"Gone"_s, u"#34C759"_s);
    tracked(card(u"Atlas"_s, thesis), 2, 30 * 7 * day);
    tracked(card(u"Beacon"_s, gone), 3);
    tracked(card(u"Cobalt"_s), 1);
    await(database().deleteProject(gone));
    reload();

    const QList<ProjectTotalRow> expected{{u"No Project"_s, u"#8E8E93"_s, 4 * hour}, {u"Thesis"_s, u"#FF9500"_s, 2 * hour}};
    EXPECT_EQ(model().projectTotals(), expected);
    EXPECT_EQ(model().seriesNames(), (QStringList{u"No Project"_s, u"Thesis"_s}));
    EXPECT_EQ(hoursOf(u"No Project"_s).last(), 4.0);
    EXPECT_EQ(model().seriesColors().value(u"Thesis"_s), u"#FF9500"_s);
}

TEST_F(AnalyticsModelTest, CardsWaitingEightWholeDaysOrMoreAreStuckLongestFirst)
{
    const QString thesis = project(u"Thesis"_s);
    // name, status, time in that status, sort order
    const struct {
        QString name;
        CardStatus status;
        double waited;
        double order;
        std::optional<QString> projectID;
    } cards[] = {
        {u"almost"_s, CardStatus::waiting, 7 * day + 23 * hour, 1, std::nullopt},
        {u"eight-b"_s, CardStatus::waiting, 8 * day + hour, 4, std::nullopt},
        {u"eight-a"_s, CardStatus::waiting, 8 * day, 3, thesis},
        {u"hundred"_s, CardStatus::waiting, 100 * day, 5, std::nullopt},
        {u"busy"_s, CardStatus::inProgress, 200 * day, 2, std::nullopt},
    };
    for (const auto &c : cards)
        card(c.name, c.projectID, c.status, ago(c.waited), c.order);
    reload();

    QList<std::tuple<QString, int, std::optional<QString>>> stuck;
    for (const StuckCard &s : model().stuckInWaiting())
        stuck.append({s.card.displayName, s.days, s.projectName});
    const QList<std::tuple<QString, int, std::optional<QString>>> expected{
        {u"hundred"_s, 100, std::nullopt}, {u"eight-a"_s, 8, u"Thesis"_s}, {u"eight-b"_s, 8, std::nullopt}};
    EXPECT_EQ(stuck, expected);
}

TEST_F(AnalyticsModelTest, WeeksAreLabelledInTheLocaleAndStartOnItsFirstDay)
{
    card(u"Done"_s, std::nullopt, CardStatus::complete, ago(day)); // Tuesday 10 March
    card(u"Earlier"_s, std::nullopt, CardStatus::complete, ago(9 * day));
    const struct {
        const char *name;
        Qt::DayOfWeek first;
        QLocale locale;
        QString oldest;
        QString newest;
    } cases[] = {
        {"Monday weeks, day first", Qt::Monday, QLocale(QLocale::English, QLocale::UnitedKingdom), u"19 Jan"_s, u"9 Mar"_s},
        {"Sunday weeks, month first", Qt::Sunday, QLocale(QLocale::English, QLocale::UnitedStates), u"Jan 18"_s, u"Mar 8"_s},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        reload(calendar(c.first), c.locale);
        ASSERT_EQ(model().weekLabels().size(), 8);
        EXPECT_EQ(model().weekLabels().first(), c.oldest);
        EXPECT_EQ(model().weekLabels().last(), c.newest);
        ASSERT_EQ(model().completions().size(), 8);
        EXPECT_EQ(model().completions().last(), (CompletionRow{c.newest, 1}));
        EXPECT_EQ(model().completions()[6].count, 1);
    }
}

TEST_F(AnalyticsModelTest, AFailedReadKeepsTheLastGoodFiguresAndSaysWhy)
{
    tracked(card(u"Atlas"_s, project(u"Thesis"_s)), 2);
    reload();
    const QList<ProjectTotalRow> good = model().projectTotals();
    const QList<WeeklyChartRow> rows = model().weeklyRows();
    ASSERT_FALSE(good.isEmpty());

    // The same figures again change nothing that anyone observes.
    QSignalSpy rowChanges(&model(), &AnalyticsModel::weeklyRowsChanged);
    QSignalSpy totalChanges(&model(), &AnalyticsModel::projectTotalsChanged);
    reload();
    EXPECT_EQ(rowChanges.count() + totalChanges.count(), 0);

    execute(u"DROP TABLE time_sessions"_s);
    reload();
    ASSERT_TRUE(model().errorMessage().has_value());
    EXPECT_TRUE(model().errorMessage()->contains(u"time_sessions"_s)) << model().errorMessage()->toStdString();
    EXPECT_FALSE(model().isLoading());
    EXPECT_EQ(model().projectTotals(), good);
    EXPECT_EQ(model().weeklyRows(), rows);
    EXPECT_TRUE(model().hasAnyTrackedTime());

    model().clearError();
    EXPECT_FALSE(model().errorMessage().has_value());
}

} // namespace
