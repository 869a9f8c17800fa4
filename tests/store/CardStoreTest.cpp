#include "StoreFixture.h"

#include "CardResolution.h"

#include <QRegularExpression>
#include <QTimer>

#include <algorithm>
#include <cmath>
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

    // The orders of a column from top to bottom.
    QList<double> orders(CardStatus status)
    {
        QList<double> found;
        for (const Card &card : await(database().allCards())) {
            if (card.status == status)
                found.append(card.sortOrder);
        }
        return found;
    }

    // A second writer on the same file, as another process would be: it holds the write lock with
    // `sql` done but not committed while the operation starts, and commits a moment later. An
    // operation that reads before it takes the write lock reads the file without the other's rows.
    template <typename T>
    T besideAnotherWriter(const QString &sql, const std::function<Task<T>()> &operation)
    {
        auto other = SQLiteConnection::open(database().path(), SQLiteConnection::Access::readWrite);
        other->execute(u"BEGIN IMMEDIATE"_s);
        other->execute(sql);
        Task<T> task = operation();
        QTimer::singleShot(300, [other] { other->execute(u"COMMIT"_s); });
        return await(std::move(task));
    }
};

bool strictlyAscending(const QList<double> &orders)
{
    return std::adjacent_find(orders.cbegin(), orders.cend(), std::greater_equal<>()) == orders.cend();
}

// Every status and priority word must pass the table's checks and read back as its own case; a
// zero-length bookmark is not NULL, a deadline stored as 0 is still a date, and an empty text is
// not an absent one.
TEST_F(CardStoreTest, EveryCardReadsBackAsItWasInserted)
{
    await(database().insertProject({u"P1"_s, u"Alpha"_s, u"#2A78D6"_s}));
    Card full = makeCard(u"A"_s, CardStatus::waiting, -2.5);
    full.bookmark = QByteArray();
    full.projectID = u"P1"_s;
    full.deadline = VeltoDate::fromStoredSeconds(0);
    full.isMissing = true;
    full.lastSeenFileCount = 0;
    full.finderTag = u""_s;
    full.title = u"Q3 plan"_s;
    full.goal = u"Ship *it*"_s;
    QList<Card> written{full};
    for (CardStatus status : allCardStatuses) {
        for (Priority priority : allPriorities) {
            written.append(makeCard(u"C%1"_s.arg(written.size()), status, double(written.size())));
            written.last().priority = priority;
        }
    }
    insert(written);
    EXPECT_EQ(await(database().allCards()), written);
    EXPECT_EQ(stored(u"A"_s), full);
    EXPECT_EQ(await(database().card(u"gone"_s)), std::nullopt);
}

// The board shows the cards in their stored order whatever order they were written in; cards
// that share an order, as two writers adding at once can leave them, stay in the order added.
TEST_F(CardStoreTest, ReadsEveryCardInItsStoredOrderWithTiesAsAdded)
{
    const auto ns = CardStatus::notStarted;
    insert({makeCard(u"X1"_s, ns, 3), makeCard(u"X2"_s, CardStatus::complete, 1), makeCard(u"X3"_s, ns, 2),
            makeCard(u"X4"_s, ns, 1), makeCard(u"X5"_s, ns, -0.5)});
    QStringList ids;
    for (const Card &card : await(database().allCards()))
        ids.append(card.id);
    EXPECT_EQ(ids, (QStringList{u"X5"_s, u"X2"_s, u"X4"_s, u"X3"_s, u"X1"_s}));
}

