#include "BoardFixture.h"

#include <QDropEvent>
#include <QMimeData>
#include <QQmlProperty>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// The board's main view over a real model, in a window offscreen, as a user would meet it.
class BoardViewTest : public BoardFixture {
protected:
    void show() { showInWindow("BoardView { anchors.fill: parent; board: host.board; timer: host.timer }", {1180, 760}); }

    [[nodiscard]] QString countOf(const QString &column) const
    {
        return itemNamed(item(column), u"columnCount"_s)->property("text").toString();
    }

    // The gap of the first column that takes a drop at `position`.
    [[nodiscard]] QQuickItem *gap(int position) const
    {
        for (QQuickItem *target : itemsNamed(item(u"column0"_s), u"dropTarget"_s))
            if (target->property("position").toInt() == position)
                return target;
        return nullptr;
    }

    // What another program's drag does when the user lets go of it over `target`.
    void dropAt(QMimeData &data, const QQuickItem *target)
    {
        const QPointF point = target->mapToScene(QPointF(target->width() / 2, target->height() / 2));
        QDragEnterEvent enter(point.toPoint(), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(m_window.get(), &enter);
        QDragMoveEvent move(point.toPoint(), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(m_window.get(), &move);
        QDropEvent drop(point, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(m_window.get(), &drop);
    }

    // Opens the card's menu with a secondary click and returns the names of the entries it shows.
    [[nodiscard]] QStringList menuEntriesOf(const QString &name)
    {
        QQuickItem *cell = nullptr;
        for (QQuickItem *candidate : itemsNamed(m_window->contentItem(), u"cardCell"_s))
            if (candidate->property("face").toMap().value(u"displayName"_s) == name)
                cell = candidate;
        if (cell == nullptr)
            return {u"no card "_s + name};
        QTest::mouseClick(m_window.get(), Qt::RightButton, {}, cell->mapToScene({20, 10}).toPoint());
        QObject *menu = cell->findChild<QObject *>(u"cardContextMenu"_s);
        if (menu == nullptr || !QTest::qWaitFor([&] { return menu->property("opened").toBool(); }, 2000))
            return {u"no menu"_s};
        QStringList shown;
        for (QQuickItem *entry : menu->findChildren<QQuickItem *>()) {
            if (entry->objectName().startsWith(u"menu"_s) && entry->isVisible())
                shown.append(entry->objectName());
            // The card's own status is marked in the status submenu by a symbol of its own.
            if (entry->objectName().startsWith(u"statusEntry"_s)
                && QQmlProperty::read(entry, u"icon.source"_s).toUrl().fileName() == u"largecircle.fill.circle.svg"_s)
                shown.append(entry->objectName());
        }
        QMetaObject::invokeMethod(menu, "close");
        return shown;
    }
};

TEST_F(BoardViewTest, ColumnsAndCountsFollowTheFilter)
{
    addFolders({u"Alpha"_s, u"Beta"_s, u"Gamma"_s});
    await(board().setStatus(CardStatus::waiting, *cardNamed(u"Gamma"_s)));
    show();
    ASSERT_NE(item(u"column0"_s), nullptr);
    EXPECT_TRUE(QTest::qWaitFor([&] { return countOf(u"column0"_s) == u"2"_s; }, 2000));
    EXPECT_EQ(countOf(u"column2"_s), u"1"_s);

    board().setSearchText(u"béta"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return countOf(u"column0"_s) == u"1"_s; }, 2000));
    EXPECT_EQ(countOf(u"column2"_s), u"0"_s);

    board().setStatusVisible(1, false);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !item(u"column1"_s)->isVisible(); }, 2000));
}

// Every place of a column takes a drop, in the order of the cards: before the first, after each.
TEST_F(BoardViewTest, TheGapsOfAColumnStandBetweenItsCards)
{
    addFolders({u"A"_s, u"B"_s, u"C"_s});
    show();
    ASSERT_TRUE(QTest::qWaitFor([&] { return countOf(u"column0"_s) == u"3"_s; }, 2000));
    QList<QQuickItem *> cells = itemsNamed(item(u"column0"_s), u"cardCell"_s);
    ASSERT_EQ(cells.size(), 3);
    std::ranges::sort(cells, {}, [](const QQuickItem *cell) { return cell->mapToScene({}).y(); });
    const auto top = [](const QQuickItem *item) { return item->mapToScene({}).y(); };
    for (int position = 0; position <= 3; ++position) {
        SCOPED_TRACE(position);
        const QQuickItem *target = gap(position);
        ASSERT_NE(target, nullptr);
        if (position > 0) {
            EXPECT_GE(top(target), top(cells[position - 1]) + cells[position - 1]->height() - 1);
        }
        if (position < 3) {
            EXPECT_LE(top(target) + target->height(), top(cells[position]) + 1);
        }
    }
    // Below the tail the rest of the column takes a drop at the bottom too.
    const QQuickItem *tail = itemNamed(item(u"column0"_s), u"tailDropTarget"_s);
    const QQuickItem *freeSpace = itemNamed(item(u"column0"_s), u"freeSpaceDropArea"_s);
    ASSERT_NE(tail, nullptr);
    ASSERT_NE(freeSpace, nullptr);
    EXPECT_NEAR(top(freeSpace), top(tail) + tail->height(), 1);
    EXPECT_NEAR(top(freeSpace) + freeSpace->height(), top(item(u"column0"_s)) + item(u"column0"_s)->height(), 1);
    EXPECT_EQ(freeSpace->property("position").toInt(), 3);
}

