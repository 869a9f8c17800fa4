#include "Await.h"
#include "Database.h"
#include "DatabaseChangeNotifier.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDateTime>
#include <QDeadlineTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>
#include <QUuid>

#include <gtest/gtest.h>

#include <functional>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

bool waitFor(const std::function<bool()> &condition)
{
    QDeadlineTimer deadline(5000);
    while (!condition() && !deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    return condition();
}

DatabaseChangeNotifier freshChannel()
{
    return DatabaseChangeNotifier::forAppGroup(u"test.velto."_s + QUuid::createUuid().toString(QUuid::WithoutBraces));
}

// Signals from one process arrive in the order they were sent: once a marker posted last has come
// back, every earlier signal has been delivered too, so a count can be checked without sleeping.
void drainBus()
{
    const auto marker = freshChannel();
    bool arrived = false;
    const auto observation = marker.observe([&arrived] { arrived = true; });
    ASSERT_TRUE(observation);
    marker.post();
    ASSERT_TRUE(waitFor([&arrived] { return arrived; }));
}

class ChangeNotifierTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        if (!QDBusConnection::sessionBus().isConnected())
            GTEST_SKIP() << "needs a session bus: run under dbus-run-session";
    }
};

struct BusNameCase {
    QString name;
    std::optional<QString> interface;
    QString member;
};

TEST(ChangeNotifierNames, MapsTheChannelToAValidInterfaceAndMember)
{
    const QList<BusNameCase> cases{
        {u"io.quillmere.Velto.databaseDidChange"_s, u"io.quillmere.Velto"_s, u"databaseDidChange"_s},
        {u"com.my-team.Velto.databaseDidChange"_s, u"com.my_team.Velto"_s, u"databaseDidChange"_s},
        {u"2024.team.velto.databaseDidChange"_s, u"_2024.team.velto"_s, u"databaseDidChange"_s},
        {u"io.9lives.Velto.databaseDidChange"_s, u"io._9lives.Velto"_s, u"databaseDidChange"_s},
        {u"io..Velto.databaseDidChange"_s, u"io._.Velto"_s, u"databaseDidChange"_s},
        {u"group.caf\u00e9 bar.x.databaseDidChange"_s, u"group.caf__bar.x"_s, u"databaseDidChange"_s},
        {u"io.quillmere.Velto.9-changes"_s, u"io.quillmere.Velto"_s, u"_9_changes"_s},
        {u"Velto.databaseDidChange"_s, std::nullopt, u"databaseDidChange"_s},
        {u"databaseDidChange"_s, std::nullopt, u"databaseDidChange"_s},
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
    drainBus();
    ASSERT_EQ(dropped, 2);
    ASSERT_EQ(kept, 2);

    channel.post(); // still in flight when the observation goes, and must not reach it
    observation.reset();
    channel.post();
    drainBus();
    EXPECT_EQ(dropped, 2);
    EXPECT_EQ(kept, 4);
}

// The database posts from its worker thread; delivery still comes to the observing thread.
TEST_F(ChangeNotifierTest, ADatabasePostsOnlyWhenItWasGivenANotifier)
{
    for (const bool given : {true, false}) {
        SCOPED_TRACE(given ? "with a notifier" : "without a notifier");
        QTemporaryDir dir;
        const auto channel = freshChannel();
        int heard = 0;
        const auto observation = channel.observe([&heard] {
            EXPECT_EQ(QThread::currentThread(), QCoreApplication::instance()->thread());
            ++heard;
        });
        ASSERT_TRUE(observation);
        auto database = Database::create(dir.filePath(u"Velto.sqlite"_s),
                                         given ? std::optional(channel) : std::nullopt);

        await(database->run([raw = database.get()](SQLiteConnection &) { raw->postChange(); }));
        drainBus();

        EXPECT_EQ(heard, given ? 1 : 0);
    }
}

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

TEST_F(ChangeNotifierTest, AnotherProcessPrintsALineForEachPostOfThisOne)
{
    const auto channel = DatabaseChangeNotifier::forAppGroup(QStringLiteral(VELTO_APP_GROUP_IDENTIFIER));
    QProcess watcher;
    watcher.start(QStringLiteral(VELTO_PROBE_PATH), {u"--watch"_s});
    QByteArray announcement;
    ASSERT_TRUE(waitFor([&] { return (announcement += watcher.readAllStandardError()).contains("Watching"); }));

    channel.post();
    channel.post();
    QByteArray printed;
    ASSERT_TRUE(waitFor([&] { return (printed += watcher.readAllStandardOutput()).count('\n') == 2; }));
    watcher.terminate();
    watcher.waitForFinished();

    for (const QByteArray &line : printed.trimmed().split('\n')) {
        SCOPED_TRACE(line.toStdString());
        const auto fields = QString::fromUtf8(line).split(u' ');
        ASSERT_EQ(fields.size(), 2);
        EXPECT_TRUE(QDateTime::fromString(fields[0], Qt::ISODateWithMs).isValid());
        EXPECT_EQ(fields[1], channel.name);
    }
}

struct ProbeCase {
    QStringList arguments;
    bool withoutBus;
    int exitCode;
};

TEST(ChangeNotifierProbe, FailsAtOnceWithoutABusOrAMode)
{
    const QList<ProbeCase> cases{
        {{}, false, 2},
        {{u"--post"_s}, true, 1},
        {{u"--watch"_s}, true, 1},
    };
    QTemporaryDir dir;
    for (const auto &[arguments, withoutBus, exitCode] : cases) {
        SCOPED_TRACE(arguments.join(u' ').toStdString());
        QProcess probe;
        if (withoutBus) {
            auto environment = QProcessEnvironment::systemEnvironment();
            environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, u"unix:path="_s + dir.filePath(u"no-bus"_s));
            probe.setProcessEnvironment(environment);
        }
        probe.start(QStringLiteral(VELTO_PROBE_PATH), arguments);
        ASSERT_TRUE(probe.waitForFinished(10000));
        EXPECT_EQ(probe.exitCode(), exitCode);
    }
}

} // namespace
