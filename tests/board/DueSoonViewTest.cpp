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
            names.append(itemNamed(row, u"dueSoonName"_s)->property("text").toString());
        return names;
    }

    // Noon of the day `days` from today, in the system's time zone, as the list counts days.
    static VeltoDate inDays(int days)
    {
        const QDateTime noon(QDate::currentDate().addDays(days), QTime(12, 0));
        return VeltoDate(double(noon.toSecsSinceEpoch()) - 978307200.0);
    }

    void setDeadline(const QString &card, int days) { await(board().setDeadline(inDays(days), *cardNamed(card))); }

    void showTwoRows()
    {
        addFolders({u"First"_s, u"Second"_s});
        setDeadline(u"First"_s, 1);
        setDeadline(u"Second"_s, 2);
        ASSERT_TRUE(QTest::qWaitFor([&] { return rows().size() == 2; }));
    }
};

TEST_F(DueSoonViewTest, WithNothingDueTheEmptyStateShows)
{
    for (const bool withCard : {false, true}) {
        SCOPED_TRACE(withCard ? "due in eight days" : "no cards");
        if (withCard) {
            addFolders({u"A"_s});
            setDeadline(u"A"_s, 8);
        }
        EXPECT_TRUE(item(u"dueSoonEmpty"_s)->isVisible());
        EXPECT_FALSE(item(u"dueSoonList"_s)->isVisible());
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
    EXPECT_EQ(itemNamed(rows().at(1), u"dueSoonStatus"_s)->property("text").toString(), u"Waiting on Others"_s);
    EXPECT_EQ(itemNamed(rows().at(1), u"deadlineText"_s)->property("text").toString(), u"Due tomorrow"_s);
}

TEST_F(DueSoonViewTest, AClickSelectsAndADoubleClickShowsTheFolder)
{
    ASSERT_NO_FATAL_FAILURE(showTwoRows());
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
    ASSERT_NO_FATAL_FAILURE(showTwoRows());
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
