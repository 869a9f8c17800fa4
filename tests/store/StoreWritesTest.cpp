#include "StoreFixture.h"

#include "CardResolution.h"
#include "RepositoryError.h"

#include <functional>

using namespace Qt::StringLiterals;

namespace {

using Operation = std::function<void(Database &)>;
#define OPERATION(call) [](Database &db) { await(db.call); }

CardResolution resolution(const QString &id, CardResolution::Availability availability, const QString &name)
{
    return {id, std::nullopt, availability, name, u"/home/ann/"_s + name, std::nullopt, std::nullopt};
}

// Cards A, B and C not started (B and C share an order), W waiting; a project, a tag on A, a
// checklist item on A and a session running on A since 5000.
class StoreWritesTest : public StoreFixture {
protected:
    void seed()
    {
        const auto ns = CardStatus::notStarted;
        for (const Card &card : {makeCard(u"A"_s, ns, 0), makeCard(u"B"_s, ns, 1), makeCard(u"C"_s, ns, 1),
                                 makeCard(u"W"_s, CardStatus::waiting, 0)})
            await(database().insertCard(card));
        execute(u"INSERT INTO projects VALUES ('P1', 'Alpha', '#2A78D6');"
                u"INSERT INTO tags VALUES ('T1', 'Red', '#E34948'); INSERT INTO card_tags VALUES ('A', 'T1');"
                u"INSERT INTO checklist_items (id, card_id, bookmark, display_name, sort_order)"
                u" VALUES ('I1', 'A', x'01', 'notes.md', 0)"_s);
        await(database().insertSession(makeSession(u"S1"_s, u"A"_s, 5000)));
        takePosts();
    }

