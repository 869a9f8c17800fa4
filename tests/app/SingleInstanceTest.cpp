#include "AppModel.h"
#include "ApplicationBusService.h"
#include "Await.h"
#include "BusName.h"
#include "DesktopNotification.h"
#include "FakeFolderPicker.h"
#include "../platform/FakeNotificationServer.h"
#include "InstanceLock.h"
#include "InstanceLockError.h"
#include "SecondLaunch.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

TEST(InstanceLockTest, OneHolderAtATime)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(u"Velto.lock"_s);
    {
        auto first = InstanceLock::take(path);
        ASSERT_TRUE(first);
        EXPECT_FALSE(InstanceLock::take(path)) << "held, even by this very process";
        const InstanceLock moved = std::move(*first);
        EXPECT_FALSE(InstanceLock::take(path)) << "a moved lock is still held";
    }
    EXPECT_TRUE(InstanceLock::take(path)) << "released with its holder";

    const QString nowhere = dir.filePath(u"absent/Velto.lock"_s);
    try {
        (void)InstanceLock::take(nowhere);
        ADD_FAILURE() << "a lock in a folder that does not exist";
    } catch (const InstanceLockError &failure) {
        EXPECT_EQ(failure.text(), u"Velto could not lock “%1”: No such file or directory"_s.arg(nowhere));
    }
}

TEST(BusNameTest, TheIdentifierBecomesANameAndAPathTheBusAccepts)
{
    const struct {
        QString identifier;
        QString name;
        QString path;
    } cases[] = {
        {u"io.quillmere.Velto"_s, u"io.quillmere.Velto"_s, u"/io/quillmere/Velto"_s},
        {u"io.quill-mere.9Velto"_s, u"io.quill_mere._9Velto"_s, u"/io/quill_mere/_9Velto"_s},
    };
    for (const auto &c : cases) {
        EXPECT_EQ(BusName::fromIdentifier(c.identifier), c.name);
        EXPECT_EQ(BusName::objectPath(c.name), c.path);
    }
}

class SingleInstanceTest : public ::testing::Test {
protected:
    std::unique_ptr<AppModel> model(const QString &home, std::shared_ptr<FolderPicker> picker = nullptr) const
    {
        QProcessEnvironment environment;
        environment.insert(u"XDG_DATA_HOME"_s, home);
        return std::make_unique<AppModel>(
            AppGroupSources{m_identifier, environment, home},
            std::make_shared<QSettings>(m_dir.filePath(u"defaults.ini"_s), QSettings::IniFormat), std::move(picker));
    }

    QString makeFolder(const QString &name) const
    {
        EXPECT_TRUE(QDir(m_dir.path()).mkpath(name));
        return m_dir.filePath(name);
    }

    // A name of its own, so that no other test's Velto answers.
    const QString m_identifier = u"io.quillmere.Velto-instance-test"_s;
    QTemporaryDir m_dir;
};

// Two models over one container: the second never opens the database; one over another container
// is free to.
TEST_F(SingleInstanceTest, OnlyOneModelWritesToAContainer)
{
    const auto first = model(m_dir.path());
    EXPECT_EQ(first->claimContainer().heldElsewhere, false);
    await(first->start());
    ASSERT_EQ(first->startupKind(), AppModel::StartupKind::Ready);

    const auto second = model(m_dir.path());
    const AppModel::ContainerClaim claim = second->claimContainer();
    EXPECT_TRUE(claim.heldElsewhere);
    EXPECT_EQ(claim.identifier, m_identifier);
    await(second->start());
    EXPECT_EQ(second->failureMessage(),
              u"Velto is already running with the board in “%1”. Only one Velto at a time can write to it."_s.arg(
                  m_dir.filePath(m_identifier)));
    EXPECT_FALSE(second->services());

    QTemporaryDir elsewhere;
    const auto other = model(elsewhere.path());
    await(other->start());
    EXPECT_EQ(other->startupKind(), AppModel::StartupKind::Ready);
}

// A second launch hands its arguments over the bus, as main does; the running model takes the
// folders the way the command line gives them, or says why it could take none.
TEST_F(SingleInstanceTest, ASecondLaunchHandsItsArgumentsToTheRunningOne)
{
    const auto running = model(m_dir.path());
    await(running->start());
    ApplicationBusService launches;
    ASSERT_TRUE(launches.publish(m_identifier));
    running->answerLaunches(launches);
    BoardModel *board = running->board();
    QSignalSpy activations(running.get(), &AppModel::activationRequested);

    makeFolder(u"Thesis"_s);
    QFile(m_dir.filePath(u"notes.txt"_s)).open(QIODevice::WriteOnly);
    const QString filesOnly = u"Velto tracks folders, not files. Select a folder instead."_s;
    const struct {
        const char *name;
        QStringList arguments;
        QStringList cards;
        QString message;
    } cases[] = {
        {"nothing: the window only comes forward", {}, {}, {}},
        {"files only", {u"notes.txt"_s}, {}, filesOnly},
        {"nothing readable", {u"https://example.org/"_s}, {}, u"Velto could not read the selection."_s},
        {"a folder and a file, by relative path", {u"Thesis"_s, u"notes.txt"_s}, {u"Thesis"_s}, {}},
    };
    // Another process's connection to the bus.
    const QDBusConnection secondLaunch = QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"second"_s);
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        board->dismissError();
        const int activated = activations.count();
        EXPECT_EQ(SecondLaunch::handOver(secondLaunch, m_identifier, c.arguments, m_dir.path()), std::nullopt);
        EXPECT_EQ(activations.count(), activated + 1);
        EXPECT_TRUE(QTest::qWaitFor([&] { return board->errorMessageText() == c.message; }, 5000))
            << board->errorMessageText().toStdString();
        EXPECT_TRUE(QTest::qWaitFor([&] { return board->cards().size() == c.cards.size(); }, 5000));
        QStringList names;
        for (const Card &card : board->cards())
            names.append(card.displayName);
        EXPECT_EQ(names, c.cards);
    }
    QDBusConnection::disconnectFromBus(u"second"_s);
}

