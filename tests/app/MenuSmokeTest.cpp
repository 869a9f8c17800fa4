#include "SmokeFixture.h"

#include "FinderTagMirror.h"
#include "FocusSettings.h"

using namespace Qt::StringLiterals;

namespace {

// Scrolls the form that holds `item` until the item is in its window, as a user would.
void scrollTo(QQuickItem *item)
{
    ASSERT_NE(item, nullptr);
    QQuickItem *flickable = item->parentItem();
    while (flickable != nullptr && !flickable->inherits("QQuickFlickable"))
        flickable = flickable->parentItem();
    ASSERT_NE(flickable, nullptr);
    auto *content = flickable->property("contentItem").value<QQuickItem *>();
    const qreal top = item->mapToItem(content, QPointF(0, 0)).y();
    const qreal room = flickable->property("contentHeight").toReal() - flickable->height();
    flickable->setProperty("contentY", qBound(0.0, top - 20, qMax(0.0, room)));
    QTest::qWait(50);
}

} // namespace

TEST_F(SmokeTest, EveryMenuBarCommandActsOnTheSelectedCard)
{
    // Nothing selected: no column to move to.
    QObject *unselected = openMenuBarMenu(u"cardMenu"_s);
    ASSERT_NE(unselected, nullptr);
    EXPECT_FALSE(entryOf(unselected, u"movePreviousColumnCommand"_s)->isEnabled());
    EXPECT_FALSE(entryOf(unselected, u"moveNextColumnCommand"_s)->isEnabled());
    QMetaObject::invokeMethod(unselected, "close");
    ASSERT_TRUE(QTest::qWaitFor([&] { return !unselected->property("visible").toBool(); }, 2000));

    click(cellOf(u"Atlas"_s));
    ASSERT_TRUE(QTest::qWaitFor([&] { return board()->selectedCardIDText() == stored(u"Atlas"_s).id; }, 3000));

    pressMenuBarEntry(u"cardMenu"_s, u"moveBottomCommand"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return notStarted().last().displayName == u"Atlas"_s; }, 3000));
    pressMenuBarEntry(u"cardMenu"_s, u"moveTopCommand"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return notStarted().first().displayName == u"Atlas"_s; }, 3000));
    pressMenuBarEntry(u"cardMenu"_s, u"moveDownCommand"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return notStarted().at(1).displayName == u"Atlas"_s; }, 3000));
    pressMenuBarEntry(u"cardMenu"_s, u"moveUpCommand"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return notStarted().first().displayName == u"Atlas"_s; }, 3000));

    pressMenuBarEntry(u"timerMenu"_s, u"startTimerCommand"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] {
        const auto running = await(database().runningSession());
        return running && running->cardID == stored(u"Atlas"_s).id;
    }, 3000));
    pressMenuBarEntry(u"timerMenu"_s, u"stopTimerCommand"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !await(database().runningSession()).has_value(); }, 3000));

    pressMenuBarEntry(u"cardMenu"_s, u"statusCommand2"_s, u"statusCommandMenu"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return stored(u"Atlas"_s).status == CardStatus::waiting; }, 3000));
    pressMenuBarEntry(u"cardMenu"_s, u"moveNextColumnCommand"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return stored(u"Atlas"_s).status == CardStatus::complete; }, 3000));
    pressMenuBarEntry(u"cardMenu"_s, u"movePreviousColumnCommand"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return stored(u"Atlas"_s).status == CardStatus::waiting; }, 3000));

    // While the columns sort themselves the moves are off, and the status still works.
    pressMenuBarEntry(u"cardMenu"_s, u"sortByPriorityCommand"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return board()->sortByPriority(); }, 2000));
    QObject *cardMenu = openMenuBarMenu(u"cardMenu"_s);
    ASSERT_NE(cardMenu, nullptr);
    EXPECT_FALSE(entryOf(cardMenu, u"moveUpCommand"_s)->isEnabled());
    EXPECT_TRUE(itemOpening(cardMenu, cardMenu->findChild<QObject *>(u"statusCommandMenu"_s))->isEnabled());
    QMetaObject::invokeMethod(cardMenu, "close");
    EXPECT_TRUE(QTest::qWaitFor([&] { return !cardMenu->property("visible").toBool(); }, 2000));

    pressMenuBarEntry(u"viewMenu"_s, u"manageTaxonomyCommand"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return board()->isManagingTaxonomy(); }, 2000));
    click(named(u"doneButton"_s));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !board()->isManagingTaxonomy(); }, 2000));

    // A title changed in the store behind the board's back shows after a refresh.
    await(database().setCardText(CardTextColumn::title, u"Atlas, renamed"_s, stored(u"Atlas"_s).id));
    pressMenuBarEntry(u"viewMenu"_s, u"refreshCommand"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return board()->selectedCard() && board()->selectedCard()->title; }, 3000));

    m_sandbox.makeFolder(u"work/Meridian"_s);
    m_picker->answers.push_back({m_sandbox.url(u"work/Meridian"_s)});
    pressMenuBarEntry(u"fileMenu"_s, u"addFolderCommand"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return await(database().allCards()).size() == 13; }, 3000));

    pressMenuBarEntry(u"helpMenu"_s, u"shortcutsCommand"_s);
    EXPECT_NE(openWindowNamed(u"keyboardShortcutsWindow"_s), nullptr);
}

