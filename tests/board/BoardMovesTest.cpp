#include "BoardFixture.h"

using namespace Qt::StringLiterals;

namespace {

// Five cards in "Not Started", A to E, with B, C and D tagged "hidden" so a filter can hide them.
class BoardMovesTest : public BoardFixture {
protected:
    void SetUp() override
    {
        BoardFixture::SetUp();
        addFolders({u"A"_s, u"B"_s, u"C"_s, u"D"_s, u"E"_s, u"Mover"_s});
        await(board().setStatus(CardStatus::inProgress, card(u"Mover"_s)));
        for (const QString &name : {u"A"_s, u"E"_s, u"Mover"_s})
            await(board().addTag(u"shown"_s, card(name)));
        shownTag = board().tags().first().id;
    }

    Card card(const QString &name) { return *cardNamed(name); }

    void showOnlyTagged()
    {
        BoardFilter filter;
        filter.tagIDs = {shownTag};
        board().setFilter(filter);
    }

    // "Not Started" as stored, whatever the filter hides.
    QStringList stored()
    {
        QList<Card> all;
        for (const Card &entry : board().cards())
            if (entry.status == CardStatus::notStarted)
                all.append(entry);
        std::ranges::stable_sort(all, {}, &Card::sortOrder);
        return namesIn(all);
    }

    void drop(const QString &name, qint64 visible, const ProjectFilter &lane = {})
    {
        await(board().acceptDrop({{card(name).id}, {}}, CardStatus::notStarted, visible, lane));
    }

