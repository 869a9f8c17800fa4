#include "StoreFixture.h"

#include "CardResolution.h"

#include <functional>

using namespace Qt::StringLiterals;

namespace {

using Write = std::function<void(Database &)>;

CardResolution resolutionOf(const Card &card, CardResolution::Availability availability, const QString &name,
                            std::optional<QByteArray> refreshed = std::nullopt)
{
    return {card.id, std::nullopt, availability, name, u"/home/ann/"_s + name, std::move(refreshed), std::nullopt};
}

// Cards A, B, C in "not started" (B and C share an order), W waiting; a project, a tag on A, a
// checklist item on A and a session running on A since 5000.
class StoreWritesTest : public StoreFixture {
protected:
    void SetUp() override
    {
        StoreFixture::SetUp();
        if (!IsSkipped())
            seed();
    }

    void seed()
    {
        execute(u"INSERT INTO projects (id, name, color) VALUES ('P1', 'Alpha', '#2A78D6');"
                u"INSERT INTO tags (id, name, color) VALUES ('T1', 'Red', '#E34948')"_s);
        for (const Card &card : {makeCard(u"A"_s, CardStatus::notStarted, 0), makeCard(u"B"_s, CardStatus::notStarted, 1),
                                 makeCard(u"C"_s, CardStatus::notStarted, 1), makeCard(u"W"_s, CardStatus::waiting, 0)})
            await(database().insertCard(card));
        execute(u"INSERT INTO card_tags VALUES ('A', 'T1');"
                u"INSERT INTO checklist_items (id, card_id, bookmark, display_name, sort_order)"
                u" VALUES ('I1', 'A', x'01', 'notes.md', 0)"_s);
        await(database().insertSession(makeSession(u"S1"_s, u"A"_s, 5000)));
        takePosts();
    }
};

struct PostCase {
    const char *name;
    Write write;
    int posts;
};

TEST_F(StoreWritesTest, EachSuccessfulWritePostsOnceAndTheSilentOnesNever)
{
    const Card a = makeCard(u"A"_s, CardStatus::notStarted, 0);
    const Card w = makeCard(u"W"_s, CardStatus::waiting, 0);
    using Availability = CardResolution::Availability;
    const QList<PostCase> cases{
        {"insertCard", [](Database &db) { await(db.insertCard(makeCard(u"N"_s, CardStatus::complete, 0))); }, 1},
        {"moveCard", [](Database &db) { await(db.moveCard(u"W"_s, CardStatus::complete, 0)); }, 1},
        {"relinkCard", [](Database &db) { await(db.relinkCard(u"A"_s, QUrl(u"file:///srv/A"_s), "new")); }, 1},
        {"setPriority", [](Database &db) { await(db.setPriority(Priority::now, u"A"_s)); }, 1},
        {"setPriority of no card", [](Database &db) { await(db.setPriority(Priority::now, u"gone"_s)); }, 1},
        {"setProject", [](Database &db) { await(db.setProject(u"P1"_s, u"A"_s)); }, 1},
        {"setDeadline", [](Database &db) { await(db.setDeadline(VeltoDate(9e5), u"A"_s)); }, 1},
        {"setCardText", [](Database &db) { await(db.setCardText(CardTextColumn::goal, u"Ship"_s, u"A"_s)); }, 1},
        {"setLastSeenFileCount", [](Database &db) { await(db.setLastSeenFileCount(12, u"A"_s)); }, 0},
        {"deleteCard", [](Database &db) { await(db.deleteCard(u"A"_s)); }, 1},
        {"applyResolutions of nothing", [](Database &db) { await(db.applyResolutions({})); }, 0},
        {"applyResolutions, all as stored",
         [a, w](Database &db) {
             await(db.applyResolutions({{u"A"_s, resolutionOf(a, Availability::available, u"A"_s)},
                                        {u"W"_s, resolutionOf(w, Availability::unreachable, u"W"_s)},
                                        {u"gone"_s, resolutionOf(makeCard(u"gone"_s, CardStatus::waiting, 0),
                                                                 Availability::missing, u"x"_s)}}));
         },
         0},
        {"applyResolutions, two changed",
         [a, w](Database &db) {
             await(db.applyResolutions({{u"A"_s, resolutionOf(a, Availability::missing, u"A"_s)},
                                        {u"W"_s, resolutionOf(w, Availability::available, u"W2"_s)}}));
         },
         1},
        {"insertChecklistItem",
         [](Database &db) { await(db.insertChecklistItem({u"I2"_s, u"A"_s, "b", u"plan.md"_s, false, false, 1})); }, 1},
        {"setChecklistItemDone", [](Database &db) { await(db.setChecklistItemDone(true, u"I1"_s)); }, 1},
        {"deleteChecklistItem", [](Database &db) { await(db.deleteChecklistItem(u"I1"_s)); }, 1},
        {"insertProject", [](Database &db) { await(db.insertProject({u"P2"_s, u"Beta"_s, u"#EB6834"_s})); }, 1},
        {"updateProject", [](Database &db) { await(db.updateProject({u"P1"_s, u"Gamma"_s, u"#EB6834"_s})); }, 1},
        {"deleteProject", [](Database &db) { await(db.deleteProject(u"P1"_s)); }, 1},
        {"findOrCreateTag, new", [](Database &db) { await(db.findOrCreateTag(u"Blue"_s)); }, 1},
        {"findOrCreateTag, existing", [](Database &db) { await(db.findOrCreateTag(u" red "_s)); }, 0},
        {"attachTag", [](Database &db) { await(db.attachTag(u"B"_s, u"T1"_s)); }, 1},
        {"attachTag, already attached", [](Database &db) { await(db.attachTag(u"A"_s, u"T1"_s)); }, 1},
        {"detachTag", [](Database &db) { await(db.detachTag(u"A"_s, u"T1"_s)); }, 1},
        {"recolorTag", [](Database &db) { await(db.recolorTag(u"#008300"_s, u"T1"_s)); }, 1},
        {"deleteTag", [](Database &db) { await(db.deleteTag(u"T1"_s)); }, 1},
        {"insertSession", [](Database &db) { await(db.insertSession(makeSession(u"S2"_s, u"B"_s, 10, 20))); }, 1},
        {"updateSession", [](Database &db) { await(db.updateSession(makeSession(u"S1"_s, u"A"_s, 4000), true)); }, 1},
        {"deleteSession", [](Database &db) { await(db.deleteSession(u"S1"_s)); }, 1},
        {"deleteSession of no session", [](Database &db) { await(db.deleteSession(u"gone"_s)); }, 1},
        {"startSession", [](Database &db) { await(db.startSession(makeSession(u"S2"_s, u"B"_s, 6000), VeltoDate(6000))); }, 1},
        {"stopRunningSession", [](Database &db) { await(db.stopRunningSession(VeltoDate(6000))); }, 1},
    };
    for (const PostCase &testCase : cases) {
        SCOPED_TRACE(testCase.name);
        reopen();
        seed();
        testCase.write(database());
        EXPECT_EQ(takePosts(), testCase.posts);
    }
}

struct FailureCase {
    const char *name;
    Write write;
    QString textStart;
};

TEST_F(StoreWritesTest, AFailedWritePostsNothingAndChangesNothing)
{
    const QString constraint = u"SQLite error 19 ("_s;
    const QList<FailureCase> cases{
        {"insertCard with a taken id",
         [](Database &db) { await(db.insertCard(makeCard(u"B"_s, CardStatus::waiting, 5))); },
         constraint + u"UNIQUE constraint failed: cards.id)"_s},
        {"moveCard of no card", [](Database &db) { await(db.moveCard(u"gone"_s, CardStatus::waiting, 0)); },
         u"No row gone in cards."_s},
        {"moveCard between equal orders", [](Database &db) { await(db.moveCard(u"W"_s, CardStatus::notStarted, 2)); },
         u"sort orders are not ascending: 1.0 then 1.0"_s},
        {"setProject of no project", [](Database &db) { await(db.setProject(u"P9"_s, u"A"_s)); },
         constraint + u"FOREIGN KEY constraint failed)"_s},
        {"insertChecklistItem of no card",
         [](Database &db) { await(db.insertChecklistItem({u"I2"_s, u"gone"_s, "b", u"x"_s, false, false, 0})); },
         constraint + u"FOREIGN KEY constraint failed)"_s},
        {"insertProject with a taken name",
         [](Database &db) { await(db.insertProject({u"P2"_s, u"Alpha"_s, u"#EB6834"_s})); },
         constraint + u"UNIQUE constraint failed: projects.name)"_s},
        {"findOrCreateTag of a blank name", [](Database &db) { await(db.findOrCreateTag(u" \n\t "_s)); },
         u"Row  in tags could not be read: a tag needs a name"_s},
        {"attachTag of no tag", [](Database &db) { await(db.attachTag(u"A"_s, u"T9"_s)); },
         constraint + u"FOREIGN KEY constraint failed)"_s},
        {"updateSession of no session",
         [](Database &db) { await(db.updateSession(makeSession(u"S9"_s, u"A"_s, 1), false)); },
         u"No row S9 in time_sessions."_s},
        {"insertSession with a target of 0",
         [](Database &db) {
             TimeSession session = makeSession(u"S2"_s, u"A"_s, 1, 2);
             session.targetSeconds = 0;
             await(db.insertSession(session));
         },
         constraint + u"CHECK constraint failed"_s},
        {"startSession with the clock behind the running start",
         [](Database &db) { await(db.startSession(makeSession(u"S2"_s, u"B"_s, 4000), VeltoDate(4000))); },
         constraint + u"CHECK constraint failed"_s},
    };
    for (const FailureCase &testCase : cases) {
        SCOPED_TRACE(testCase.name);
        reopen();
        seed();
        const QStringList before = snapshot();
        try {
            testCase.write(database());
            ADD_FAILURE() << "the write should have failed";
        } catch (const VeltoError &error) {
            EXPECT_TRUE(error.text().startsWith(testCase.textStart)) << error.what();
        }
        EXPECT_EQ(snapshot(), before);
        EXPECT_EQ(takePosts(), 0);
    }
}

} // namespace
