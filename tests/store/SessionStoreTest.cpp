#include "StoreFixture.h"

#include "RepositoryError.h"

#include <functional>

using namespace Qt::StringLiterals;

namespace {

using Ends = QList<std::pair<QString, std::optional<VeltoDate>>>;

class SessionStoreTest : public StoreFixture {
protected:
    // Cards A and B with `sessions`, the posts of the setting up taken.
    void start(const QList<TimeSession> &sessions)
    {
        reopen();
        await(database().insertCard(makeCard(u"A"_s, CardStatus::inProgress, 0)));
        await(database().insertCard(makeCard(u"B"_s, CardStatus::inProgress, 1)));
        for (const TimeSession &session : sessions)
            await(database().insertSession(session));
        takePosts();
    }

    // Each session's end, in start order.
    Ends ends()
    {
        Ends ends;
        for (const TimeSession &session : await(database().allSessions()))
            ends.append({session.id, session.endedAt});
        return ends;
    }
};

TEST_F(SessionStoreTest, ASessionReadsBackAsItWasInserted)
{
    TimeSession session{u"S1"_s, u"A"_s, VeltoDate(100.9), VeltoDate(200.2), TimeSession::Source::automatic, 0.75,
                        QString(), 1500, Mood::scattered};
    start({session, makeSession(u"S2"_s, u"A"_s, 300), makeSession(u"S3"_s, u"B"_s, 50, 60)});
    session.startedAt = VeltoDate(100);
    session.endedAt = VeltoDate(200);
    EXPECT_EQ(await(database().sessions(u"A"_s)), (QList{makeSession(u"S2"_s, u"A"_s, 300), session}));
    EXPECT_EQ(ends().constFirst().first, u"S3"_s);
    EXPECT_EQ(await(database().runningSession()), makeSession(u"S2"_s, u"A"_s, 300));
}

TEST_F(SessionStoreTest, StoppingClosesTheLatestRunningSessionNeverBeforeItsStart)
{
    const QList<std::tuple<const char *, QList<TimeSession>, double, std::optional<TimeSession>, Ends>> cases{
        {"nothing running", {makeSession(u"S1"_s, u"A"_s, 10, 20)}, 100, std::nullopt, {{u"S1"_s, VeltoDate(20)}}},
        {"running", {makeSession(u"S1"_s, u"A"_s, 5000)}, 6000.7, makeSession(u"S1"_s, u"A"_s, 5000, 6000),
         {{u"S1"_s, VeltoDate(6000)}}},
        {"clock put back", {makeSession(u"S1"_s, u"A"_s, 5000)}, 4000, makeSession(u"S1"_s, u"A"_s, 5000, 5000),
         {{u"S1"_s, VeltoDate(5000)}}},
        {"two running", {makeSession(u"S1"_s, u"A"_s, 5000), makeSession(u"S2"_s, u"B"_s, 5500)}, 6000,
         makeSession(u"S2"_s, u"B"_s, 5500, 6000), {{u"S1"_s, std::nullopt}, {u"S2"_s, VeltoDate(6000)}}},
    };
    for (const auto &[name, sessions, at, closed, expectedEnds] : cases) {
        SCOPED_TRACE(name);
        start(sessions);
        EXPECT_EQ(await(database().stopRunningSession(VeltoDate(at))), closed);
        EXPECT_EQ(ends(), expectedEnds);
        EXPECT_EQ(takePosts(), closed ? 1 : 0);
    }
}

TEST_F(SessionStoreTest, StartingClosesEveryStrayAtTheSameMoment)
{
    start({makeSession(u"S1"_s, u"A"_s, 100), makeSession(u"S2"_s, u"B"_s, 200)});
    await(database().startSession(makeSession(u"S3"_s, u"A"_s, 300), VeltoDate(300.5)));
    EXPECT_EQ(ends(), (Ends{{u"S1"_s, VeltoDate(300)}, {u"S2"_s, VeltoDate(300)}, {u"S3"_s, std::nullopt}}));
}

TEST_F(SessionStoreTest, AnUpdateChangesTheTimesAndNoteAndTheMoodOnlyWhenAsked)
{
    const QList<std::tuple<bool, std::optional<Mood>, std::optional<Mood>>> cases{
        {false, Mood::focused, Mood::deep}, {true, std::nullopt, std::nullopt}, {true, Mood::ok, Mood::ok}};
    for (const auto &[includingMood, mood, stored] : cases) {
        SCOPED_TRACE(includingMood);
        start({{u"S1"_s, u"A"_s, VeltoDate(100), VeltoDate(200), {}, 1.0, {}, 600, Mood::deep}});
        // Of these, only the times, the note and perhaps the mood may reach the row.
        await(database().updateSession({u"S1"_s, u"B"_s, VeltoDate(50), VeltoDate(400), TimeSession::Source::automatic,
                                        0.5, u"Reviewed"_s, 60, mood},
                                       includingMood));
        EXPECT_EQ(await(database().allSessions()),
                  QList<TimeSession>({{u"S1"_s, u"A"_s, VeltoDate(50), VeltoDate(400), {}, 1.0, u"Reviewed"_s, 600,
                                       stored}}));
    }
}

TEST_F(SessionStoreTest, AnUnknownMoodIsDroppedButAnUnknownSourceFailsTheRead)
{
    start({makeSession(u"S1"_s, u"A"_s, 100), makeSession(u"S2"_s, u"A"_s, 50, 60)});
    execute(u"PRAGMA ignore_check_constraints = ON; UPDATE time_sessions SET mood = 'great'"_s);
    EXPECT_EQ(await(database().allSessions()).constFirst().mood, std::nullopt);

    execute(u"UPDATE time_sessions SET source = 'timer' WHERE id = 'S1'"_s);
    for (const auto &read : {std::function([this] { await(database().allSessions()); }),
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