// The launcher's "Add to Velto Board" asks the running Velto for its folder chooser; asked before
// the board has loaded, the chooser waits for it, and an action Velto does not know only brings
// the window forward.
TEST_F(SingleInstanceTest, TheAddFolderActionOpensTheFolderChooserOnceTheBoardIsLoaded)
{
    const auto picker = std::make_shared<FakeFolderPicker>();
    picker->answers.push_back({QUrl::fromLocalFile(makeFolder(u"Chosen"_s))});
    const auto running = model(m_dir.path(), picker);
    ApplicationBusService launches;
    ASSERT_TRUE(launches.publish(m_identifier));
    running->answerLaunches(launches);
    QSignalSpy activations(running.get(), &AppModel::activationRequested);
    const QDBusConnection launcher = QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"launcher"_s);

    EXPECT_EQ(SecondLaunch::activateAction(launcher, m_identifier, AppModel::addFolderAction()), std::nullopt);
    EXPECT_EQ(activations.count(), 1);
    EXPECT_TRUE(picker->requests.isEmpty()) << "no board to add to yet";

    await(running->start());
    ASSERT_TRUE(QTest::qWaitFor([&] { return running->board()->cards().size() == 1; }, 5000));
    EXPECT_EQ(picker->requests.size(), 1);

    const struct {
        QString action;
        qsizetype requests;
    } cases[] = {{u"add-folder"_s, 2}, {u"no-such-action"_s, 2}};
    for (const auto &c : cases) {
        SCOPED_TRACE(c.action.toStdString());
        const int activated = activations.count();
        EXPECT_EQ(SecondLaunch::activateAction(launcher, m_identifier, c.action), std::nullopt);
        EXPECT_EQ(activations.count(), activated + 1);
        EXPECT_TRUE(QTest::qWaitFor([&] { return picker->requests.size() == c.requests; }, 1000));
    }
    QDBusConnection::disconnectFromBus(u"launcher"_s);
}

// With no window of Velto active, as when a file manager's action calls it, the sentence goes to
// the desktop's notifications instead of a banner nobody sees; the folders are taken all the same.
TEST_F(SingleInstanceTest, WithNoWindowActiveTheRefusalIsADesktopNotification)
{
    FakeNotificationServer server;
    const auto running = model(m_dir.path());
    running->setDesktopNotification(DesktopNotification(QDBusConnection::sessionBus()));
    await(running->start());
    ApplicationBusService launches;
    ASSERT_TRUE(launches.publish(m_identifier));
    running->answerLaunches(launches);
    BoardModel *board = running->board();
    ASSERT_EQ(QGuiApplication::focusWindow(), nullptr);

    makeFolder(u"with 'quotes' and\nlines"_s);
    QFile(m_dir.filePath(u"notes.txt"_s)).open(QIODevice::WriteOnly);
    const struct {
        const char *name;
        QStringList arguments;
        QStringList notified;
        qsizetype cards;
    } cases[] = {
        {"files only", {u"notes.txt"_s}, {u"Velto tracks folders, not files. Select a folder instead."_s}, 0},
        {"nothing readable", {u"https://example.org/"_s}, {u"Velto could not read the selection."_s}, 0},
        {"a folder and a file", {m_dir.filePath(u"with 'quotes' and\nlines"_s), u"notes.txt"_s}, {}, 1},
    };
    const QDBusConnection secondLaunch = QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"second"_s);
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        server.summaries.clear();
        EXPECT_EQ(SecondLaunch::handOver(secondLaunch, m_identifier, c.arguments, m_dir.path()), std::nullopt);
        EXPECT_TRUE(QTest::qWaitFor([&] { return board->cards().size() == c.cards; }, 5000));
        if (!c.notified.isEmpty()) {
            EXPECT_TRUE(QTest::qWaitFor([&] { return !server.summaries.isEmpty(); }, 5000));
        }
        QTest::qWait(50);
        EXPECT_EQ(server.summaries, c.notified);
        EXPECT_EQ(board->errorMessageText(), QString());
    }
    EXPECT_EQ(server.applications.value(0), u"Velto"_s);
    QDBusConnection::disconnectFromBus(u"second"_s);
}

TEST(DesktopNotificationTest, WithoutAServerOrABusNothingFails)
{
    for (const QDBusConnection &bus : {QDBusConnection::sessionBus(), QDBusConnection(u"no-bus"_s)}) {
        QDBusPendingCall call = DesktopNotification(bus).post(u"Velto is not ready yet."_s);
        call.waitForFinished();
        EXPECT_TRUE(call.isError());
    }
}

TEST_F(SingleInstanceTest, WithNobodyAnsweringTheSecondLaunchSaysSoInOneSentence)
{
    const QString sentence = u"Velto is already running but did not answer, so nothing was handed to it."_s;
    EXPECT_EQ(SecondLaunch::handOver(QDBusConnection::sessionBus(), m_identifier, {u"Thesis"_s}, m_dir.path()),
              sentence);
    EXPECT_EQ(SecondLaunch::handOver(QDBusConnection(u"no-bus"_s), m_identifier, {}, m_dir.path()), sentence);
}

} // namespace
