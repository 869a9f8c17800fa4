#include "StoreFixture.h"

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

// Every source and mood word must pass the table's checks and read back as its own case; the
// automatic source is stored under another word than its name.
TEST_F(SessionStoreTest, SessionsReadBackAsTheyWereInsertedWithWholeSeconds)
{
    QList<TimeSession> written{{u"S"_s, u"A"_s, VeltoDate(100.9), VeltoDate(200.2), TimeSession::Source::automatic,
                                0.75, u""_s, 1500, std::nullopt}};
    for (auto source : {TimeSession::Source::manual, TimeSession::Source::automatic}) {
        for (Mood mood : allMoods)
            written.append({u"S%1"_s.arg(written.size()), u"B"_s, VeltoDate(1000.0 + written.size()), std::nullopt,
                            source, 1.0, u"Drafting"_s, std::nullopt, mood});
    }
    start(written);
    written[0].startedAt = VeltoDate(100);
    written[0].endedAt = VeltoDate(200);
    EXPECT_EQ(await(database().allSessions()), written);
    EXPECT_EQ(await(database().sessions(u"A"_s)), QList{written[0]});
    EXPECT_EQ(await(database().runningSession()), written.last());
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

} // namespace
