#include "Await.h"
#include "Later.h"
#include "VeltoAppDelegate.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QTest>

#include <gtest/gtest.h>

#include <csignal>
#include <memory>
#include <optional>
#include <vector>

namespace {

using namespace std::chrono_literals;

// A watchdog clock that wakes only when the test says so, and remembers what was asked of it.
struct FakeSleep {
    std::vector<std::chrono::milliseconds> requested;
    std::vector<TimerClock::Wake> wakes;
    int cancelled = 0;

    VeltoAppDelegate::Sleep function()
    {
        return [this](std::chrono::milliseconds duration, TimerClock::Wake wake) -> TimerClock::Cancel {
            requested.push_back(duration);
            wakes.push_back(std::move(wake));
            return [this] { ++cancelled; };
        };
    }

    // Wakes every watchdog, also one already cancelled, as a late timer would.
    void wakeAll()
    {
        for (const auto &wake : wakes)
            wake();
    }
};

enum class Trigger { request, quitEvent, sigterm, sigint };
enum class Stop { none, finishes, hangs };

void pull(Trigger trigger, VeltoAppDelegate &delegate)
{
    switch (trigger) {
    case Trigger::request:
        delegate.requestQuit();
        break;
    case Trigger::quitEvent: {
        QEvent quit(QEvent::Quit);
        QCoreApplication::sendEvent(QCoreApplication::instance(), &quit);
        break;
    }
    case Trigger::sigterm:
        std::raise(SIGTERM);
        break;
    case Trigger::sigint:
        std::raise(SIGINT);
        break;
    }
}

TEST(VeltoAppDelegate, EveryWayOfQuittingWaitsForTheTimerAndQuitsOnce)
{
    const struct {
        const char *name;
        Trigger trigger;
        Stop stop;
        bool watchdogFires; // after the stop had its chance
        int quitsBeforeStopEnds;
        int quits;
        size_t watchdogs;
    } cases[] = {
        {"no timer: at once, no watchdog", Trigger::request, Stop::none, false, 1, 1, 0},
        {"no timer, quit event", Trigger::quitEvent, Stop::none, false, 1, 1, 0},
        {"no timer, SIGINT", Trigger::sigint, Stop::none, false, 1, 1, 0},
        {"a stop that finishes", Trigger::request, Stop::finishes, false, 0, 1, 1},
        {"a stop that finishes, the watchdog late", Trigger::quitEvent, Stop::finishes, true, 0, 1, 1},
        {"a stop that hangs", Trigger::request, Stop::hangs, true, 0, 1, 1},
        {"a stop that hangs, no watchdog yet", Trigger::request, Stop::hangs, false, 0, 0, 1},
        {"SIGTERM, a stop that finishes", Trigger::sigterm, Stop::finishes, false, 0, 1, 1},
        {"SIGTERM, a stop that hangs", Trigger::sigterm, Stop::hangs, true, 0, 1, 1},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        FakeSleep sleep;
        int quits = 0;
        int stops = 0;
        Later<bool> stopDone;
        auto delegate = std::make_unique<VeltoAppDelegate>([&] { ++quits; }, sleep.function());
        delegate->watchQuitEvents(QCoreApplication::instance());
        delegate->watchTerminationSignals();
        if (c.stop != Stop::none)
            delegate->setHooks([] { return true; }, [&]() -> Task<> {
                ++stops;
                co_await stopDone;
            });

        pull(c.trigger, *delegate);
        QCoreApplication::processEvents();
        // A second request while the first waits changes nothing.
        if (c.stop != Stop::none)
            delegate->requestQuit();
        ASSERT_TRUE(QTest::qWaitFor([&] { return quits > 0 || stops > 0; }, 2000));
        EXPECT_EQ(quits, c.quitsBeforeStopEnds);
        if (c.stop == Stop::finishes)
            stopDone.deliver(true);
        QTest::qWait(20);
        if (c.watchdogFires)
            sleep.wakeAll();
        QTest::qWait(20);

        EXPECT_EQ(quits, c.quits);
        EXPECT_EQ(sleep.wakes.size(), c.watchdogs);
        EXPECT_EQ(stops, c.stop == Stop::none ? 0 : 1);
        for (const auto requested : sleep.requested)
            EXPECT_EQ(requested, 3000ms);
    }
}

// The real clock: with a stop that never ends, the quit comes three seconds later, once.
TEST(VeltoAppDelegate, AHangingStopQuitsAfterThreeSeconds)
{
    int quits = 0;
    Later<bool> never;
    VeltoAppDelegate delegate([&] { ++quits; });
    delegate.setHooks([] { return true; }, [&]() -> Task<> { co_await never; });
    QElapsedTimer elapsed;
    elapsed.start();
    delegate.requestQuit();
    ASSERT_TRUE(QTest::qWaitFor([&] { return quits > 0; }, 5000));
    EXPECT_GE(elapsed.elapsed(), 2900);
    EXPECT_LT(elapsed.elapsed(), 4000);
    QTest::qWait(100);
    EXPECT_EQ(quits, 1);
}

// A quit event meant for another object is none of the delegate's business.
TEST(VeltoAppDelegate, LetsQuitEventsOfOtherObjectsPass)
{
    int quits = 0;
    VeltoAppDelegate delegate([&] { ++quits; });
    delegate.watchQuitEvents(QCoreApplication::instance());
    QObject other;
    QEvent quit(QEvent::Quit);
    EXPECT_FALSE(delegate.eventFilter(&other, &quit));
    EXPECT_EQ(quits, 0);
}

} // namespace
