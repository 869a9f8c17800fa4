#include "StoreFixture.h"

#include "RepositoryError.h"

#include <functional>

using namespace Qt::StringLiterals;

namespace {

class SessionStoreTest : public StoreFixture {
protected:
    void SetUp() override
    {
        StoreFixture::SetUp();
        if (!IsSkipped())
            seedCards();
    }

    void seedCards()
    {
        await(database().insertCard(makeCard(u"A"_s, CardStatus::inProgress, 0)));
        await(database().insertCard(makeCard(u"B"_s, CardStatus::inProgress, 1)));
    }

    void insert(const QList<TimeSession> &sessions)
    {
        for (const TimeSession &session : sessions)
            await(database().insertSession(session));
        takePosts();
    }

    // Each session's end by id, in start order.
    QList<std::pair<QString, std::optional<VeltoDate>>> ends()
    {
        QList<std::pair<QString, std::optional<VeltoDate>>> ends;
        for (const TimeSession &session : await(database().allSessions()))
            ends.append({session.id, session.endedAt});
        return ends;
    }
};

TEST_F(SessionStoreTest, ASessionReadsBackAsItWasInserted)
{
    TimeSession session = makeSession(u"S1"_s, u"A"_s, 100.9, 200.2);
    session.source = TimeSession::Source::automatic;
    session.confidence = 0.75;
    session.note = QString();
    session.targetSeconds = 1500;
    session.mood = Mood::scattered;
    insert({session, makeSession(u"S2"_s, u"A"_s, 300), makeSession(u"S3"_s, u"B"_s, 50, 60)});
    session.startedAt = VeltoDate(100);
    session.endedAt = VeltoDate(200);
    EXPECT_EQ(await(database().sessions(u"A"_s)), (QList{makeSession(u"S2"_s, u"A"_s, 300), session}));
    EXPECT_EQ(ends().constFirst().first, u"S3"_s);
    EXPECT_EQ(await(database().runningSession()), makeSession(u"S2"_s, u"A"_s, 300));
}

struct StopCase {
    const char *name;
    QList<TimeSession> sessions;
    double at;
    std::optional<TimeSession> closed;
    QList<std::pair<QString, std::optional<VeltoDate>>> ends;
};

TEST_F(SessionStoreTest, StoppingClosesTheLatestRunningSessionNeverBeforeItsStart)
{
    const QList<StopCase> cases{
        {"nothing running", {makeSession(u"S1"_s, u"A"_s, 10, 20)}, 100, std::nullopt, {{u"S1"_s, VeltoDate(20)}}},
        {"running", {makeSession(u"S1"_s, u"A"_s, 5000)}, 6000.7, makeSession(u"S1"_s, u"A"_s, 5000, 6000),
         {{u"S1"_s, VeltoDate(6000)}}},
        {"clock put back", {makeSession(u"S1"_s, u"A"_s, 5000)}, 4000, makeSession(u"S1"_s, u"A"_s, 5000, 5000),
         {{u"S1"_s, VeltoDate(5000)}}},
        {"two running", {makeSession(u"S1"_s, u"A"_s, 5000), makeSession(u"S2"_s, u"B"_s, 5500)}, 6000,
         makeSession(u"S2"_s, u"B"_s, 5500, 6000), {{u"S1"_s, std::nullopt}, {u"S2"_s, VeltoDate(6000)}}},
    };
    for (const StopCase &testCase : cases) {
        SCOPED_TRACE(testCase.name);
        reopen();
        seedCards();
        insert(testCase.sessions);
        EXPECT_EQ(await(database().stopRunningSession(VeltoDate(testCase.at))), testCase.closed);
        EXPECT_EQ(ends(), testCase.ends);
        EXPECT_EQ(takePosts(), testCase.closed ? 1 : 0);
    }
}

TEST_F(SessionStoreTest, StartingClosesEveryStrayAtTheSameMoment)
{
    insert({makeSession(u"S1"_s, u"A"_s, 100), makeSession(u"S2"_s, u"B"_s, 200)});
    await(database().startSession(makeSession(u"S3"_s, u"A"_s, 300), VeltoDate(300.5)));
    EXPECT_EQ(ends(), (QList<std::pair<QString, std::optional<VeltoDate>>>{
                          {u"S1"_s, VeltoDate(300)}, {u"S2"_s, VeltoDate(300)}, {u"S3"_s, std::nullopt}}));
}

TEST_F(SessionStoreTest, AnUpdateChangesTheTimesAndNoteAndTheMoodOnlyWhenAsked)
{
    const QList<std::tuple<bool, std::optional<Mood>, std::optional<Mood>>> cases{
        {false, Mood::focused, Mood::deep}, {true, std::nullopt, std::nullopt}, {true, Mood::ok, Mood::ok}};
    for (const auto &[includingMood, mood, stored] : cases) {
        SCOPED_TRACE(includingMood);
        reopen();
        seedCards();
        TimeSession session = makeSession(u"S1"_s, u"A"_s, 100, 200);
        session.mood = Mood::deep;
        session.targetSeconds = 600;
        insert({session});
        TimeSession edited = makeSession(u"S1"_s, u"B"_s, 50, 400);
        edited.note = u"Reviewed"_s;
        edited.mood = mood;
        edited.source = TimeSession::Source::automatic;
        await(database().updateSession(edited, includingMood));
        TimeSession expected = makeSession(u"S1"_s, u"A"_s, 50, 400);
        expected.note = u"Reviewed"_s;
        expected.mood = stored;
        expected.targetSeconds = 600;
        EXPECT_EQ(await(database().runningSession()), std::nullopt);
        EXPECT_EQ(await(database().allSessions()), QList{expected});
    }
}

TEST_F(SessionStoreTest, AnUnknownMoodIsDroppedButAnUnknownSourceFailsTheRead)
{
    insert({makeSession(u"S1"_s, u"A"_s, 100), makeSession(u"S2"_s, u"A"_s, 50, 60)});
    execute(u"PRAGMA ignore_check_constraints = ON; UPDATE time_sessions SET mood = 'great'"_s);
    EXPECT_EQ(await(database().allSessions()).constFirst().mood, std::nullopt);

    execute(u"UPDATE time_sessions SET source = 'timer' WHERE id = 'S1'"_s);
    for (auto read : {std::function([this] { await(database().allSessions()); }),
                      std::function([this] { await(database().sessions(u"A"_s)); }),
                      std::function([this] { await(database().runningSession()); }),
                      std::function([this] { await(database().stopRunningSession(VeltoDate(200))); })}) {
        try {
            read();
            ADD_FAILURE() << "the read should have failed";
        } catch (const RepositoryError &error) {
            EXPECT_EQ(error.text(), u"Row S1 in time_sessions could not be read: unknown source 'timer'"_s);
        }
    }
    EXPECT_EQ(takePosts(), 0);
}

} // namespace
