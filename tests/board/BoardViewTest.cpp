#include "BoardFixture.h"

using namespace Qt::StringLiterals;

namespace {

// The board's main view over a real model, in a window offscreen, as a user would meet it.
class BoardViewTest : public BoardFixture {
protected:
    void show() { showInWindow("BoardView { anchors.fill: parent; board: host.board; timer: host.timer }", {1180, 760}); }
};

TEST_F(BoardViewTest, ColumnsAndCountsFollowTheFilter)
{
    addFolders({u"Alpha"_s, u"Beta"_s, u"Gamma"_s});
    await(board().setStatus(CardStatus::waiting, *cardNamed(u"Gamma"_s)));
    show();
    ASSERT_NE(item(u"column0"_s), nullptr);
    const auto countOf = [&](const QString &column) {
        return itemNamed(item(column), u"columnCount"_s)->property("text").toString();
    };
    EXPECT_TRUE(QTest::qWaitFor([&] { return countOf(u"column0"_s) == u"2"_s; }, 2000));
    EXPECT_EQ(countOf(u"column2"_s), u"1"_s);

    board().setSearchText(u"béta"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return countOf(u"column0"_s) == u"1"_s; }, 2000));
    EXPECT_EQ(countOf(u"column2"_s), u"0"_s);

    board().setStatusVisible(1, false);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !item(u"column1"_s)->isVisible(); }, 2000));
}

} // namespace
