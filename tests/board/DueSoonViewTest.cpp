#include "BoardFixture.h"

#include <QQuickItem>
#include <QQuickWindow>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// The due-soon list in a window over a real board.
class DueSoonViewTest : public BoardFixture {
protected:
    void SetUp() override
    {
        BoardFixture::SetUp();
        showInWindow("DueSoonView { anchors.fill: parent; model: host.board }", {720, 480});
    }

    // The rows on show, top to bottom.
    QList<QQuickItem *> rows() const
    {
        QList<QQuickItem *> found = itemsNamed(m_window->contentItem(), u"dueSoonRow"_s);
        found.removeIf([](QQuickItem *row) { return !row->isVisible(); });
        std::ranges::sort(found, {}, [](QQuickItem *row) { return row->mapToScene({}).y(); });
        return found;
    }

    QStringList rowNames() const
    {
        QStringList names;
        for (QQuickItem *row : rows())
            names.append(itemsNamed(row, u"dueSoonName"_s).value(0)->property("text").toString());
        return names;
    }

    // Noon of the day `days` from today, in the system's time zone, as the list counts days.
    static VeltoDate inDays(int days)
    {
        const QDateTime noon(QDate::currentDate().addDays(days), QTime(12, 0));
        return VeltoDate(double(noon.toSecsSinceEpoch()) - 978307200.0);
    }

    void setDeadline(const QString &card, int days) { await(board().setDeadline(inDays(days), *cardNamed(card))); }
};

TEST_F(DueSoonViewTest, WithNothingDueTheEmptyStateShows)
{
    const struct {
        const char *board;
        std::function<void()> arrange;
    } cases[] = {
        {"no cards", [] {}},
        {"no deadlines", [&] { addFolders({u"A"_s}); }},
        {"due in eight days", [&] { setDeadline(u"A"_s, 8); }},
        {"overdue but complete",
         [&] {
             setDeadline(u"A"_s, -3);
             await(board().setStatus(CardStatus::complete, *cardNamed(u"A"_s)));
         }},
    };
    for (const auto &[state, arrange] : cases) {
        SCOPED_TRACE(state);
        arrange();
        EXPECT_TRUE(item(u"dueSoonEmpty"_s)->isVisible());
        EXPECT_FALSE(item(u"dueSoonList"_s)->isVisible());
        EXPECT_EQ(item(u"dueSoonEmptyTitle"_s)->property("text").toString(), u"Nothing due soon"_s);
        EXPECT_EQ(item(u"dueSoonEmptyDescription"_s)->property("text").toString(),
                  u"Cards with a deadline in the next seven days, or already overdue, appear here."_s);
    }
}

TEST_F(DueSoonViewTest, RowsComeInDeadlineOrderWithTheirStatus)
{
    addFolders({u"Soon"_s, u"None"_s, u"Overdue"_s, u"Tomorrow"_s, u"Week"_s});
    setDeadline(u"Soon"_s, 5);
    setDeadline(u"Overdue"_s, -20);
    setDeadline(u"Tomorrow"_s, 1);
    setDeadline(u"Week"_s, 7);
    await(board().setStatus(CardStatus::waiting, *cardNamed(u"Tomorrow"_s)));

    ASSERT_TRUE(QTest::qWaitFor([&] { return rows().size() == 4; }));
    EXPECT_FALSE(item(u"dueSoonEmpty"_s)->isVisible());
    EXPECT_EQ(rowNames(), (QStringList{u"Overdue"_s, u"Tomorrow"_s, u"Soon"_s, u"Week"_s}));
    const QList<QQuickItem *> shown = rows();
    EXPECT_EQ(itemsNamed(shown[1], u"dueSoonStatus"_s).value(0)->property("text").toString(),
              u"Waiting on Others"_s);
    EXPECT_EQ(itemsNamed(shown[1], u"deadlineText"_s).value(0)->property("text").toString(), u"Due tomorrow"_s);
}

TEST_F(DueSoonViewTest, AClickSelectsAndADoubleClickShowsTheFolder)
{
    addFolders({u"First"_s, u"Second"_s});
    setDeadline(u"First"_s, 1);
    setDeadline(u"Second"_s, 2);
    ASSERT_TRUE(QTest::qWaitFor([&] { return rows().size() == 2; }));
    QQuickItem *second = rows().at(1);
    const QPoint centre = second->mapToScene({second->width() / 2, second->height() / 2}).toPoint();

    QTest::mouseClick(m_window.get(), Qt::LeftButton, {}, centre);
    EXPECT_EQ(board().selectedCardIDText(), cardNamed(u"Second"_s)->id);
    EXPECT_TRUE(second->property("isSelected").toBool());
    EXPECT_FALSE(rows().at(0)->property("isSelected").toBool());
    EXPECT_TRUE(revealed().isEmpty()) << "a single click only selects";

    QTest::mouseDClick(m_window.get(), Qt::LeftButton, {}, centre);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !revealed().isEmpty(); }));
    EXPECT_EQ(revealed(), QList<QUrl>{sandbox().url(u"Second"_s)});
}

TEST_F(DueSoonViewTest, ArrowKeysMoveTheSelection)
{
    addFolders({u"First"_s, u"Second"_s});
    setDeadline(u"First"_s, 1);
    setDeadline(u"Second"_s, 2);
    ASSERT_TRUE(QTest::qWaitFor([&] { return rows().size() == 2; }));
    board().setSelectedCardID(std::nullopt);
    item(u"dueSoonList"_s)->forceActiveFocus();

    const struct {
        Qt::Key key;
        QString selected;
    } presses[] = {{Qt::Key_Down, u"First"_s}, {Qt::Key_Down, u"Second"_s}, {Qt::Key_Down, u"Second"_s},
                   {Qt::Key_Up, u"First"_s},   {Qt::Key_Up, u"First"_s}};
    for (const auto &[key, selected] : presses) {
        QTest::keyClick(m_window.get(), key);
        EXPECT_EQ(board().selectedCardIDText(), cardNamed(selected)->id) << selected.toStdString();
    }
}

} // namespace
