#include "Await.h"
#include "Database.h"
#include "SQLiteConnection.h"
#include "TimerModel.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

using FP = FocusPresentation;

// A wall clock the test moves by hand, and sleeps that end only when it does.
struct FakeClock {
    double now = 700000000.25;
    std::vector<std::pair<std::shared_ptr<bool>, TimerClock::Wake>> wakes; // with whether still wanted

    [[nodiscard]] int pendingWakes() const
    {
        return int(std::ranges::count_if(wakes, [](const auto &pending) { return *pending.first; }));
    }

    // Moves the wall clock and ends every sleep under way, as one period of the sleep clock would.
    void pass(double seconds)
    {
        now += seconds;
        for (auto &[live, wake] : std::exchange(wakes, {}))
            if (*live)
                wake();
    }
};

Card makeCard(const QString &id)
{
    Card card;
    card.id = id;
    card.displayName = u"Folder "_s + id;
    card.bookmark = id.toUtf8();
    card.displayPath = u"/home/ann/"_s + id;
    return card;
}

class TimerModelTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        await(m_database->open());
        for (const Card &card : {cardA, cardB})
            await(m_database->insertCard(card));
    }

    void TearDown() override { relaunch(); }

    // Drops the model, as quitting would, and lets its cancelled tick loop run to its end.
    void relaunch()
    {
        m_model.reset();
        QCoreApplication::processEvents();
    }

    TimerModel &model()
    {
        if (!m_model) {
            TimerClock clock{[fake = m_clock] { return VeltoDate(fake->now); },
                             [fake = m_clock](std::chrono::milliseconds, TimerClock::Wake wake) -> TimerClock::Cancel {
                                 auto live = std::make_shared<bool>(true);
                                 fake->wakes.emplace_back(live, std::move(wake));
                                 return [live] { *live = false; };
                             }};
            m_model = std::make_unique<TimerModel>(
                VeltoServices{AppGroupContainer{}, m_database, DatabaseChangeNotifier{}, MigrationOutcome{}}, m_focus,
                std::move(clock));
        }
        return *m_model;
    }

    // Another process writing the same file, behind the model's back.
    void otherProcess(const QString &sql) const
    {
        SQLiteConnection::open(m_database->path(), SQLiteConnection::Access::readWrite)->execute(sql);
    }

    [[nodiscard]] QList<TimeSession> sessions(bool openOnly = false) const
    {
        QList<TimeSession> found = await(m_database->allSessions());
        found.removeIf([&](const TimeSession &session) { return openOnly && session.endedAt; });
        return found;
    }

    const Card cardA = makeCard(u"A"_s);
    const Card cardB = makeCard(u"B"_s);
    std::shared_ptr<FakeClock> m_clock = std::make_shared<FakeClock>();

private:
    QTemporaryDir m_dir;
    std::shared_ptr<Database> m_database = Database::create(m_dir.filePath(u"Velto.sqlite"_s));
    std::shared_ptr<FocusSettings> m_focus = std::make_shared<FocusSettings>(
        std::make_shared<QSettings>(m_dir.filePath(u"settings.ini"_s), QSettings::IniFormat));
    std::unique_ptr<TimerModel> m_model;
};

// Whatever runs, of any card, closes at the same moment without a rating; a rating still pending goes.
TEST_F(TimerModelTest, StartingClosesWhateverRuns)
{
    for (const Card &second : {cardB, cardA}) {
        SCOPED_TRACE(second.id.toStdString());
        await(model().start(cardA));
        const TimeSession first = *model().running();
        m_clock->pass(65.5);
        await(model().start(second));

        const QList<TimeSession> open = sessions(true);
        ASSERT_EQ(open.size(), 1);
        EXPECT_EQ(model().running(), open.first());
        EXPECT_EQ(open.first().cardID, second.id);
        const QList<TimeSession> all = sessions();
        EXPECT_EQ(std::ranges::find(all, first.id, &TimeSession::id)->endedAt, open.first().startedAt);
        EXPECT_EQ(model().runningCardName(), second.displayName);
        EXPECT_EQ(model().presentation(), FP{FP::Running{open.first()}});
        EXPECT_FALSE(model().justStopped());
        await(model().stop(true));
    }
}

// Every way a session ends; none reports an error, and none leaves a tick behind.
TEST_F(TimerModelTest, StopOutcomes)
{
    const struct { const char *name; bool silently, rate, closedElsewhere, storeFails; } cases[] = {
        {"rated", false, true, false, false},
        {"unrated", false, false, false, false},
        {"row closed by the other process", false, true, true, false},
        {"silently", true, false, false, false},
        {"silently with the store failing", true, false, false, true},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        await(model().start(cardA));
        const TimeSession started = *model().running();
        m_clock->pass(42);
        if (c.closedElsewhere)
            otherProcess(u"UPDATE time_sessions SET ended_at = started_at + 10 WHERE ended_at IS NULL"_s);
        if (c.storeFails)
            otherProcess(u"ALTER TABLE time_sessions RENAME TO away"_s);

        std::optional<TimeSession> closed;
        if (c.silently)
            await(model().stopSilently());
        else
            closed = await(model().stop(c.rate));

        EXPECT_FALSE(model().running());
        EXPECT_FALSE(model().errorMessage());
        EXPECT_EQ(m_clock->pendingWakes(), 0);
        m_clock->pass(3);
        EXPECT_EQ(model().elapsed(), 0.0);
        if (c.storeFails)
            otherProcess(u"ALTER TABLE away RENAME TO time_sessions"_s);
        // A later stop leaves a pending rating alone, and closes the row a failed silent stop left open.
        EXPECT_EQ(await(model().stop(false)).has_value(), c.storeFails);
        const bool expectsRating = c.rate && !c.closedElsewhere;
        EXPECT_EQ(model().justStopped().has_value(), expectsRating);
        EXPECT_EQ(model().presentation(), expectsRating ? FP{FP::Rating{*closed}} : FP{FP::Hidden{}});
        if (!c.closedElsewhere && !c.storeFails) {
            const TimeSession stored = sessions().first();
            EXPECT_EQ(stored.endedAt, VeltoDate(started.startedAt.secondsSinceReferenceDate() + 42));
            EXPECT_EQ(closed, c.silently ? std::nullopt : std::optional(stored));
        }
        otherProcess(u"DELETE FROM time_sessions"_s);
        model().forget(cardA.id);
    }
}