// The keys of the menus work without opening them, from the board.
TEST_F(SmokeTest, ShortcutsReachTheCommands)
{
    click(cellOf(u"Beacon"_s));
    ASSERT_TRUE(QTest::qWaitFor([&] { return board()->selectedCardIDText() == stored(u"Beacon"_s).id; }, 3000));
    const auto press = [this](Qt::Key key, Qt::KeyboardModifiers modifiers) {
        m_window->requestActivate();
        // A key acts on the card the board shows, so the lists must have taken the last move.
        EXPECT_TRUE(QQuickTest::qWaitForPolish(m_window));
        QTest::keyClick(m_window, key, modifiers);
    };

    press(Qt::Key_Down, Qt::ControlModifier | Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return notStarted().at(2).displayName == u"Beacon"_s; }, 3000));
    press(Qt::Key_Up, Qt::ControlModifier | Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return notStarted().at(1).displayName == u"Beacon"_s; }, 3000));

    // Across the columns, and no further than the first.
    const struct { Qt::Key key; CardStatus status; } across[] = {
        {Qt::Key_Right, CardStatus::inProgress}, {Qt::Key_Right, CardStatus::waiting},
        {Qt::Key_Left, CardStatus::inProgress}, {Qt::Key_Left, CardStatus::notStarted},
        {Qt::Key_Left, CardStatus::notStarted}};
    for (const auto &step : across) {
        press(step.key, Qt::ControlModifier | Qt::AltModifier);
        EXPECT_TRUE(QTest::qWaitFor([&] { return stored(u"Beacon"_s).status == step.status; }, 3000))
            << int(step.status);
        ASSERT_TRUE(QTest::qWaitFor([&] { return board()->selectedCard()->status == step.status; }, 3000));
    }

    press(Qt::Key_T, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return await(database().runningSession()).has_value(); }, 3000));
    press(Qt::Key_Period, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !await(database().runningSession()).has_value(); }, 3000));

    press(Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return board()->isManagingTaxonomy(); }, 2000));
    click(named(u"doneButton"_s));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !board()->isManagingTaxonomy(); }, 2000));

    m_sandbox.makeFolder(u"work/Nimbus"_s);
    m_picker->answers.push_back({m_sandbox.url(u"work/Nimbus"_s)});
    press(Qt::Key_O, Qt::ControlModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return await(database().allCards()).size() == 13; }, 3000));

    press(Qt::Key_F1, Qt::NoModifier);
    EXPECT_NE(openWindowNamed(u"keyboardShortcutsWindow"_s), nullptr);
    press(Qt::Key_Comma, Qt::ControlModifier);
    EXPECT_NE(openWindowNamed(u"settingsWindow"_s), nullptr);
}

// Each setting of the settings window, changed with the pointer, reaches its model and store.
TEST_F(SmokeTest, TheSettingsWindowChangesEachSetting)
{
    pressMenuBarEntry(u"fileMenu"_s, u"settingsCommand"_s);
    QQuickWindow *settings = openWindowNamed(u"settingsWindow"_s);
    ASSERT_NE(settings, nullptr);
    const auto inSettings = [settings](const QString &name) { return itemNamed(settings->contentItem(), name); };
    FinderTagMirror &mirror = *board()->tagMirror();

    click(inSettings(u"badgeToggleSwitch"_s));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !mirror.showsBadgesInFinder(); }, 2000));

    click(inSettings(u"tagMirrorToggleSwitch"_s));
    EXPECT_TRUE(QTest::qWaitFor([&] { return mirror.isEnabled(); }, 3000));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !inSettings(u"updatingTagsRow"_s)->isVisible(); }, 5000));

    click(inSettings(u"sessionLengthPicker"_s));
    QQuickItem *choice = nullptr;
    ASSERT_TRUE(QTest::qWaitFor([&] { return (choice = inSettings(u"sessionLength_2700"_s)) != nullptr; }, 2000));
    click(choice);
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_model->focus()->targetSeconds() == 2700; }, 2000));

    click(inSettings(u"cardNameToggleSwitch"_s));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !m_model->focus()->showsCardNameInFocusPanel(); }, 2000));

    scrollTo(inSettings(u"theme_dark"_s));
    click(inSettings(u"theme_dark"_s));
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_appearance.isDark(); }, 2000));
    click(inSettings(u"theme_system"_s));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !m_appearance.isDark(); }, 2000));

    scrollTo(inSettings(u"installActionsButton"_s));
    click(inSettings(u"installActionsButton"_s));
    EXPECT_TRUE(QTest::qWaitFor([&] { return inSettings(u"actionsInstalledLine"_s)->isVisible(); }, 2000));
}
