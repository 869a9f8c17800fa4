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
#include <cmath>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

constexpr double launchTime = 700000000.25;
constexpr double day = 86400;

// A wall clock the test moves by hand, and sleeps that end only when it does.
struct FakeClock {
    struct PendingWake {
        std::shared_ptr<bool> live;
        TimerClock::Wake wake;
    };

    double now = launchTime;
    std::vector<PendingWake> wakes;

    [[nodiscard]] int pendingWakes() const
    {
        return int(std::count_if(wakes.begin(), wakes.end(), [](const PendingWake &pending) { return *pending.live; }));
    }

    // Moves the wall clock and ends every sleep that is under way, as one period of the sleep clock
    // would.
    void pass(double seconds)
    {
        now += seconds;
        for (auto &pending : std::exchange(wakes, {}))
            if (*pending.live)
                pending.wake();
    }
};

TimerClock clockOf(const std::shared_ptr<FakeClock> &fake)
{
    return {[fake] { return VeltoDate(fake->now); },
            [fake](std::chrono::milliseconds, TimerClock::Wake wake) -> TimerClock::Cancel {
                auto live = std::make_shared<bool>(true);
                fake->wakes.push_back({live, std::move(wake)});
                return [live] { *live = false; };
            }};
}

Card makeCard(const QString &id)
{
    Card card;
    card.id = id;
    card.displayName = u"Folder "_s + id;
    card.bookmark = id.toUtf8();
    card.displayPath = u"/home/ann/"_s + id;
    card.createdAt = card.statusChangedAt = VeltoDate(1000);
    return card;
}

class TimerModelTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_dir.isValid());
        m_database = Database::create(m_dir.filePath(u"Velto.sqlite"_s));
        await(m_database->open());
        for (const Card &card : {cardA, cardB})
            await(m_database->insertCard(card));
        m_focus = std::make_shared<FocusSettings>(
            std::make_shared<QSettings>(m_dir.filePath(u"settings.ini"_s), QSettings::IniFormat));
    }

    void TearDown() override { relaunch(); }

    // Drops the model, as quitting would; the next call of model() makes a fresh one.
    void relaunch()
    {
        m_model.reset();
        // Lets the cancelled tick loops run to their end.
        QCoreApplication::processEvents();
    }

    TimerModel &model()
    {
        if (!m_model)
            m_model = std::make_unique<TimerModel>(
                VeltoServices{AppGroupContainer{}, m_database, DatabaseChangeNotifier{}, MigrationOutcome{}}, m_focus,
                clockOf(m_clock));
        return *m_model;
    }

    // Another process writing the same file, behind the model's back.
    std::shared_ptr<SQLiteConnection> otherProcess() const
    {
        return SQLiteConnection::open(m_database->path(), SQLiteConnection::Access::readWrite);
    }

    [[nodiscard]] QList<TimeSession> openRows() const
    {
        QList<TimeSession> open;
        for (const TimeSession &session : await(m_database->allSessions()))
            if (!session.endedAt)
                open.append(session);
        return open;
    }

    [[nodiscard]] TimeSession row(const QString &id) const
    {
        for (const TimeSession &session : await(m_database->allSessions()))
            if (session.id == id)
                return session;
        ADD_FAILURE() << "no row " << id.toStdString();
        return {};
    }

    const Card cardA = makeCard(u"A"_s);
    const Card cardB = makeCard(u"B"_s);
    std::shared_ptr<FakeClock> m_clock = std::make_shared<FakeClock>();
    std::shared_ptr<FocusSettings> m_focus;

private:
    QTemporaryDir m_dir;
    std::shared_ptr<Database> m_database;
    std::unique_ptr<TimerModel> m_model;
};

bool isHidden(const FocusPresentation &presentation)
{
    return std::holds_alternative<FocusPresentation::Hidden>(presentation.state);
}

TEST_F(TimerModelTest, StartingClosesWhateverRunsWithoutARating)
{
    struct Case {
        const char *name;
        bool sameCard;
    };
    for (const Case &c : {Case{"another card", false}, Case{"the same card again", true}}) {
        SCOPED_TRACE(c.name);
        const Card &second = c.sameCard ? cardA : cardB;
        m_focus->setTargetSeconds(1800);
        await(model().start(cardA));
        const TimeSession first = *model().running();
        m_clock->pass(65.5);
        await(model().start(second));

        const QList<TimeSession> open = openRows();
        ASSERT_EQ(open.size(), 1);
        EXPECT_EQ(model().running(), open.first());
        EXPECT_NE(open.first().id, first.id);
        EXPECT_EQ(open.first().cardID, second.id);
        EXPECT_EQ(open.first().targetSeconds, 1800);
        EXPECT_EQ(row(first.id).endedAt, open.first().startedAt);
        EXPECT_EQ(model().runningCardName(), second.displayName);
        EXPECT_EQ(model().elapsed(), 0.0);
        EXPECT_EQ(model().presentation().state, (FocusPresentation{FocusPresentation::Running{open.first()}}.state));
        EXPECT_FALSE(model().justStopped());
        await(model().stop(false));
    }
}

