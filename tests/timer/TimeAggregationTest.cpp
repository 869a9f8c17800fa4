#include "TimeAggregation.h"

#include <QDateTime>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

const QTimeZone berlin("Europe/Berlin");
const QTimeZone newYork("America/New_York");

// A wall-clock time of `zone`, as "2026-03-29T02:30".
VeltoDate at(const QString &local, const QTimeZone &zone)
{
    QDateTime moment = QDateTime::fromString(local, Qt::ISODate);
    moment.setTimeZone(zone);
    return VeltoDate::fromStoredSeconds(moment.toSecsSinceEpoch());
}

struct Slice {
    QString weekStart;
    double hours;
};

TEST(TimeAggregation, SlicesAnIntervalAtTheWeekBoundariesOfTheCalendar)
{
    const struct {
        const char *name;
        QTimeZone zone;
        Qt::DayOfWeek firstDay;
        QString start, end;
        QList<Slice> slices;
    } cases[] = {
        {"Sunday night to Monday, weeks from Monday", berlin, Qt::Monday, u"2026-01-04T23:30"_s, u"2026-01-05T00:30"_s,
         {{u"2025-12-29T00:00"_s, 0.5}, {u"2026-01-05T00:00"_s, 0.5}}},
        {"Sunday night to Monday, weeks from Sunday", berlin, Qt::Sunday, u"2026-01-04T23:30"_s,
         u"2026-01-05T00:30"_s, {{u"2026-01-04T00:00"_s, 1}}},
        {"ending on the boundary", berlin, Qt::Monday, u"2026-01-04T22:00"_s, u"2026-01-05T00:00"_s,
         {{u"2025-12-29T00:00"_s, 2}}},
        {"a whole week of 167 hours", berlin, Qt::Monday, u"2026-03-23T00:00"_s, u"2026-03-30T00:00"_s,
         {{u"2026-03-23T00:00"_s, 167}}},
        {"across the spring change, weeks from Monday", berlin, Qt::Monday, u"2026-03-28T12:00"_s,
         u"2026-03-30T12:00"_s, {{u"2026-03-23T00:00"_s, 35}, {u"2026-03-30T00:00"_s, 12}}},
        {"across the spring change, weeks from Sunday", berlin, Qt::Sunday, u"2026-03-28T12:00"_s,
         u"2026-03-30T12:00"_s, {{u"2026-03-22T00:00"_s, 12}, {u"2026-03-29T00:00"_s, 35}}},
        {"the spring change in New York, weeks from Monday", newYork, Qt::Monday, u"2026-03-08T23:30"_s,
         u"2026-03-09T00:30"_s, {{u"2026-03-02T00:00"_s, 0.5}, {u"2026-03-09T00:00"_s, 0.5}}},
        {"the autumn change in New York, weeks from Sunday", newYork, Qt::Sunday, u"2026-10-31T23:00"_s,
         u"2026-11-01T03:00"_s, {{u"2026-10-25T00:00"_s, 1}, {u"2026-11-01T00:00"_s, 4}}},
        {"a whole week of 169 hours", newYork, Qt::Sunday, u"2026-11-01T00:00"_s, u"2026-11-08T00:00"_s,
         {{u"2026-11-01T00:00"_s, 169}}},
        {"no length", berlin, Qt::Monday, u"2026-01-05T10:00"_s, u"2026-01-05T10:00"_s, {}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        const WeekCalendar calendar{c.zone, c.firstDay};
        QList<WeekSlice> expected;
        for (const Slice &slice : c.slices)
            expected.append({at(slice.weekStart, c.zone), slice.hours * 3600});
        EXPECT_EQ(TimeAggregation::weekSlices(at(c.start, c.zone), at(c.end, c.zone), calendar), expected);
    }
}

TEST(TimeAggregation, StopsSlicingAfterAThousandWeeks)
{
    const WeekCalendar calendar{berlin, Qt::Monday};
    const auto slices = TimeAggregation::weekSlices(at(u"2000-01-05T12:00"_s, berlin), at(u"2030-01-01T00:00"_s, berlin),
                                                    calendar);
    ASSERT_EQ(slices.size(), 1000);
    EXPECT_EQ(slices.first().weekStart, at(u"2000-01-03T00:00"_s, berlin));
    EXPECT_EQ(slices.last().weekStart, at(u"2019-02-25T00:00"_s, berlin));
}

TEST(TimeAggregation, WeekStartsStayOnMidnightAcrossDaylightSavingChanges)
{
    const struct {
        QTimeZone zone;
        Qt::DayOfWeek firstDay;
        QString now;
        QString oldest, newest;
    } cases[] = {
        {berlin, Qt::Monday, u"2026-04-15T10:00"_s, u"2026-02-23T00:00"_s, u"2026-04-13T00:00"_s},
        {berlin, Qt::Sunday, u"2026-04-15T10:00"_s, u"2026-02-22T00:00"_s, u"2026-04-12T00:00"_s},
        {newYork, Qt::Sunday, u"2026-11-20T23:59"_s, u"2026-09-27T00:00"_s, u"2026-11-15T00:00"_s},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.now.toStdString());
        const WeekCalendar calendar{c.zone, c.firstDay};
        const QList<VeltoDate> starts = TimeAggregation::weekStarts(at(c.now, c.zone), 8, calendar);
        ASSERT_EQ(starts.size(), 8);
        EXPECT_EQ(starts.first(), at(c.oldest, c.zone));
        EXPECT_EQ(starts.last(), at(c.newest, c.zone));
        for (const VeltoDate start : starts) {
            const QDateTime local = start.toDateTime().toTimeZone(c.zone);
            EXPECT_EQ(local.time(), QTime(0, 0)) << local.toString(Qt::ISODate).toStdString();
            EXPECT_EQ(local.date().dayOfWeek(), int(c.firstDay));
        }
        EXPECT_TRUE(TimeAggregation::weekStarts(at(c.now, c.zone), 0, calendar).isEmpty());
    }
}