TEST_F(CardStoreTest, AMovePlacesTheCardAmongTheColumnAsItStoodBefore)
{
    const auto ns = CardStatus::notStarted;
    const auto ip = CardStatus::inProgress;
    const QList<Card> abc{makeCard(u"A"_s, ns, 0), makeCard(u"B"_s, ns, 1), makeCard(u"C"_s, ns, 2)};
    const QList<Card> pq{makeCard(u"P"_s, ip, 0), makeCard(u"Q"_s, ip, 1)};
    const struct {
        const char *name;
        QList<Card> cards;
        QString id;
        CardStatus status;
        qint64 position;
        QStringList column;
        double order;
    } cases[] = {
        {"the first to position 1 stays first", {makeCard(u"A"_s, ns, -5), abc[1], abc[2]}, u"A"_s, ns, 1,
         {u"A"_s, u"B"_s, u"C"_s}, 0.0},
        {"down by one", abc, u"A"_s, ns, 2, {u"B"_s, u"A"_s, u"C"_s}, 1.5},
        {"up by one", abc, u"C"_s, ns, 1, {u"A"_s, u"C"_s, u"B"_s}, 0.5},
        {"between two of another column", abc + pq, u"A"_s, ip, 1, {u"P"_s, u"A"_s, u"Q"_s}, 0.5},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        reopen();
        insert(c.cards);
        const CardStatus from = stored(c.id).status;
        await(database().moveCard(c.id, c.status, c.position, VeltoDate(5000)));
        EXPECT_EQ(column(c.status), c.column);
        EXPECT_EQ(stored(c.id).sortOrder, c.order);
        // Only a change of column restarts the clock of the status.
        EXPECT_EQ(stored(c.id).statusChangedAt, VeltoDate(from == c.status ? 1000 : 5000));
    }
}

// Between two adjacent doubles there is no room: the column is renumbered 0, 1, 2 and the move
// asked again, as one change.
TEST_F(CardStoreTest, AMoveIntoAGapWithNoRoomRenumbersTheColumn)
{
    const auto ns = CardStatus::notStarted;
    insert({makeCard(u"A"_s, ns, 1.0), makeCard(u"B"_s, ns, std::nextafter(1.0, 2.0)), makeCard(u"C"_s, ns, 3.0)});
    takePosts();
    await(database().moveCard(u"C"_s, ns, 1));
    EXPECT_EQ(column(ns), (QStringList{u"A"_s, u"C"_s, u"B"_s}));
    EXPECT_EQ((QList{stored(u"A"_s).sortOrder, stored(u"C"_s).sortOrder, stored(u"B"_s).sortOrder}),
              (QList{0.0, 0.5, 1.0}));
    EXPECT_EQ(takePosts(), 1);
}