    // Runs the operation, which must fail with a text that begins with `text`.
    void expectFailure(const Operation &operation, const QString &text)
    {
        try {
            operation(database());
            ADD_FAILURE() << "the operation should have failed";
        } catch (const VeltoError &error) {
            EXPECT_TRUE(error.text().startsWith(text)) << error.what();
        }
    }
};

// Every write runs here once: each that changes what the other process shows must wake it, and
// no other may.
TEST_F(StoreWritesTest, EachSuccessfulWritePostsOnceAndTheSilentOnesNever)
{
    using enum CardResolution::Availability;
    const QList<std::tuple<const char *, Operation, int>> cases{
        {"insertCard", OPERATION(insertCard(makeCard(u"N"_s, CardStatus::complete, 0))), 1},
        {"appendCard", OPERATION(appendCard(makeCard(u"N"_s, CardStatus::notStarted, 0))), 1},
        {"moveCard", OPERATION(moveCard(u"W"_s, CardStatus::complete, 0)), 1},
        {"moveCard between equal orders", OPERATION(moveCard(u"W"_s, CardStatus::notStarted, 2)), 1},
        {"relinkCard", OPERATION(relinkCard(u"A"_s, QUrl(u"file:///srv/A"_s), "new")), 1},
        {"setPriority", OPERATION(setPriority(Priority::now, u"A"_s)), 1},
        {"setProject", OPERATION(setProject(u"P1"_s, u"A"_s)), 1},
        {"setDeadline", OPERATION(setDeadline(VeltoDate(9e5), u"A"_s)), 1},
        {"setCardText", OPERATION(setCardText(CardTextColumn::goal, u"Ship"_s, u"A"_s)), 1},
        {"setLastSeenFileCount", OPERATION(setLastSeenFileCount(12, u"A"_s)), 0},
        {"deleteCard", OPERATION(deleteCard(u"A"_s)), 1},
        {"applyResolutions of none", OPERATION(applyResolutions({})), 0},
        {"applyResolutions, all as stored or of no card",
         OPERATION(applyResolutions({{u"A"_s, resolution(u"A"_s, available, u"A"_s)},
                                     {u"W"_s, resolution(u"W"_s, unreachable, u"W"_s)},
                                     {u"gone"_s, resolution(u"gone"_s, missing, u"x"_s)}})),
         0},
        {"applyResolutions, two changed",
         OPERATION(applyResolutions({{u"A"_s, resolution(u"A"_s, missing, u"A"_s)},
                                     {u"W"_s, resolution(u"W"_s, available, u"W2"_s)}})),
         1},
        {"insertChecklistItem", OPERATION(insertChecklistItem({u"I2"_s, u"A"_s, "b", u"a.md"_s, false, false, 1})), 1},
        {"appendChecklistItem", OPERATION(appendChecklistItem({u"I2"_s, u"A"_s, "b", u"a.md"_s, false, false, 0})),
         1},
        {"setChecklistItemDone", OPERATION(setChecklistItemDone(true, u"I1"_s)), 1},
        {"deleteChecklistItem", OPERATION(deleteChecklistItem(u"I1"_s)), 1},
        {"insertProject", OPERATION(insertProject({u"P2"_s, u"Beta"_s, u"#EB6834"_s})), 1},
        {"updateProject", OPERATION(updateProject({u"P1"_s, u"Gamma"_s, u"#EB6834"_s})), 1},
        {"deleteProject", OPERATION(deleteProject(u"P1"_s)), 1},
        {"findOrCreateTag, new", OPERATION(findOrCreateTag(u"Blue"_s)), 1},
        {"findOrCreateTag, found", OPERATION(findOrCreateTag(u" red "_s)), 0},
        {"attachTag", OPERATION(attachTag(u"B"_s, u"T1"_s)), 1},
        {"detachTag", OPERATION(detachTag(u"A"_s, u"T1"_s)), 1},
        {"recolorTag", OPERATION(recolorTag(u"#008300"_s, u"T1"_s)), 1},
        {"deleteTag", OPERATION(deleteTag(u"T1"_s)), 1},
        {"insertSession", OPERATION(insertSession(makeSession(u"S2"_s, u"B"_s, 10, 20))), 1},
        {"updateSession", OPERATION(updateSession(makeSession(u"S1"_s, u"A"_s, 4000), true)), 1},
        {"deleteSession", OPERATION(deleteSession(u"S1"_s)), 1},
        {"startSession", OPERATION(startSession(makeSession(u"S2"_s, u"B"_s, 6000), VeltoDate(6000))), 1},
        {"stopRunningSession", OPERATION(stopRunningSession(VeltoDate(6000))), 1},
    };
    for (const auto &[name, operation, posts] : cases) {
        SCOPED_TRACE(name);
        reopen();
        seed();
        operation(database());
        EXPECT_EQ(takePosts(), posts);
    }
}

TEST_F(StoreWritesTest, AFailedWritePostsNothingAndChangesNothing)
{
    const QString constraint = u"SQLite error 19 ("_s;
    const QList<std::tuple<const char *, Operation, QString>> cases{
        {"insertCard with a taken id", OPERATION(insertCard(makeCard(u"B"_s, CardStatus::waiting, 5))),
         constraint + u"UNIQUE constraint failed: cards.id)"_s},
        {"moveCard of no card", OPERATION(moveCard(u"gone"_s, CardStatus::waiting, 0)), u"No row gone in cards."_s},
        {"setProject of no project", OPERATION(setProject(u"P9"_s, u"A"_s)),
         constraint + u"FOREIGN KEY constraint failed)"_s},
        {"findOrCreateTag of a blank name", OPERATION(findOrCreateTag(u" \n\t "_s)),
         u"Row  in tags could not be read: a tag needs a name"_s},
        {"updateSession of no session", OPERATION(updateSession(makeSession(u"S9"_s, u"A"_s, 1), false)),
         u"No row S9 in time_sessions."_s},
        // The strays are closed first, in the same transaction as the refused insert.
        {"startSession with the clock behind the running start",
         OPERATION(startSession(makeSession(u"S2"_s, u"B"_s, 4000), VeltoDate(4000))),
         constraint + u"CHECK constraint failed"_s},
    };
    for (const auto &[name, operation, text] : cases) {
        SCOPED_TRACE(name);
        reopen();
        seed();
        const QStringList before = snapshot();
        expectFailure(operation, text);
        EXPECT_EQ(snapshot(), before);
        EXPECT_EQ(takePosts(), 0);
    }
}

// A rating is not worth failing a list for, but a status or a source is.
TEST_F(StoreWritesTest, AMalformedRowFailsEveryReadThatMeetsIt)
{
    seed();
    execute(u"PRAGMA ignore_check_constraints = ON; UPDATE time_sessions SET mood = 'great'"_s);
    EXPECT_EQ(await(database().allSessions()).constFirst().mood, std::nullopt);

    execute(u"UPDATE cards SET status = 'Waiting' WHERE id = 'B'; UPDATE time_sessions SET source = 'automatic'"_s);
    const QString card = u"Row B in cards could not be read: unknown status 'Waiting'"_s;
    const QString session = u"Row S1 in time_sessions could not be read: unknown source 'automatic'"_s;
    const QList<std::pair<Operation, QString>> reads{
        {OPERATION(allCards()), card},
        {OPERATION(card(u"B"_s)), card},
        {OPERATION(applyResolutions({})), card},
        {OPERATION(allSessions()), session},
        {OPERATION(stopRunningSession(VeltoDate(6000))), session},
    };
    for (const auto &[read, text] : reads)
        expectFailure(read, text);
    EXPECT_EQ(takePosts(), 0);
}

} // namespace