TimeSession session(const QString &cardID, VeltoDate start, std::optional<VeltoDate> end)
{
    TimeSession session;
    session.id = cardID + u"-session"_s;
    session.cardID = cardID;
    session.startedAt = start;
    session.endedAt = end;
    return session;
}

TEST(TimeAggregation, TotalsFinishedSessionsPerWeekAndProjectInsideTheWindow)
{
    const WeekCalendar calendar{berlin, Qt::Monday};
    const auto t = [](const QString &local) { return at(local, berlin); };
    const TimeAggregation::ProjectByCard projects{
        {u"A"_s, u"P2"_s}, {u"B"_s, u"P1"_s}, {u"C"_s, std::nullopt}};
    const QList<TimeSession> sessions{
        session(u"A"_s, t(u"2026-04-14T09:00"_s), t(u"2026-04-14T10:00"_s)),
        session(u"B"_s, t(u"2026-04-14T09:00"_s), t(u"2026-04-14T09:30"_s)),
        // No project, and a card the map does not know: both under the absent project.
        session(u"C"_s, t(u"2026-04-13T08:00"_s), t(u"2026-04-13T08:10"_s)),
        session(u"X"_s, t(u"2026-04-13T09:00"_s), t(u"2026-04-13T09:05"_s)),
        // Straddles the window's start: only the part inside counts.
        session(u"A"_s, t(u"2026-03-29T23:00"_s), t(u"2026-03-30T01:00"_s)),
        // Before the window, running, or of no length: nothing in the window.
        session(u"A"_s, t(u"2026-03-20T09:00"_s), t(u"2026-03-20T10:00"_s)),
        session(u"B"_s, t(u"2026-04-15T09:00"_s), std::nullopt),
        session(u"B"_s, t(u"2026-04-15T09:00"_s), t(u"2026-04-15T09:00"_s)),
    };
    const QList<WeeklyTotal> expected{
        {t(u"2026-03-30T00:00"_s), u"P2"_s, 3600},
        {t(u"2026-04-13T00:00"_s), std::nullopt, 900},
        {t(u"2026-04-13T00:00"_s), u"P1"_s, 1800},
        {t(u"2026-04-13T00:00"_s), u"P2"_s, 3600},
    };
    EXPECT_EQ(TimeAggregation::weeklyTotals(sessions, projects, t(u"2026-04-15T12:00"_s), 3, calendar), expected);

    const std::map<std::optional<QString>, double> allTime{
        {std::nullopt, 900}, {u"P1"_s, 1800}, {u"P2"_s, 3600 + 7200 + 3600}};
    EXPECT_EQ(TimeAggregation::projectTotals(sessions, projects), allTime);
}

TEST(TimeAggregation, CountsCompletionsInTheWeekOfTheLastMoveIntoComplete)
{
    const WeekCalendar calendar{newYork, Qt::Sunday};
    const auto t = [](const QString &local) { return at(local, newYork); };
    const auto card = [](CardStatus status, VeltoDate changed) {
        Card card;
        card.status = status;
        card.statusChangedAt = changed;
        return card;
    };
    const QList<Card> cards{
        card(CardStatus::complete, t(u"2026-11-07T23:59"_s)),
        card(CardStatus::complete, t(u"2026-11-08T00:00"_s)),
        card(CardStatus::complete, t(u"2026-11-10T12:00"_s)),
        card(CardStatus::complete, t(u"2026-10-31T12:00"_s)), // before the window
        card(CardStatus::inProgress, t(u"2026-11-09T12:00"_s)),
    };
    const std::map<VeltoDate, int> expected{{t(u"2026-11-01T00:00"_s), 1}, {t(u"2026-11-08T00:00"_s), 2}};
    EXPECT_EQ(TimeAggregation::completionsByWeek(cards, t(u"2026-11-12T08:00"_s), 2, calendar), expected);
}

TEST(TimeAggregation, WeeklyTotalIdentityNamesTheWeekAndTheProject)
{
    const VeltoDate week = VeltoDate::fromStoredSeconds(1774821600);
    EXPECT_EQ((WeeklyTotal{week, u"P1"_s, 10}.identity()), u"1774821600.0-P1"_s);
    EXPECT_EQ((WeeklyTotal{week, std::nullopt, 10}.identity()), u"1774821600.0-none"_s);
}

TEST(TimeAggregation, WritesDurationsAsQuantitiesAndAsClocks)
{
    const struct {
        double seconds;
        QString duration;
        QString clock;
    } cases[] = {
        {-5, u"—"_s, u"0:00"_s},           {0, u"—"_s, u"0:00"_s},
        {0.4, u"—"_s, u"0:00"_s},          {0.5, u"1s"_s, u"0:01"_s},
        {59.4, u"59s"_s, u"0:59"_s},       {59.5, u"1m"_s, u"1:00"_s},
        {309, u"5m"_s, u"5:09"_s},         {3599, u"59m"_s, u"59:59"_s},
        {3599.5, u"1h"_s, u"1:00:00"_s},   {3659, u"1h"_s, u"1:00:59"_s},
        {3660, u"1h 1m"_s, u"1:01:00"_s},  {7500, u"2h 5m"_s, u"2:05:00"_s},
        {3723, u"1h 2m"_s, u"1:02:03"_s},  {360000, u"100h"_s, u"100:00:00"_s},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.seconds);
        EXPECT_EQ(TimeAggregation::durationText(c.seconds), c.duration);
        EXPECT_EQ(TimeAggregation::clockText(c.seconds), c.clock);
    }
}

} // namespace