// Two writers adding at once could once give two cards the same order; a later move into the gap
// between them found no order to take. Such a column is renumbered like one out of room.
TEST_F(CardStoreTest, AMoveBetweenEqualOrdersRenumbersTheColumnAndGoesOn)
{
    const auto ns = CardStatus::notStarted;
    const auto ip = CardStatus::inProgress;
    const struct {
        const char *name;
        QString id;
        CardStatus status;
        qint64 position;
        QStringList column;
    } cases[] = {
        {"from below into the tie", u"D"_s, ns, 2, {u"A"_s, u"B"_s, u"D"_s, u"C"_s}},
        {"from above into the tie", u"A"_s, ns, 2, {u"B"_s, u"A"_s, u"C"_s, u"D"_s}},
        {"from another column into the tie", u"P"_s, ns, 2, {u"A"_s, u"B"_s, u"P"_s, u"C"_s, u"D"_s}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        reopen();
        // B and C share 1.0; the column reads A, B, C, D.
        insert({makeCard(u"A"_s, ns, 0), makeCard(u"B"_s, ns, 1), makeCard(u"C"_s, ns, 1), makeCard(u"D"_s, ns, 2),
                makeCard(u"P"_s, ip, 0)});
        takePosts();
        await(database().moveCard(c.id, c.status, c.position));
        EXPECT_EQ(column(ns), c.column);
        EXPECT_TRUE(strictlyAscending(orders(ns)));
        EXPECT_EQ(takePosts(), 1);
    }
}

// Another process may add a card or a checklist item at the same moment. The append reads the
// bottom under the write lock it inserts with, so it waits for the other writer and goes below what
// that one added instead of taking the same order.
TEST_F(CardStoreTest, AnAppendWaitsForAnotherWriterAndGoesBelowWhatItAdded)
{
    const auto ns = CardStatus::notStarted;
    const QString otherCard = u"INSERT INTO cards (id, bookmark, display_path, display_name, status, priority,\n"
                              u"  sort_order, created_at, status_changed_at)\n"
                              u"VALUES ('X', x'58', '/home/ann/X', 'X', 'not_started', 'later', %1, 1000, 1000)"_s;
    const QString otherItem = u"INSERT INTO checklist_items (id, card_id, bookmark, display_name, sort_order)\n"
                              u"VALUES ('I9', 'A', x'01', 'other.md', %1)"_s;
    const Card card = makeCard(u"N"_s, ns, -7);
    const ChecklistItem item{u"I2"_s, u"A"_s, "2", u"mine.md"_s, false, false, -7};
    const struct {
        const char *name;
        QString otherWrites;
        bool appendsItem; // else a card
        double order;
    } cases[] = {
        {"a card below the other's card", otherCard.arg(u"1.0"_s), false, 2.0},
        {"a card below a fractional bottom", otherCard.arg(u"2.5"_s), false, 3.5},
        {"an item below the other's item", otherItem.arg(u"1.0"_s), true, 2.0},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        reopen();
        // A waiting card far down shows that the order is the column's own.
        insert({makeCard(u"A"_s, ns, 0), makeCard(u"W"_s, CardStatus::waiting, 7)});
        await(database().insertChecklistItem({u"I1"_s, u"A"_s, "1", u"notes.md"_s, false, false, 0}));
        const double order =
            c.appendsItem
                ? besideAnotherWriter<ChecklistItem>(c.otherWrites, [&] { return database().appendChecklistItem(item); })
                      .sortOrder
                : besideAnotherWriter<Card>(c.otherWrites, [&] { return database().appendCard(card); }).sortOrder;
        EXPECT_EQ(order, c.order);
        EXPECT_TRUE(strictlyAscending(orders(ns)));
    }
}

TEST_F(CardStoreTest, CardTextIsStoredTrimmedOrNotAtAll)
{
    insert({makeCard(u"A"_s, CardStatus::notStarted, 0)});
    const QList<std::pair<std::optional<QString>, std::optional<QString>>> cases{
        {u"\n\tTwo\nlines\r\n"_s, u"Two\nlines"_s}, {u" \n "_s, std::nullopt}, {std::nullopt, std::nullopt}};
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

// A refreshed bookmark replaces the stored one; an unreachable folder is not a missing one.
TEST_F(CardStoreTest, ApplyResolutionsRewritesTheRowsToMatchTheVerdicts)
{
    using enum CardResolution::Availability;
    Card found = makeCard(u"F"_s, CardStatus::waiting, 0);
    found.isMissing = true;
    insert({makeCard(u"M"_s, CardStatus::notStarted, 1), found});
    await(database().applyResolutions({
        {u"M"_s, {u"M"_s, std::nullopt, missing, u"M2"_s, u"/srv/M2"_s, "fresh", u"gone"_s}},
        {u"F"_s, {u"F"_s, std::nullopt, unreachable, u"F"_s, u"/home/ann/F"_s, std::nullopt, std::nullopt}},
    }));
    const Card m = stored(u"M"_s);
    EXPECT_EQ(std::tie(m.displayName, m.displayPath, m.bookmark, m.isMissing),
              std::tuple(u"M2"_s, u"/srv/M2"_s, QByteArray("fresh"), true));
    const Card f = stored(u"F"_s);
    EXPECT_EQ(std::tie(f.bookmark, f.isMissing), std::tuple(QByteArray("F"), false));
}

// The tables are rebuilt on the way to the current version; their deletes must still cascade.
TEST_F(CardStoreTest, DeletionsCascadeToWhatHangsOnTheRow)
{
    insert({makeCard(u"A"_s, CardStatus::notStarted, 0), makeCard(u"B"_s, CardStatus::notStarted, 1)});
    execute(u"INSERT INTO projects VALUES ('P1', 'Alpha', '#2A78D6'); UPDATE cards SET project_id = 'P1';"
            u"INSERT INTO tags VALUES ('T1', 'Red', '#E34948'), ('T2', 'Blue', '#2A78D6');"
            u"INSERT INTO card_tags VALUES ('A', 'T1'), ('B', 'T1'), ('B', 'T2');"
            u"INSERT INTO checklist_items (id, card_id, bookmark, display_name, sort_order)"
            u" VALUES ('I1', 'A', x'01', 'notes.md', 0)"_s);
    await(database().insertSession(makeSession(u"S1"_s, u"A"_s, 10, 20)));
    await(database().deleteCard(u"A"_s));
    await(database().deleteTag(u"T2"_s));
    await(database().deleteProject(u"P1"_s));
    EXPECT_EQ(await(database().tagLinks()), (QHash<QString, QSet<QString>>{{u"B"_s, {u"T1"_s}}}));
    EXPECT_TRUE(await(database().checklistProgress()).isEmpty());
    EXPECT_TRUE(await(database().allSessions()).isEmpty());
    EXPECT_EQ(stored(u"B"_s).projectID, std::nullopt);
}

TEST_F(CardStoreTest, ChecklistKeepsItsOrderAndCountsWhatIsDone)
{
    insert({makeCard(u"A"_s, CardStatus::notStarted, 0)});
    const QList<ChecklistItem> items{{u"one"_s, u"A"_s, "1", u"one.md"_s, true, false, 0.0},
                                     {u"two"_s, u"A"_s, "2", u"two.md"_s, false, true, 1.0},
                                     {u"three"_s, u"A"_s, "3", u"three.md"_s, true, false, 2.0}};
    for (const ChecklistItem &item : {items[2], items[0], items[1]})
        await(database().insertChecklistItem(item));
    EXPECT_EQ(await(database().checklistItems(u"A"_s)), items);
    EXPECT_EQ(await(database().checklistProgress()), (QHash<QString, ChecklistProgress>{{u"A"_s, {2, 3}}}));
    await(database().deleteChecklistItem(u"three"_s));
    await(database().setChecklistItemDone(false, u"one"_s));
    EXPECT_EQ(await(database().checklistProgress()).value(u"A"_s), (ChecklistProgress{0, 2}));
    // An appended item goes after the last one left, whatever order it came with.
    const ChecklistItem four{u"four"_s, u"A"_s, "4", u"four.md"_s, false, false, -3.0};
    EXPECT_EQ(await(database().appendChecklistItem(four)).sortOrder, 2.0);
    EXPECT_EQ(await(database().checklistItems(u"A"_s)).constLast().id, u"four"_s);
}

TEST_F(CardStoreTest, TagsAreFoundWhateverTheirCaseAndStoredTrimmed)
{
    const Tag urgent = await(database().findOrCreateTag(u"  Urgent\n"_s));
    EXPECT_EQ(urgent.name, u"Urgent"_s);
    EXPECT_EQ(await(database().findOrCreateTag(u"URGENT "_s)), urgent);
    // Every stored id is a canonical upper-case random UUID.
    static const QRegularExpression canonical(u"^[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}$"_s);
    EXPECT_TRUE(canonical.match(urgent.id).hasMatch()) << urgent.id.toStdString();
    // Case folding covers ASCII letters only: an accented capital makes another tag.
    const Tag upper = await(database().findOrCreateTag(u"\u00c9cole"_s));
    const Tag lower = await(database().findOrCreateTag(u"\u00e9cole"_s));
    EXPECT_NE(upper.id, lower.id);
    EXPECT_EQ(lower.name, u"\u00e9cole"_s);
}

// Another process making the same tag at the same moment: the look-up waits for it and finds its
// tag whatever the case asked for, instead of failing on the name or making a second tag.
TEST_F(CardStoreTest, ATagMadeByAnotherWriterMeanwhileIsFound)
{
    for (const QString &asked : {u"Urgent"_s, u" urgent"_s}) {
        SCOPED_TRACE(asked.toStdString());
        reopen();
        const Tag found = besideAnotherWriter<Tag>(u"INSERT INTO tags VALUES ('T9', 'Urgent', '#E34948')"_s,
                                                   [&] { return database().findOrCreateTag(asked); });
        EXPECT_EQ(found, (Tag{u"T9"_s, u"Urgent"_s, u"#E34948"_s}));
        EXPECT_EQ(await(database().allTags()).size(), 1);
        EXPECT_EQ(takePosts(), 0);
    }
}

} // namespace
