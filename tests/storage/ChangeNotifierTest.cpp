#include "ChangeChannels.h"
#include "DatabaseChangeNotifier.h"

#include <QDBusConnection>
#include <QProcess>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

class ChangeNotifierTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        if (!QDBusConnection::sessionBus().isConnected())
            GTEST_SKIP() << "needs a session bus: run under dbus-run-session";
        ASSERT_TRUE(drainBus()) << "the bus did not deliver the marker";
    }
};

// The bus admits only [A-Za-z0-9_] in an element, no digit first, and an interface of at most
// 255 characters with two elements or more.
TEST(ChangeNotifierNames, MapsTheChannelToAValidInterfaceAndMember)
{
    const QList<std::tuple<QString, std::optional<QString>, QString>> cases{
        {u"io.quillmere.Velto.databaseDidChange"_s, u"io.quillmere.Velto"_s, u"databaseDidChange"_s},
        {u"com.my-team.Velto.databaseDidChange"_s, u"com.my_team.Velto"_s, u"databaseDidChange"_s},
        {u"2024.team..velto.databaseDidChange"_s, u"_2024.team._.velto"_s, u"databaseDidChange"_s},
        {u"group.caf\u00e9 bar.x.9-changes"_s, u"group.caf__bar.x"_s, u"_9_changes"_s},
        {u"Velto.databaseDidChange"_s, std::nullopt, u"databaseDidChange"_s},
        {u"a."_s + QString(300, u'b') + u".databaseDidChange"_s, std::nullopt, u"databaseDidChange"_s},
    };
    for (const auto &[name, interface, member] : cases) {
        SCOPED_TRACE(name.toStdString());
        const DatabaseChangeNotifier notifier{name};
        EXPECT_EQ(notifier.busInterface(), interface);
        EXPECT_EQ(notifier.busMember(), member);
    }
}

TEST_F(ChangeNotifierTest, EachObservationHearsEachPostUntilItIsDropped)
{
    const auto channel = freshChannel();
    int dropped = 0;
    int kept = 0;
    auto observation = channel.observe([&dropped] { ++dropped; });
    const auto keeper = channel.observe([&kept] { ++kept; });
    ASSERT_TRUE(observation && keeper);

    channel.post();
    channel.post();
    freshChannel().post(); // another channel is not heard
    ASSERT_TRUE(drainBus());
    ASSERT_EQ(dropped, 2);
    ASSERT_EQ(kept, 2);

    channel.post(); // still in flight when the observation goes, and must not reach it
    observation.reset();
    channel.post();
    ASSERT_TRUE(drainBus());
    EXPECT_EQ(dropped, 2);
    EXPECT_EQ(kept, 4);
}

// The probe posts on the app group's own channel, as another copy of the app would.
TEST_F(ChangeNotifierTest, APostFromAnotherProcessReachesThisOne)
{
    const auto channel = DatabaseChangeNotifier::forAppGroup(QStringLiteral(VELTO_APP_GROUP_IDENTIFIER));
    int heard = 0;
    const auto observation = channel.observe([&heard] { ++heard; });
    ASSERT_TRUE(observation);

    QProcess probe;
    probe.start(QStringLiteral(VELTO_PROBE_PATH), {u"--post"_s});
    ASSERT_TRUE(probe.waitForFinished(10000));
    ASSERT_EQ(probe.exitCode(), 0) << probe.readAllStandardError().toStdString();

    EXPECT_TRUE(waitFor([&heard] { return heard == 1; }));
}

} // namespace
