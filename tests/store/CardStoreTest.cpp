#include "StoreFixture.h"

#include "CardResolution.h"
#include "RepositoryError.h"

#include <functional>
#include <tuple>

using namespace Qt::StringLiterals;

namespace {

class CardStoreTest : public StoreFixture {
protected:
    void insert(const QList<Card> &cards)
    {
        for (const Card &card : cards)
            await(database().insertCard(card));
    }

    Card stored(const QString &id) { return await(database().card(id)).value(); }

    // The ids of a column from top to bottom.
    QStringList column(CardStatus status)
    {
        QStringList ids;
        for (const Card &card : await(database().allCards())) {
            if (card.status == status)
                ids.append(card.id);
        }
        return ids;
    }
};

TEST_F(CardStoreTest, ACardReadsBackAsItWasInserted)
{
    Card card = makeCard(u"A"_s, CardStatus::waiting, 2.5);
    card.bookmark = QByteArray();
    card.priority = Priority::thisWeek;
    card.deadline = VeltoDate(0);
    card.isMissing = true;
    card.lastSeenFileCount = 0;
    card.finderTag = u"Waiting"_s;
    card.title = QString();
    card.goal = u"Ship *it*"_s;
    insert({card, makeCard(u"B"_s, CardStatus::complete, 0)});
    EXPECT_EQ(stored(u"A"_s), card);
    EXPECT_EQ(await(database().card(u"gone"_s)), std::nullopt);
}

struct MoveCase {
    const char *name;
    QList<Card> cards;
    QString id;
    CardStatus status;
    qint64 position;
    QStringList column;
    double order;
};

TEST_F(CardStoreTest, AMovePlacesTheCardAmongTheColumnAsItStoodBefore)
{
    const auto ns = CardStatus::notStarted;
    const auto ip = CardStatus::inProgress;
    const QList<Card> abc{makeCard(u"A"_s, ns, 0), makeCard(u"B"_s, ns, 1), makeCard(u"C"_s, ns, 2)};
    const QList<Card> pq{makeCard(u"P"_s, ip, 0), makeCard(u"Q"_s, ip, 1)};
    const QList<MoveCase> cases{
        {"the first to position 1 stays first", {makeCard(u"A"_s, ns, -5), abc[1], abc[2]}, u"A"_s, ns, 1,
         {u"A"_s, u"B"_s, u"C"_s}, 0.0},
        {"down by one", abc, u"A"_s, ns, 2, {u"B"_s, u"A"_s, u"C"_s}, 1.5},
        {"up by one", abc, u"C"_s, ns, 1, {u"A"_s, u"C"_s, u"B"_s}, 0.5},
        {"past the end of its own column", abc, u"A"_s, ns, 10, {u"B"_s, u"C"_s, u"A"_s}, 3.0},
        {"into an empty column", abc, u"B"_s, ip, 0, {u"B"_s}, 0.0},
        {"between two of another column", abc + pq, u"A"_s, ip, 1, {u"P"_s, u"A"_s, u"Q"_s}, 0.5},
        {"to a negative position", abc + pq, u"A"_s, ip, -3, {u"A"_s, u"P"_s, u"Q"_s}, -1.0},
    };
    for (const MoveCase &testCase : cases) {
        SCOPED_TRACE(testCase.name);
        reopen();
        insert(testCase.cards);
        const CardStatus from = stored(testCase.id).status;
        await(database().moveCard(testCase.id, testCase.status, testCase.position, VeltoDate(5000)));
        EXPECT_EQ(column(testCase.status), testCase.column);
        EXPECT_EQ(stored(testCase.id).sortOrder, testCase.order);
        // Only a change of column restarts the clock of the status.
        EXPECT_EQ(stored(testCase.id).statusChangedAt, VeltoDate(from == testCase.status ? 1000 : 5000));
    }
}

TEST_F(CardStoreTest, AGapHalvedUntilItRunsOutRenumbersTheColumnOnce)
{
    const auto ns = CardStatus::notStarted;
    insert({makeCard(u"A"_s, ns, 1), makeCard(u"B"_s, ns, 2), makeCard(u"C"_s, ns, 3)});
    takePosts();
    // Dropping the lower of the two cards under A just below A halves the gap each time: 52
    // halvings fit between 1.0 and 2.0, and the 53rd move finds no room.
    for (int move = 1; move <= 53; ++move) {
        const QStringList before = column(ns);
        await(database().moveCard(before[2], ns, 1));
        ASSERT_EQ(column(ns), (QStringList{before[0], before[2], before[1]})) << "move " << move;
        const QList<double> orders{stored(before[0]).sortOrder, stored(before[2]).sortOrder,
                                   stored(before[1]).sortOrder};
        EXPECT_EQ(orders == QList<double>({0.0, 0.5, 1.0}), move == 53) << "move " << move;
    }
    EXPECT_EQ(takePosts(), 53);
}

TEST_F(CardStoreTest, NextSortOrderIsOneAboveTheHighestOfTheColumn)
{
    insert({makeCard(u"A"_s, CardStatus::inProgress, 2.5), makeCard(u"B"_s, CardStatus::inProgress, -1),
            makeCard(u"C"_s, CardStatus::waiting, -3), makeCard(u"D"_s, CardStatus::complete, 40)});
    EXPECT_EQ(await(database().nextSortOrder(CardStatus::notStarted)), 0.0);
    EXPECT_EQ(await(database().nextSortOrder(CardStatus::inProgress)), 3.5);
    EXPECT_EQ(await(database().nextSortOrder(CardStatus::waiting)), -2.0);
}

TEST_F(CardStoreTest, CardTextIsStoredTrimmedOrNotAtAll)
{
    insert({makeCard(u"A"_s, CardStatus::notStarted, 0)});
    const QList<std::pair<std::optional<QString>, std::optional<QString>>> cases{
        {u"  Plan  "_s, u"Plan"_s}, {u"\n\tShip *it*\r\n"_s, u"Ship *it*"_s}, {u"Two\nlines"_s, u"Two\nlines"_s},
        {u"   "_s, std::nullopt},   {u"\n"_s, std::nullopt},                  {std::nullopt, std::nullopt},
    };
    for (const auto &[value, expected] : cases) {
        SCOPED_TRACE(value.value_or(u"(absent)"_s).toStdString());
        await(database().setCardText(CardTextColumn::title, value, u"A"_s));
        await(database().setCardText(CardTextColumn::goal, value, u"A"_s));
        EXPECT_EQ(std::pair(stored(u"A"_s).title, stored(u"A"_s).goal), std::pair(expected, expected));
    }
}

TEST_F(CardStoreTest, RelinkPointsTheCardAtTheFolderAndClearsMissing)
{
    Card card = makeCard(u"A"_s, CardStatus::notStarted, 0);
    card.isMissing = true;
    insert({card});
    await(database().relinkCard(u"A"_s, QUrl(u"file:///home/ann/Q3%20Report/"_s), "renewed"));
    const Card relinked = stored(u"A"_s);
    EXPECT_EQ(std::tie(relinked.displayPath, relinked.displayName, relinked.bookmark, relinked.isMissing),
              std::tuple(u"/home/ann/Q3 Report"_s, u"Q3 Report"_s, QByteArray("renewed"), false));
}

TEST_F(CardStoreTest, ApplyResolutionsRewritesOnlyTheCardsThatDiffer)
{
    using enum CardResolution::Availability;
    Card found = makeCard(u"F"_s, CardStatus::waiting, 0);
    found.isMissing = true;
    insert({makeCard(u"K"_s, CardStatus::notStarted, 0), makeCard(u"M"_s, CardStatus::notStarted, 1), found});
    execute(u"UPDATE cards SET priority = 'now' WHERE id = 'K'"_s); // shows whether K's row is rewritten
    await(database().applyResolutions({
        {u"K"_s, {u"K"_s, std::nullopt, available, u"K"_s, u"/home/ann/K"_s, std::nullopt, std::nullopt}},
        {u"M"_s, {u"M"_s, std::nullopt, missing, u"M2"_s, u"/srv/M2"_s, "fresh", u"gone"_s}},
        {u"F"_s, {u"F"_s, std::nullopt, unreachable, u"F"_s, u"/home/ann/F"_s, std::nullopt, std::nullopt}},
    }));
    EXPECT_EQ(stored(u"K"_s).priority, Priority::now);
    const Card m = stored(u"M"_s);
    EXPECT_EQ(std::tie(m.displayName, m.displayPath, m.bookmark, m.isMissing),
              std::tuple(u"M2"_s, u"/srv/M2"_s, QByteArray("fresh"), true));
    const Card f = stored(u"F"_s);
    EXPECT_EQ(std::tie(f.bookmark, f.isMissing), std::tuple(QByteArray("F"), false));
}

TEST_F(CardStoreTest, DeletionsCascadeToWhatHangsOnTheRow)
{
    insert({makeCard(u"A"_s, CardStatus::notStarted, 0), makeCard(u"B"_s, CardStatus::notStarted, 1)});
    await(database().insertProject({u"P1"_s, u"Alpha"_s, u"#2A78D6"_s}));
    const Tag red = await(database().findOrCreateTag(u"Red"_s));
    const Tag blue = await(database().findOrCreateTag(u"Blue"_s));
    for (const QString &id : {u"A"_s, u"B"_s}) {
        await(database().setProject(u"P1"_s, id));
        await(database().attachTag(id, red.id));
        await(database().attachTag(id, blue.id));
        await(database().insertChecklistItem({id + u"-item"_s, id, "b", u"notes.md"_s, true, false, 0}));
        await(database().insertSession(makeSession(id + u"-session"_s, id, 10, 20)));
    }
    await(database().deleteCard(u"A"_s));
    await(database().deleteTag(blue.id));
    await(database().deleteProject(u"P1"_s));
    EXPECT_EQ(await(database().tagLinks()), (QHash<QString, QSet<QString>>{{u"B"_s, {red.id}}}));
    EXPECT_EQ(await(database().checklistProgress()).keys(), QList{u"B"_s});
    EXPECT_EQ(await(database().allSessions()), QList{makeSession(u"B-session"_s, u"B"_s, 10, 20)});
    EXPECT_EQ(await(database().allTags()), QList{red});
    EXPECT_EQ(stored(u"B"_s).projectID, std::nullopt);
}

TEST_F(CardStoreTest, AMalformedRowFailsTheWholeRead)
{
    insert({makeCard(u"A"_s, CardStatus::notStarted, 0), makeCard(u"B"_s, CardStatus::waiting, 1)});
    execute(u"PRAGMA ignore_check_constraints = ON; UPDATE cards SET status = 'Waiting' WHERE id = 'B'"_s);
    for (const auto &read : {std::function([this] { await(database().allCards()); }),
                             std::function([this] { await(database().card(u"B"_s)); }),
                             std::function([this] { await(database().applyResolutions({})); })}) {
        try {
            read();
            ADD_FAILURE() << "the read should have failed";
        } catch (const RepositoryError &error) {
            EXPECT_EQ(error.text(), u"Row B in cards could not be read: unknown status 'Waiting'"_s);
        }
    }
}

} // namespace
