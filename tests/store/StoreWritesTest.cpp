#include "StoreFixture.h"

#include "CardResolution.h"

#include <functional>

using namespace Qt::StringLiterals;

namespace {

using Write = std::function<void(Database &)>;
#define WRITE(call) [](Database &db) { await(db.call); }

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
};

TEST_F(StoreWritesTest, EachSuccessfulWritePostsOnceAndTheSilentOnesNever)
{
    using enum CardResolution::Availability;
    const QList<std::tuple<const char *, Write, int>> cases{
        {"insertCard", WRITE(insertCard(makeCard(u"N"_s, CardStatus::complete, 0))), 1},
        {"moveCard", WRITE(moveCard(u"W"_s, CardStatus::complete, 0)), 1},
        {"relinkCard", WRITE(relinkCard(u"A"_s, QUrl(u"file:///srv/A"_s), "new")), 1},
        {"setPriority", WRITE(setPriority(Priority::now, u"A"_s)), 1},
        {"setPriority of no card", WRITE(setPriority(Priority::now, u"gone"_s)), 1},
        {"setProject", WRITE(setProject(u"P1"_s, u"A"_s)), 1},
        {"setDeadline", WRITE(setDeadline(VeltoDate(9e5), u"A"_s)), 1},
        {"setCardText", WRITE(setCardText(CardTextColumn::goal, u"Ship"_s, u"A"_s)), 1},
        {"setLastSeenFileCount", WRITE(setLastSeenFileCount(12, u"A"_s)), 0},
        {"deleteCard", WRITE(deleteCard(u"A"_s)), 1},
        {"applyResolutions of none", WRITE(applyResolutions({})), 0},
        {"applyResolutions, all as stored or of no card",
         WRITE(applyResolutions({{u"A"_s, resolution(u"A"_s, available, u"A"_s)},
                                 {u"W"_s, resolution(u"W"_s, unreachable, u"W"_s)},
                                 {u"gone"_s, resolution(u"gone"_s, missing, u"x"_s)}})),
         0},
        {"applyResolutions, two changed",
         WRITE(applyResolutions({{u"A"_s, resolution(u"A"_s, missing, u"A"_s)},
                                 {u"W"_s, resolution(u"W"_s, available, u"W2"_s)}})),
         1},
        {"insertChecklistItem", WRITE(insertChecklistItem({u"I2"_s, u"A"_s, "b", u"plan.md"_s, false, false, 1})), 1},
        {"setChecklistItemDone", WRITE(setChecklistItemDone(true, u"I1"_s)), 1},
        {"deleteChecklistItem", WRITE(deleteChecklistItem(u"I1"_s)), 1},
        {"insertProject", WRITE(insertProject({u"P2"_s, u"Beta"_s, u"#EB6834"_s})), 1},
        {"updateProject", WRITE(updateProject({u"P1"_s, u"Gamma"_s, u"#EB6834"_s})), 1},
        {"deleteProject", WRITE(deleteProject(u"P1"_s)), 1},
        {"findOrCreateTag, new", WRITE(findOrCreateTag(u"Blue"_s)), 1},
        {"findOrCreateTag, found", WRITE(findOrCreateTag(u" red "_s)), 0},
        {"attachTag", WRITE(attachTag(u"B"_s, u"T1"_s)), 1},
        {"attachTag, already attached", WRITE(attachTag(u"A"_s, u"T1"_s)), 1},
        {"detachTag", WRITE(detachTag(u"A"_s, u"T1"_s)), 1},
        {"recolorTag", WRITE(recolorTag(u"#008300"_s, u"T1"_s)), 1},
        {"deleteTag", WRITE(deleteTag(u"T1"_s)), 1},
        {"insertSession", WRITE(insertSession(makeSession(u"S2"_s, u"B"_s, 10, 20))), 1},
        {"updateSession", WRITE(updateSession(makeSession(u"S1"_s, u"A"_s, 4000), true)), 1},
        {"deleteSession", WRITE(deleteSession(u"S1"_s)), 1},
        {"deleteSession of no session", WRITE(deleteSession(u"gone"_s)), 1},
        {"startSession", WRITE(startSession(makeSession(u"S2"_s, u"B"_s, 6000), VeltoDate(6000))), 1},
        {"stopRunningSession", WRITE(stopRunningSession(VeltoDate(6000))), 1},
    };
    for (const auto &[name, write, posts] : cases) {
        SCOPED_TRACE(name);
        reopen();
        seed();
        write(database());
        EXPECT_EQ(takePosts(), posts);
    }
}

TEST_F(StoreWritesTest, AFailedWritePostsNothingAndChangesNothing)
{
    const QString constraint = u"SQLite error 19 ("_s;
    TimeSession noTarget = makeSession(u"S2"_s, u"A"_s, 1, 2);
    noTarget.targetSeconds = 0;
    const QList<std::tuple<const char *, Write, QString>> cases{
        {"insertCard with a taken id", WRITE(insertCard(makeCard(u"B"_s, CardStatus::waiting, 5))),
         constraint + u"UNIQUE constraint failed: cards.id)"_s},
        {"moveCard of no card", WRITE(moveCard(u"gone"_s, CardStatus::waiting, 0)), u"No row gone in cards."_s},
        {"moveCard between equal orders", WRITE(moveCard(u"W"_s, CardStatus::notStarted, 2)),
         u"sort orders are not ascending: 1.0 then 1.0"_s},
        {"setProject of no project", WRITE(setProject(u"P9"_s, u"A"_s)),
         constraint + u"FOREIGN KEY constraint failed)"_s},
        {"insertChecklistItem of no card",
         WRITE(insertChecklistItem({u"I2"_s, u"gone"_s, "b", u"x"_s, false, false, 0})), constraint + u"FOREIGN KEY constraint failed)"_s},
        {"insertProject with a taken name", WRITE(insertProject({u"P2"_s, u"Alpha"_s, u"#EB6834"_s})),
         constraint + u"UNIQUE constraint failed: projects.name)"_s},
        {"findOrCreateTag of a blank name", WRITE(findOrCreateTag(u" \n\t "_s)),
         u"Row  in tags could not be read: a tag needs a name"_s},
        {"attachTag of no tag", WRITE(attachTag(u"A"_s, u"T9"_s)), constraint + u"FOREIGN KEY constraint failed)"_s},
        {"updateSession of no session", WRITE(updateSession(makeSession(u"S9"_s, u"A"_s, 1), false)),
         u"No row S9 in time_sessions."_s},
        {"insertSession with a target of 0", [noTarget](Database &db) { await(db.insertSession(noTarget)); },
         constraint + u"CHECK constraint failed"_s},
        {"startSession with the clock behind the running start",
         WRITE(startSession(makeSession(u"S2"_s, u"B"_s, 4000), VeltoDate(4000))),
         constraint + u"CHECK constraint failed"_s},
    };
    for (const auto &[name, write, text] : cases) {
        SCOPED_TRACE(name);
        reopen();
        seed();
        const QStringList before = snapshot();
        try {
            write(database());
            ADD_FAILURE() << "the write should have failed";
        } catch (const VeltoError &error) {
            EXPECT_TRUE(error.text().startsWith(text)) << error.what();
        }
        EXPECT_EQ(snapshot(), before);
        EXPECT_EQ(takePosts(), 0);
    }
}

} // namespace