// What comes from outside: folders become new cards where new cards go, wherever they were dropped;
// a card from another program, or a folder gone meanwhile, changes nothing.
TEST_F(BoardViewTest, DropsFromOutsideTheWindow)
{
    addFolders({u"A"_s, u"B"_s});
    await(board().setStatus(CardStatus::waiting, *cardNamed(u"B"_s)));
    sandbox().makeFolder(u"New"_s);
    show();
    ASSERT_TRUE(QTest::qWaitFor([&] { return countOf(u"column2"_s) == u"1"_s; }, 2000));
    const QQuickItem *waitingGap = itemsNamed(item(u"column2"_s), u"dropTarget"_s).value(0);
    ASSERT_NE(waitingGap, nullptr);

    QMimeData foreignCard;
    foreignCard.setData(u"io.quillmere.Velto.card"_s, cardNamed(u"A"_s)->id.toUtf8());
    dropAt(foreignCard, waitingGap);
    QMimeData vanished;
    vanished.setUrls({sandbox().url(u"Vanished"_s)});
    dropAt(vanished, waitingGap);
    // Bytes that are no text must not turn into an id that a move then fails to find.
    QMimeData garbled;
    garbled.setData(u"io.quillmere.Velto.card"_s, QByteArray("\xff\xfe\x80", 3));
    dropAt(garbled, waitingGap);
    // An empty card payload makes the drag a card's: the folder riding with it is not added.
    QMimeData emptyCard;
    emptyCard.setData(u"io.quillmere.Velto.card"_s, QByteArray());
    emptyCard.setUrls({sandbox().url(u"New"_s)});
    dropAt(emptyCard, waitingGap);
    QTest::qWait(200);
    EXPECT_EQ(column(CardStatus::notStarted), QStringList{u"A"_s});
    EXPECT_EQ(board().cards().size(), 2);
    EXPECT_EQ(board().errorMessage(), std::nullopt);

    QMimeData folder;
    folder.setUrls({sandbox().url(u"New"_s)});
    dropAt(folder, waitingGap);
    EXPECT_TRUE(QTest::qWaitFor([&] { return column(CardStatus::notStarted) == QStringList{u"A"_s, u"New"_s}; }, 3000));
    EXPECT_EQ(column(CardStatus::waiting), QStringList{u"B"_s});
}

TEST_F(BoardViewTest, TheCardMenuFollowsTheSortAndTheFolder)
{
    const QStringList always{u"menuOpen"_s, u"menuCopyBriefing"_s, u"menuTimer"_s};
    const QStringList byHand{u"menuMoveTop"_s, u"menuMoveUp"_s, u"menuMoveDown"_s, u"menuMoveBottom"_s};
    const struct {
        bool sortByPriority;
        QString card;
        QStringList expected;
    } cases[] = {
        {false, u"Here"_s, always + byHand + QStringList{u"statusEntry2"_s, u"menuRemove"_s}},
        {true, u"Here"_s, always + QStringList{u"menuSortNotice"_s, u"statusEntry2"_s, u"menuRemove"_s}},
        {false, u"Gone"_s, always + byHand + QStringList{u"statusEntry0"_s, u"menuLocate"_s, u"menuRemove"_s}},
        {true, u"Gone"_s, always + QStringList{u"menuSortNotice"_s, u"statusEntry0"_s, u"menuLocate"_s, u"menuRemove"_s}},
    };
    addFolders({u"Here"_s, u"Gone"_s});
    await(board().setStatus(CardStatus::waiting, *cardNamed(u"Here"_s)));
    sandbox().remove(u"Gone"_s);
    await(board().reload());
    show();
    for (const auto &c : cases) {
        SCOPED_TRACE((c.card + (c.sortByPriority ? u" sorted"_s : u" by hand"_s)).toStdString());
        board().setSortByPriority(c.sortByPriority);
        EXPECT_EQ(menuEntriesOf(c.card), c.expected);
    }
}

TEST_F(BoardViewTest, TheModeSwitchShowsTheDueSoonList)
{
    show();
    EXPECT_NE(item(u"columnRow"_s), nullptr);
    board().setMode(BoardMode::dueSoon);
    EXPECT_TRUE(QTest::qWaitFor([&] { return item(u"dueSoonView"_s) != nullptr; }, 2000));
    EXPECT_EQ(item(u"columnRow"_s), nullptr);
    board().setGroupByProject(true);
    board().setMode(BoardMode::board);
    EXPECT_TRUE(QTest::qWaitFor([&] { return item(u"swimlaneBoard"_s) != nullptr; }, 2000));
}

// In a lane the columns grow with their cards, and all take the height of the fullest.
TEST_F(BoardViewTest, LaneColumnsShareTheHeightOfTheFullest)
{
    addFolders({u"A"_s, u"B"_s, u"C"_s});
    board().setGroupByProject(true);
    show();
    ASSERT_TRUE(QTest::qWaitFor([&] { return item(u"column0"_s) != nullptr && countOf(u"column0"_s) == u"3"_s; }, 2000));
    const qreal full = item(u"column0"_s)->height();
    for (const QString &name : {u"column1"_s, u"column2"_s, u"column3"_s}) {
        EXPECT_EQ(item(name)->height(), full) << name.toStdString();
    }
    await(board().setStatus(CardStatus::inProgress, *cardNamed(u"A"_s)));
    await(board().setStatus(CardStatus::inProgress, *cardNamed(u"B"_s)));
    EXPECT_TRUE(QTest::qWaitFor([&] { return item(u"column0"_s)->height() < full; }, 2000));
    EXPECT_EQ(item(u"column0"_s)->height(), item(u"column1"_s)->height());
}

} // namespace
