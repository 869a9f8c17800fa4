#include "SmokeFixture.h"
#include "TimerTray.h"

#include <QMenu>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

// The timer's menu in the tray starts a card of the work list and stops it; the focus panel is up
// meanwhile and takes the rating; Show Velto asks for the window.
TEST_F(SmokeTest, TheTrayMenuStartsAndStopsTheTimerAndThePanelTakesTheRating)
{
    TimerTray tray;
    tray.setModels(m_model->timer(), board());
    await(board()->setStatus(CardStatus::inProgress, stored(u"Atlas"_s)));
    const auto action = [&](const QString &name) -> QAction * {
        for (QAction *entry : tray.menu()->actions())
            if (entry->objectName() == name)
                return entry;
        return nullptr;
    };
    tray.menu()->popup({0, 0});
    ASSERT_TRUE(QTest::qWaitFor([&] { return action(u"trayStart_Atlas"_s) != nullptr; }, 3000));
    action(u"trayStart_Atlas"_s)->trigger();
    EXPECT_TRUE(QTest::qWaitFor([&] { return await(database().runningSession()).has_value(); }, 3000));

    // The open menu follows: the running card's entry is disabled, the stop is there.
    ASSERT_TRUE(QTest::qWaitFor([&] { return action(u"trayStopTimer"_s) != nullptr; }, 3000));
    EXPECT_FALSE(action(u"trayStart_Atlas"_s)->isEnabled());
    EXPECT_EQ(tray.toolTip(), u"0:00 Atlas"_s);
    EXPECT_TRUE(tray.showsRecording());

    auto *panel = m_window->findChild<QQuickWindow *>(u"focusPanel"_s);
    ASSERT_NE(panel, nullptr);
    EXPECT_TRUE(panel->isVisible());
    action(u"trayStopTimer"_s)->trigger();
    EXPECT_TRUE(QTest::qWaitFor([&] { return !await(database().runningSession()).has_value(); }, 3000));
    tray.menu()->hide();

    QQuickItem *mood = nullptr;
    ASSERT_TRUE(QTest::qWaitFor([&] {
        mood = itemNamed(panel->contentItem(), u"moodButton_deep"_s);
        return mood != nullptr && mood->isVisible() && mood->width() > 0;
    }, 3000));
    QTest::qWait(50);
    QTest::mouseClick(panel, Qt::LeftButton, {}, mood->mapToScene({mood->width() / 2, mood->height() / 2}).toPoint());
    EXPECT_TRUE(QTest::qWaitFor([&] { return !panel->isVisible(); }, 3000));
    const auto sessions = await(database().sessions(stored(u"Atlas"_s).id));
    ASSERT_EQ(sessions.size(), 1);
    EXPECT_EQ(sessions.first().mood, Mood::deep);

    QSignalSpy activations(m_model.get(), &AppModel::activationRequested);
    QObject::connect(&tray, &TimerTray::showRequested, m_model.get(), &AppModel::activationRequested);
    tray.menu()->popup({0, 0});
    ASSERT_TRUE(QTest::qWaitFor([&] { return action(u"trayShowVelto"_s) != nullptr; }, 3000));
    action(u"trayShowVelto"_s)->trigger();
    EXPECT_EQ(activations.count(), 1);
    tray.menu()->hide();
}