// Every way a session ends; none reports an error, and none leaves a tick behind.
TEST_F(TimerModelTest, StopOutcomes)
{
    struct Case {
        const char *name;
        bool silently;
        bool rate;
        bool closedElsewhere;
        bool storeFails;
        bool expectsRating;
    };
    const Case cases[] = {
        {"rated", false, true, false, false, true},
        {"unrated", false, false, false, false, false},
        {"row closed by the other process", false, true, true, false, false},
        {"silently", true, false, false, false, false},
        {"silently with the store failing", true, false, false, true, false},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        await(model().start(cardA));
        const TimeSession started = *model().running();
        m_clock->pass(42);
        if (c.closedElsewhere)
            otherProcess()->execute(u"UPDATE time_sessions SET ended_at = started_at + 10 WHERE ended_at IS NULL"_s);
        if (c.storeFails)
            otherProcess()->execute(u"ALTER TABLE time_sessions RENAME TO away"_s);

        std::optional<TimeSession> closed;
        if (c.silently)
            await(model().stopSilently());
        else
            closed = await(model().stop(c.rate));

        EXPECT_FALSE(model().running());
        EXPECT_FALSE(model().runningCardName());
        EXPECT_FALSE(model().errorMessage());
        EXPECT_EQ(model().justStopped().has_value(), c.expectsRating);
        if (c.expectsRating)
            EXPECT_EQ(model().presentation().state, (FocusPresentation{FocusPresentation::Rating{*closed}}.state));
        else
            EXPECT_TRUE(isHidden(model().presentation()));
        EXPECT_EQ(m_clock->pendingWakes(), 0);
        m_clock->pass(3);
        EXPECT_EQ(model().elapsed(), 0.0);

        if (c.storeFails)
            otherProcess()->execute(u"ALTER TABLE away RENAME TO time_sessions"_s);
        const TimeSession stored = row(started.id);
        if (!c.closedElsewhere && !c.storeFails) {
            EXPECT_EQ(stored.endedAt, VeltoDate(started.startedAt.secondsSinceReferenceDate() + 42));
        }
        if (!c.silently) {
            EXPECT_EQ(closed, c.closedElsewhere ? std::nullopt : std::optional(stored));
        }
        await(model().stop(false));
        model().forget(cardA.id);
    }
}

TEST_F(TimerModelTest, APendingRatingSurvivesAStopThatFindsNothing)
{
    await(model().start(cardA));
    m_clock->pass(5);
    const std::optional<TimeSession> rated = await(model().stop(true));
    ASSERT_TRUE(rated);

    EXPECT_FALSE(await(model().stop(true)));
    EXPECT_EQ(model().presentation().state, (FocusPresentation{FocusPresentation::Rating{*rated}}.state));
    EXPECT_EQ(model().justStopped(), rated);

    // The next session drops the ignored rating.
    await(model().start(cardB));
    EXPECT_FALSE(model().justStopped());
    EXPECT_EQ(model().presentation().state, (FocusPresentation{FocusPresentation::Running{*model().running()}}.state));
}

TEST_F(TimerModelTest, AFailureKeepsTheRunningSessionCounting)
{
    struct Case {
        const char *name;
        bool startsAnother;
    };
    for (const Case &c : {Case{"stop", false}, Case{"start on another card", true}}) {
        SCOPED_TRACE(c.name);
        await(model().start(cardA));
        const TimeSession running = *model().running();
        otherProcess()->execute(u"ALTER TABLE time_sessions RENAME TO away"_s);

        if (c.startsAnother)
            await(model().start(cardB));
        else
            EXPECT_FALSE(await(model().stop(true)));

        EXPECT_FALSE(model().errorMessageText().isEmpty());
        EXPECT_EQ(model().running(), running);
        EXPECT_EQ(model().runningCardName(), cardA.displayName);
        EXPECT_EQ(model().presentation().state, (FocusPresentation{FocusPresentation::Running{running}}.state));
        m_clock->pass(2);
        EXPECT_EQ(model().elapsed(), 2.0);

        otherProcess()->execute(u"ALTER TABLE away RENAME TO time_sessions"_s);
        await(model().stop(false));
        EXPECT_TRUE(model().errorMessage()) << "a successful stop leaves the message";
        model().clearError();
        EXPECT_FALSE(model().errorMessage());
    }
}