    QString shownTag;
};

TEST_F(BoardMovesTest, DropsBetweenFilteredCardsGoBeforeTheCardShownBelow)
{
    showOnlyTagged();
    ASSERT_EQ(column(CardStatus::notStarted), (QStringList{u"A"_s, u"E"_s}));
    struct Case {
        qint64 visible;
        QStringList expected;
    };
    const std::vector<Case> cases{
        {1, {u"A"_s, u"B"_s, u"C"_s, u"D"_s, u"Mover"_s, u"E"_s}}, // after the hidden ones, right before E
        {3, {u"A"_s, u"B"_s, u"C"_s, u"D"_s, u"E"_s, u"Mover"_s}}, // past the end: after every card of the status
        {0, {u"Mover"_s, u"A"_s, u"B"_s, u"C"_s, u"D"_s, u"E"_s}},
        {1, {u"Mover"_s, u"A"_s, u"B"_s, u"C"_s, u"D"_s, u"E"_s}}, // on its own place: it stays
    };
    for (const Case &entry : cases) {
        SCOPED_TRACE(entry.visible);
        drop(u"Mover"_s, entry.visible);
        EXPECT_EQ(stored(), entry.expected);
        EXPECT_EQ(card(u"Mover"_s).status, CardStatus::notStarted);
        EXPECT_FALSE(card(u"Mover"_s).projectID) << "a drop outside lanes never changes the project";
    }
}

TEST_F(BoardMovesTest, ColumnMovesCountOnlyTheCardsShown)
{
    showOnlyTagged();
    await(board().setStatus(CardStatus::notStarted, card(u"Mover"_s)));
    ASSERT_EQ(column(CardStatus::notStarted), (QStringList{u"Mover"_s, u"A"_s, u"E"_s}));
    struct Case {
        QString name;
        ColumnMove move;
        QStringList shown;
        bool reloads;
    };
    const std::vector<Case> cases{
        {u"Mover"_s, ColumnMove::up, {u"Mover"_s, u"A"_s, u"E"_s}, false},
        {u"Mover"_s, ColumnMove::top, {u"Mover"_s, u"A"_s, u"E"_s}, false},
        {u"A"_s, ColumnMove::down, {u"Mover"_s, u"E"_s, u"A"_s}, true}, // the second-last goes last
        {u"A"_s, ColumnMove::bottom, {u"Mover"_s, u"E"_s, u"A"_s}, false},
        {u"A"_s, ColumnMove::up, {u"Mover"_s, u"A"_s, u"E"_s}, true},
        {u"E"_s, ColumnMove::top, {u"E"_s, u"Mover"_s, u"A"_s}, true},
        {u"B"_s, ColumnMove::top, {u"E"_s, u"Mover"_s, u"A"_s}, false}, // hidden by the filter
    };
    for (const Case &entry : cases) {
        SCOPED_TRACE(entry.name.toStdString());
        QSignalSpy loads(&board(), &BoardModel::isLoadingChanged);
        await(board().moveInColumn(card(entry.name), entry.move));
        EXPECT_EQ(column(CardStatus::notStarted), entry.shown);
        EXPECT_EQ(!loads.isEmpty(), entry.reloads);
    }

    // Sorted by priority, the hand moves do nothing; a drop still reorders the stored column.
    board().setSortByPriority(true);
    const QStringList before = stored();
    await(board().moveInColumn(card(u"E"_s), ColumnMove::bottom));
    EXPECT_EQ(stored(), before);
    board().setFilter({});
    drop(u"E"_s, 6);
    EXPECT_EQ(stored().last(), u"E"_s);
}

TEST_F(BoardMovesTest, DropIntoALaneMovesAndReassignsTheCard)
{
    await(board().createProject(u"Work"_s, u"#2A78D6"_s));
    const QString work = board().projects().first().id;
    await(board().setProject(work, card(u"Mover"_s).id));
    board().setGroupByProject(true);

    drop(u"Mover"_s, 0, {ProjectFilter::Unassigned{}});
    EXPECT_FALSE(card(u"Mover"_s).projectID);
    EXPECT_EQ(column(CardStatus::notStarted, {ProjectFilter::Unassigned{}}).first(), u"Mover"_s);

    // Two cards dropped together both join the column and the lane.
    await(board().acceptDrop({{card(u"E"_s).id, card(u"D"_s).id}, {}}, CardStatus::waiting, 0,
                             {ProjectFilter::Project{work}}));
    QStringList lane = column(CardStatus::waiting, {ProjectFilter::Project{work}});
    lane.sort();
    EXPECT_EQ(lane, (QStringList{u"D"_s, u"E"_s}));
}

TEST_F(BoardMovesTest, DropsOfNothingOrOfUnknownCardsChangeNothing)
{
    const QList<Card> before = board().cards();
    await(board().acceptDrop({}, CardStatus::complete, 0, {}));
    EXPECT_FALSE(board().errorMessage());
    await(board().acceptDrop({{u"no-such-card"_s}, {}}, CardStatus::complete, 0, {}));
    EXPECT_EQ(board().cards(), before);

    // setStatus to the present status writes nothing, not even a reload.
    QSignalSpy loads(&board(), &BoardModel::isLoadingChanged);
    await(board().setStatus(CardStatus::notStarted, card(u"A"_s)));
    EXPECT_TRUE(loads.isEmpty());
}

TEST_F(BoardMovesTest, DeletedProjectsAndTagsLeaveTheFilter)
{
    await(board().createProject(u"Work"_s, u"#2A78D6"_s));
    const QString work = board().projects().first().id;
    await(board().setProject(work, card(u"A"_s).id));
    BoardFilter filter;
    filter.project = {ProjectFilter::Project{work}};
    filter.tagIDs = {shownTag};
    board().setFilter(filter);
    ASSERT_EQ(column(CardStatus::notStarted), QStringList{u"A"_s});

    await(board().deleteProject(work));
    EXPECT_EQ(board().filter().project, ProjectFilter{});
    EXPECT_FALSE(card(u"A"_s).projectID);
    await(board().deleteTag(shownTag));
    EXPECT_TRUE(board().filter().tagIDs.isEmpty());
    EXPECT_EQ(column(CardStatus::notStarted).size(), 5);
}

TEST_F(BoardMovesTest, EditsReachTheCardAndBlankTagsAreRefused)
{
    await(board().setTitle(u"  Launch plan "_s, card(u"A"_s)));
    await(board().setGoal(u"Ship it"_s, card(u"A"_s)));
    await(board().setPriority(Priority::today, card(u"A"_s)));
    const Card a = card(u"A"_s);
    EXPECT_EQ(a.title, u"Launch plan"_s);
    EXPECT_EQ(a.goal, u"Ship it"_s);
    EXPECT_EQ(a.priority, Priority::today);

    await(board().addTag(u"   "_s, a));
    ASSERT_TRUE(board().errorMessage());
    EXPECT_TRUE(board().errorMessage()->contains(u"a tag needs a name"_s));
    board().dismissError();
    EXPECT_FALSE(board().errorMessage());
}

} // namespace