TEST_F(TimerModelTest, AFailureKeepsTheRunningSessionCounting)
{
    for (const bool startsAnother : {false, true}) {
        SCOPED_TRACE(startsAnother ? "start on another card" : "stop");
        await(model().start(cardA));
        const TimeSession running = *model().running();
        otherProcess(u"ALTER TABLE time_sessions RENAME TO away"_s);

        if (startsAnother)
            await(model().start(cardB));
        else
            EXPECT_FALSE(await(model().stop(true)));

        EXPECT_FALSE(model().errorMessageText().isEmpty());
        EXPECT_EQ(model().running(), running);
        EXPECT_EQ(model().presentation(), FP{FP::Running{running}});
        m_clock->pass(2);
        EXPECT_EQ(model().elapsed(), 2.0);

        otherProcess(u"ALTER TABLE away RENAME TO time_sessions"_s);
        await(model().stop(false));
        model().clearError();
    }
}

// A row left open by a run that ended, adopted by the next one.
TEST_F(TimerModelTest, AdoptionAtLaunch)
{
    // The card of the row left open a day ago (empty: none), and the name the timer then shows.
    const struct { const char *name; QString openCardID; std::optional<QString> expectedName; } cases[] = {
        {"nothing open", {}, std::nullopt},
        {"open since yesterday", u"A"_s, u"Folder A"_s},
        {"open on a card that is gone", u"gone"_s, std::nullopt},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        const VeltoDate yesterday = VeltoDate(m_clock->now - 86400).floored();
        otherProcess(u"DELETE FROM time_sessions"_s);
        if (!c.openCardID.isEmpty())
            otherProcess(u"INSERT INTO time_sessions (id, card_id, started_at, source) "
                         u"VALUES ('S', '%1', %2, 'manual')"_s.arg(c.openCardID).arg(yesterday.storedSeconds()));
        relaunch();
        EXPECT_EQ(m_clock->pendingWakes(), 0) << "a model that is gone ticks no more";
        await(model().reload());

        EXPECT_EQ(model().running().has_value(), !c.openCardID.isEmpty());
        EXPECT_EQ(model().runningCardName(), c.expectedName);
        EXPECT_EQ(model().presentation(), FP{FP::Hidden{}}) << "an adopted session leaves the panel alone";
        const double day = c.openCardID.isEmpty() ? 0 : 86400;
        EXPECT_EQ(model().elapsed(), day);
        m_clock->pass(1);
        EXPECT_EQ(model().elapsed(), day ? day + 1 : 0) << "an adopted session goes on counting";
    }
}

TEST_F(TimerModelTest, ElapsedMovesInWholeSecondsAndOnlyWhenItChanges)
{
    m_clock->now = 5000.75;
    await(model().start(cardA));
    QSignalSpy changes(&model(), &TimerModel::elapsedChanged);
    const struct { double pass, elapsed; int changes; } steps[] = {
        {0.2, 0, 0},  // 5000.95
        {0.1, 1, 1},  // 5001.05
        {0.9, 1, 1},  // 5001.95
        {-10, -9, 2}, // the wall clock was put back
    };
    for (const auto &step : steps) {
        SCOPED_TRACE(step.pass);
        m_clock->pass(step.pass);
        EXPECT_EQ(model().elapsed(), step.elapsed);
        EXPECT_EQ(changes.count(), step.changes);
        EXPECT_EQ(m_clock->pendingWakes(), 1);
    }
}

TEST_F(TimerModelTest, ForgettingACardDropsItsSessionOrItsRatingOnly)
{
    const struct { const char *name; bool rateFirst; QString forgotten; } cases[] = {
        {"its session runs", false, u"A"_s},
        {"its session waits for a rating", true, u"A"_s},
        {"another card's session runs", false, u"B"_s},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        await(model().start(cardA));
        if (c.rateFirst)
            await(model().stop(true));
        const FocusPresentation before = model().presentation();
        model().forget(c.forgotten);
        const bool touched = c.forgotten == cardA.id;
        EXPECT_EQ(model().presentation(), touched ? FP{FP::Hidden{}} : before);
        EXPECT_EQ(model().isRunning(cardA), !touched);
        EXPECT_FALSE(model().justStopped());
        await(model().stop(false));
    }
}

TEST(TimerClockTest, TheSystemSleepWakesOnceUnlessCancelled)
{
    for (const bool cancelled : {false, true}) {
        SCOPED_TRACE(cancelled ? "cancelled" : "left to run");
        int wakes = 0;
        const TimerClock::Cancel cancel = TimerClock::system().sleep(std::chrono::milliseconds(30), [&] { ++wakes; });
        if (cancelled)
            cancel();
        QDeadlineTimer deadline(300);
        while (!deadline.hasExpired())
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        EXPECT_EQ(wakes, cancelled ? 0 : 1);
        cancel(); // after the wake it does nothing
    }
}

} // namespace