TEST_F(TimerModelTest, AdoptionAtLaunch)
{
    struct Case {
        const char *name;
        std::optional<QString> openCardID; // the card of the row left open yesterday, if any
        std::optional<QString> expectedName;
    };
    const Case cases[] = {
        {"nothing open", std::nullopt, std::nullopt},
        {"open since yesterday", u"A"_s, u"Folder A"_s},
        {"open on a card that is gone", u"gone"_s, std::nullopt},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        const auto other = otherProcess();
        other->execute(u"DELETE FROM time_sessions"_s);
        const qint64 yesterday = VeltoDate(launchTime - day).storedSeconds();
        if (c.openCardID)
            other->execute(u"INSERT INTO time_sessions (id, card_id, started_at, source) VALUES ('S', '%1', %2, 'manual')"_s
                               .arg(*c.openCardID)
                               .arg(yesterday));

        relaunch();
        await(model().reload());

        EXPECT_EQ(model().running().has_value(), c.openCardID.has_value());
        EXPECT_EQ(model().runningCardName(), c.expectedName);
        EXPECT_FALSE(model().errorMessage());
        EXPECT_TRUE(isHidden(model().presentation())) << "an adopted session leaves the panel alone";
        if (c.openCardID) {
            const double sinceStart = std::floor(m_clock->now) - VeltoDate::fromStoredSeconds(yesterday).secondsSinceReferenceDate();
            EXPECT_EQ(model().elapsed(), sinceStart);
            m_clock->pass(1);
            EXPECT_EQ(model().elapsed(), sinceStart + 1) << "goes on counting";
        } else {
            EXPECT_EQ(model().elapsed(), 0.0);
            EXPECT_EQ(m_clock->pendingWakes(), 0);
        }
    }
}

TEST_F(TimerModelTest, ElapsedMovesInWholeSecondsAndOnlyWhenItChanges)
{
    m_clock->now = 5000.75;
    await(model().start(cardA));
    QSignalSpy changes(&model(), &TimerModel::elapsedChanged);

    struct Step {
        double pass;
        double elapsed;
        int changes;
    };
    const Step steps[] = {
        {0.2, 0, 0}, // 5000.95
        {0.1, 1, 1}, // 5001.05
        {0.9, 1, 1}, // 5001.95
        {3.5, 5, 2}, // 5005.45
        {-10, -5, 3}, // the wall clock was put back
    };
    for (const Step &step : steps) {
        SCOPED_TRACE(step.pass);
        m_clock->pass(step.pass);
        EXPECT_EQ(model().elapsed(), step.elapsed);
        EXPECT_EQ(changes.count(), step.changes);
        EXPECT_EQ(m_clock->pendingWakes(), 1);
    }
}

TEST_F(TimerModelTest, ForgettingACard)
{
    struct Case {
        const char *name;
        bool rateFirst;
        QString forgotten;
        bool changes;
    };
    const Case cases[] = {
        {"its session runs", false, u"A"_s, true},
        {"its session waits for a rating", true, u"A"_s, true},
        {"another card's session runs", false, u"B"_s, false},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        await(model().start(cardA));
        if (c.rateFirst)
            await(model().stop(true));
        const FocusPresentation before = model().presentation();
        QSignalSpy presentation(&model(), &TimerModel::presentationChanged);
        QSignalSpy running(&model(), &TimerModel::runningChanged);

        model().forget(c.forgotten);

        EXPECT_EQ(presentation.count(), c.changes ? 1 : 0);
        if (c.changes) {
            EXPECT_FALSE(model().running());
            EXPECT_FALSE(model().justStopped());
            EXPECT_TRUE(isHidden(model().presentation()));
        } else {
            EXPECT_EQ(running.count(), 0);
            EXPECT_EQ(model().presentation(), before);
            EXPECT_TRUE(model().isRunning(cardA));
        }
        await(model().stop(false));
        model().forget(cardA.id);
    }
}

TEST_F(TimerModelTest, DestroyingTheModelEndsItsTicker)
{
    await(model().start(cardA));
    ASSERT_EQ(m_clock->pendingWakes(), 1);
    relaunch();
    EXPECT_EQ(m_clock->pendingWakes(), 0);
    m_clock->pass(1);
    EXPECT_EQ(openRows().size(), 1) << "the row stays open for the next launch to adopt";
}

TEST(TimerClockTest, TheSystemSleepWakesOnceUnlessCancelled)
{
    for (const bool cancelled : {false, true}) {
        SCOPED_TRACE(cancelled ? "cancelled" : "left to run");
        int wakes = 0;
        const TimerClock::Cancel cancel = TimerClock::system().sleep(std::chrono::milliseconds(30), [&wakes] { ++wakes; });
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
