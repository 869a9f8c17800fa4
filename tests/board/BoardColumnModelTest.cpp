#include "BoardColumnModel.h"
#include "BoardFixture.h"

#include <QAbstractItemModelTester>

#include <functional>

using namespace Qt::StringLiterals;

namespace {

// The list a column's view draws, as the board changes under it.
class BoardColumnModelTest : public BoardFixture {
protected:
    [[nodiscard]] static QStringList rowsOf(const BoardColumnModel &model)
    {
        QStringList names;
        for (int row = 0; row < model.rowCount(); ++row)
            names.append(model.data(model.index(row), BoardColumnModel::FaceRole).toMap().value(u"displayName"_s).toString());
        return names;
    }

    Card named(const QString &name) { return *cardNamed(name); }
};

// Each change reaches the list as the rows it touches, so the view keeps the cells of the others.
TEST_F(BoardColumnModelTest, FollowsTheBoardRowByRowWithoutResets)
{
    const struct {
        const char *name;
        std::function<void()> change;
        QStringList expected;
    } steps[] = {
        {"move to the top", [&] { await(board().moveCard(named(u"D"_s).id, CardStatus::notStarted, 0)); },
         {u"D"_s, u"A"_s, u"B"_s, u"C"_s, u"E"_s}},
        {"move down past two", [&] { await(board().moveCard(named(u"D"_s).id, CardStatus::notStarted, 3)); },
         {u"A"_s, u"B"_s, u"D"_s, u"C"_s, u"E"_s}},
        {"out to another column", [&] { await(board().setStatus(CardStatus::waiting, named(u"B"_s))); },
         {u"A"_s, u"D"_s, u"C"_s, u"E"_s}},
        {"a search hides all but the last",
         [&] {
             await(board().setTitle(u"Zebra crossing"_s, named(u"E"_s)));
             board().setSearchText(u"zebra"_s);
         },
         {u"E"_s}},
        {"and shows it again", [&] { board().setSearchText({}); }, {u"A"_s, u"D"_s, u"C"_s, u"E"_s}},
        {"two new folders at the end", [&] { addFolders({u"F"_s, u"G"_s}); },
         {u"A"_s, u"D"_s, u"C"_s, u"E"_s, u"F"_s, u"G"_s}},
        {"back in from another column", [&] { await(board().moveCard(named(u"B"_s).id, CardStatus::notStarted, 1)); },
         {u"A"_s, u"B"_s, u"D"_s, u"C"_s, u"E"_s, u"F"_s, u"G"_s}},
        {"sorted by priority, a reversal",
         [&] {
             await(board().setPriority(Priority::now, named(u"G"_s)));
             await(board().setPriority(Priority::next, named(u"F"_s)));
             board().setSortByPriority(true);
         },
         {u"G"_s, u"F"_s, u"A"_s, u"B"_s, u"D"_s, u"C"_s, u"E"_s}},
        {"removed", [&] { await(board().removeCard(named(u"A"_s))); },
         {u"G"_s, u"F"_s, u"B"_s, u"D"_s, u"C"_s, u"E"_s}},
    };
    addFolders({u"A"_s, u"B"_s, u"C"_s, u"D"_s, u"E"_s});
    BoardColumnModel model;
    QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    model.setBoard(&board());
    ASSERT_EQ(rowsOf(model), (QStringList{u"A"_s, u"B"_s, u"C"_s, u"D"_s, u"E"_s}));
    QSignalSpy resets(&model, &QAbstractItemModel::modelReset);
    for (const auto &step : steps) {
        SCOPED_TRACE(step.name);
        step.change();
        EXPECT_EQ(rowsOf(model), step.expected);
        EXPECT_EQ(model.count(), step.expected.size());
    }
    EXPECT_EQ(resets.count(), 0);
}

// A card whose face changes in place is redrawn alone.
TEST_F(BoardColumnModelTest, AChangedFaceRedrawsOneRow)
{
    addFolders({u"A"_s, u"B"_s, u"C"_s});
    BoardColumnModel model;
    model.setBoard(&board());
    QSignalSpy changed(&model, &QAbstractItemModel::dataChanged);
    await(board().setPriority(Priority::now, named(u"B"_s)));
    ASSERT_EQ(changed.count(), 1);
    EXPECT_EQ(changed.at(0).at(0).toModelIndex().row(), 1);
    EXPECT_EQ(changed.at(0).at(1).toModelIndex().row(), 1);
}

} // namespace
