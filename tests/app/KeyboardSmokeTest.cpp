#include "SmokeFixture.h"

using namespace Qt::StringLiterals;

namespace {

struct Press {
    Qt::Key key;
    Qt::KeyboardModifiers modifiers = Qt::NoModifier;
};

} // namespace

// The board driven from the keyboard alone, through the real window.
class KeyboardSmokeTest : public SmokeTest {
protected:
    void SetUp() override
    {
        SmokeTest::SetUp();
        if (HasFatalFailure())
            return;
        m_window->requestActivate();
        ASSERT_TRUE(QTest::qWaitForWindowActive(m_window));
    }

    void press(Press key) { QTest::keyClick(m_window, key.key, key.modifiers); }

    // The card whose cell has the keyboard, by its folder's name; empty when no card has it.
    QString focusedName() const
    {
        QQuickItem *holder = m_window->activeFocusItem();
        if (holder == nullptr || holder->objectName() != u"cardCell"_s)
            return {};
        return holder->property("face").toMap().value(u"displayName"_s).toString();
    }

    // Puts the keyboard on a card without touching it with the pointer, as Tab would.
    void focusCard(const QString &name)
    {
        QQuickItem *cell = cellOf(name);
        ASSERT_NE(cell, nullptr) << name.toStdString();
        cell->forceActiveFocus(Qt::TabFocusReason);
        ASSERT_EQ(focusedName(), name);
    }

    // Once the board shows the card in the column, not merely once the store has it there: the
    // next key acts on what the board shows.
    bool shownIn(const QString &name, CardStatus status) const
    {
        return QTest::qWaitFor([&] {
            return stored(name).status == status && namesOf(board()->columnCards(status, {})).contains(name);
        }, 3000);
    }

    bool focusComesTo(const QString &name) const
    {
        // The lists take their rows' changes on their next polish; until then the old cell holds on.
        return QQuickTest::qWaitForPolish(m_window) && QTest::qWaitFor([&] { return focusedName() == name; }, 3000);
    }

    static QStringList namesOf(const QList<Card> &cards)
    {
        QStringList names;
        for (const Card &card : cards)
            names.append(card.displayName);
        return names;
    }
};

TEST_F(KeyboardSmokeTest, ArrowsHomeAndEndWalkAColumn)
{
    const QStringList column = namesOf(notStarted());
    ASSERT_EQ(column.size(), 12);
    focusCard(column.first());

    const struct {
        Press key;
        QString lands;
    } steps[] = {
        {{Qt::Key_Down}, column.at(1)},
        {{Qt::Key_Down}, column.at(2)},
        {{Qt::Key_Up}, column.at(1)},
        {{Qt::Key_End}, column.last()},
        {{Qt::Key_Down}, column.last()}, // off the bottom: it stays
        {{Qt::Key_Right}, column.last()}, // no other column has cards
        {{Qt::Key_Home}, column.first()},
        {{Qt::Key_Up}, column.first()},
        {{Qt::Key_Left}, column.first()},
    };
    for (const auto &step : steps) {
        press(step.key);
        EXPECT_TRUE(focusComesTo(step.lands)) << "after key " << step.key.key << " expected "
                                              << step.lands.toStdString() << ", on " << focusedName().toStdString();
        EXPECT_EQ(board()->focusedCardID(), stored(step.lands).id);
    }
}

TEST_F(KeyboardSmokeTest, CardsMovedByKeysKeepTheFocusAcrossTheReload)
{
    const QStringList column = namesOf(notStarted());
    const QString first = column.at(0);
    const QString second = column.at(1);

    // Across the columns the card lands in the next one, and the keyboard is still on it there;
    // back into a column that kept the card's old cell for reuse, and forward again.
    constexpr Qt::KeyboardModifiers move = Qt::ControlModifier | Qt::AltModifier;
    const struct {
        Qt::Key key;
        CardStatus lands;
    } moves[] = {{Qt::Key_Right, CardStatus::inProgress},
                 {Qt::Key_Right, CardStatus::waiting},
                 {Qt::Key_Left, CardStatus::inProgress},
                 {Qt::Key_Right, CardStatus::waiting}};
    focusCard(first);
    for (const auto &step : moves) {
        press({step.key, move});
        ASSERT_TRUE(shownIn(first, step.lands)) << int(step.lands);
        EXPECT_TRUE(focusComesTo(first)) << int(step.lands);
    }

    // Left goes to the nearest column with cards, at the same height.
    press({Qt::Key_Left});
    EXPECT_TRUE(focusComesTo(second));
    press({Qt::Key_Right});
    EXPECT_TRUE(focusComesTo(first));

    // Within the column, as the menu's Move Up and Move Down.
    focusCard(second);
    press({Qt::Key_Down, move});
    ASSERT_TRUE(QTest::qWaitFor([&] { return notStarted().at(1).displayName == second; }, 3000));
    EXPECT_TRUE(focusComesTo(second));
    press({Qt::Key_Up, move});
    ASSERT_TRUE(QTest::qWaitFor([&] { return notStarted().at(0).displayName == second; }, 3000));
    EXPECT_TRUE(focusComesTo(second));

    // Sorted by priority the order is not the user's, so a move by key does nothing.
    board()->setSortByPriority(true);
    const QStringList sorted = namesOf(notStarted());
    press({Qt::Key_Down, move});
    QTest::qWait(200);
    EXPECT_EQ(namesOf(notStarted()), sorted);
}

TEST_F(KeyboardSmokeTest, ReturnOpensTheDetailAndEscapeBringsTheKeyboardBack)
{
    const QString name = notStarted().at(2).displayName;
    focusCard(name);
    press({Qt::Key_Return});
    ASSERT_TRUE(QTest::qWaitFor([&] { return board()->selectedCardIDText() == stored(name).id; }, 3000));

    // The keyboard in the pane, say on its title, and then Escape.
    QQuickItem *pane = named(u"cardDetailColumn"_s);
    ASSERT_NE(pane, nullptr);
    pane->forceActiveFocus();
    press({Qt::Key_Escape});
    EXPECT_TRUE(QTest::qWaitFor([&] { return board()->selectedCardIDText().isEmpty(); }, 3000));
    EXPECT_TRUE(focusComesTo(name));
}

TEST_F(KeyboardSmokeTest, TheMenuKeysDeleteAndCtrlFReachTheirPlaces)
{
    const QString name = notStarted().at(3).displayName;

    for (const Press opener : {Press{Qt::Key_Menu}, Press{Qt::Key_F10, Qt::ShiftModifier}}) {
        focusCard(name);
        press(opener);
        QObject *menu = cellOf(name)->findChild<QObject *>(u"cardContextMenu"_s);
        ASSERT_NE(menu, nullptr);
        ASSERT_TRUE(QTest::qWaitFor([&] { return menu->property("opened").toBool(); }, 2000));
        press({Qt::Key_Escape});
        ASSERT_TRUE(QTest::qWaitFor([&] { return !menu->property("visible").toBool(); }, 2000));
    }

    focusCard(name);
    press({Qt::Key_Delete});
    click(named(u"confirmRemoval"_s));
    EXPECT_TRUE(QTest::qWaitFor([&] { return await(database().allCards()).size() == 11; }, 3000));

    press({Qt::Key_F, Qt::ControlModifier});
    QQuickItem *search = named(u"searchField"_s);
    ASSERT_NE(search, nullptr);
    EXPECT_TRUE(QTest::qWaitFor([&] { return search->hasActiveFocus(); }, 2000));
}
