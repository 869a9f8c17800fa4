#include "FakeLogind.h"
#include "Later.h"
#include "VeltoAppDelegate.h"

#include <QTest>

#include <gtest/gtest.h>

namespace {

// A running session is stopped before the sleep and the lock let go only then; the lock comes
// back after the wake. With nothing running, the lock goes at once.
TEST(SleepInhibitor, StopsTheTimerBeforeLettingTheMachineSleep)
{
    for (const bool running : {true, false}) {
        SCOPED_TRACE(running ? "a session runs" : "nothing runs");
        FakeLogind logind;
        int stops = 0;
        Later<bool> stopDone;
        VeltoAppDelegate delegate([] {});
        delegate.setHooks([&] { return running; }, [&]() -> Task<> {
            ++stops;
            co_await stopDone;
        });
        delegate.watchSystemSleep(QDBusConnection::sessionBus());
        ASSERT_TRUE(QTest::qWaitFor(
            [&] { return logind.heldLocks() == 1 && delegate.sleepInhibitor()->holdsLock(); }, 3000));
        EXPECT_EQ(logind.requests, QStringList{u"sleep/Velto/delay"_s});

        logind.announceSleep(true);
        if (running) {
            ASSERT_TRUE(QTest::qWaitFor([&] { return stops == 1; }, 3000));
            QTest::qWait(50);
            EXPECT_EQ(logind.heldLocks(), 1) << "let go before the session was closed";
            stopDone.deliver(true);
        }
        EXPECT_TRUE(QTest::qWaitFor([&] { return logind.heldLocks() == 0; }, 3000));
        EXPECT_EQ(stops, running ? 1 : 0);

        logind.announceSleep(false);
        EXPECT_TRUE(QTest::qWaitFor([&] { return logind.heldLocks() == 1; }, 3000));
        EXPECT_EQ(logind.requests.size(), 2);
    }
}

// Without logind on the bus, or without a bus, nothing is held and nothing fails.
TEST(SleepInhibitor, WithoutLogindNothingHappens)
{
    for (const QDBusConnection &bus : {QDBusConnection::sessionBus(), QDBusConnection(u"no-bus"_s)}) {
        int stops = 0;
        SleepInhibitor inhibitor(bus, [&]() -> Task<> {
            ++stops;
            co_return;
        });
        QTest::qWait(100);
        EXPECT_FALSE(inhibitor.holdsLock());
        EXPECT_EQ(stops, 0);
    }
}

} // namespace
