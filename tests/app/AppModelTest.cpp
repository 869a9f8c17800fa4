#include "AppModel.h"
#include "Await.h"
#include "FolderHandoff.h"
#include "PermissionBitsEnforced.h"
#include "SQLiteConnection.h"
#include "VeltoAppDelegate.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

class AppModelTest : public ::testing::Test {
protected:
    std::unique_ptr<AppModel> model(QList<std::pair<QString, QString>> extra = {},
                                    std::optional<QString> bundle = u"io.quillmere.Velto"_s) const
    {
        QProcessEnvironment environment;
        environment.insert(u"XDG_DATA_HOME"_s, m_dir.path());
        for (const auto &[name, value] : extra)
            environment.insert(name, value);
        return std::make_unique<AppModel>(
            AppGroupSources{std::move(bundle), environment, m_dir.filePath(u"account"_s)},
            std::make_shared<QSettings>(m_settingsDir.filePath(u"defaults.ini"_s), QSettings::IniFormat));
    }

    QString containerPath() const { return m_dir.filePath(u"io.quillmere.Velto"_s); }
    QString databasePath() const { return containerPath() + u"/Velto.sqlite"_s; }

    // Another process writing the database behind the model's back.
    std::shared_ptr<SQLiteConnection> writer() const
    {
        auto connection = SQLiteConnection::open(databasePath(), SQLiteConnection::Access::readWrite);
        connection->configure();
        return connection;
    }

    QTemporaryDir m_dir;
    QTemporaryDir m_settingsDir;
};

TEST_F(AppModelTest, StartOpensTheDatabaseOnceAndOnlyReadyNotifies)
{
    const auto app = model();
    QSignalSpy startupChanges(app.get(), &AppModel::startupChanged);
    await(app->start());
    EXPECT_EQ(app->startup(), AppModel::Startup::ready());
    EXPECT_EQ(startupChanges.count(), 1);
    EXPECT_EQ(app->services()->container.path, containerPath());
    EXPECT_EQ(SQLiteConnection::open(databasePath(), SQLiteConnection::Access::readOnly)->queryInt(
                  u"PRAGMA user_version"_s),
              app->services()->migration.toVersion);

    const auto database = app->services()->database;
    QSignalSpy servicesChanges(app.get(), &AppModel::servicesChanged);
    await(app->start());
    EXPECT_EQ(app->services()->database, database);
    EXPECT_EQ(startupChanges.count() + servicesChanges.count(), 1);
}

TEST_F(AppModelTest, AutomatedCheckHostTouchesNothing)
{
    const auto app = model({{u"XCTestConfigurationFilePath"_s, u""_s}});
    await(app->start());
    EXPECT_EQ(app->startup(), AppModel::Startup::starting());
    EXPECT_FALSE(QDir(containerPath()).exists());
}

TEST_F(AppModelTest, NewerDatabaseIsRefusedAndLeftAsItWas)
{
    QDir().mkpath(containerPath());
    writer()->execute(u"CREATE TABLE future (x); INSERT INTO future VALUES (1); PRAGMA user_version = 9;"
                      u"PRAGMA wal_checkpoint(TRUNCATE)"_s);
    QFile file(databasePath());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray before = file.readAll();
    file.close();

    const auto app = model();
    await(app->start());
    EXPECT_EQ(app->failureMessage(), u"This database is at schema version 9 but this build only understands "
                                     u"version 8. It was written by a newer version of Velto."_s);
    EXPECT_FALSE(app->services());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), before);
}

TEST_F(AppModelTest, RetryReachesReadyOnceTheCauseIsFixed)
{
    QFile blocker(containerPath());
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    blocker.close();
    const auto app = model();
    await(app->start());
    EXPECT_TRUE(app->failureMessage().startsWith(u"Could not use the App Group container at "_s + containerPath()));
    EXPECT_FALSE(app->services());
    EXPECT_EQ(app->timer(), nullptr);
    EXPECT_EQ(app->diagnostics(), nullptr);
    EXPECT_EQ(app->analytics(), nullptr);

    // The failure stays on screen until the next attempt begins.
    QSignalSpy startupChanges(app.get(), &AppModel::startupChanged);
    FocusSettings *const focus = app->focus();
    ASSERT_TRUE(blocker.remove());
    await(app->retry());
    EXPECT_EQ(app->startup(), AppModel::Startup::ready());
    EXPECT_EQ(startupChanges.count(), 2); // starting, then ready
    EXPECT_EQ(app->focus(), focus);
    EXPECT_NE(app->timer(), nullptr);
    EXPECT_NE(app->analytics(), nullptr);
    // Diagnostics start waiting for their first snapshot, with nothing counted or observed yet.
    ASSERT_NE(app->diagnostics(), nullptr);
    EXPECT_EQ(app->diagnostics()->stateKind(), DiagnosticsModel::StateKind::Loading);
    EXPECT_FALSE(app->diagnostics()->isObserving());
    EXPECT_EQ(app->diagnostics()->notificationsReceived(), 0);
}

// A database Velto cannot write would open as if all were well and then fail every save; it is
// refused at start-up instead, with the reason and the place.
TEST_F(AppModelTest, ADatabaseThatCannotBeWrittenIsRefusedWithTheReason)
{
    const QString fileText = u"The database at "_s + databasePath()
                             + u" is read-only, so Velto cannot save anything. Make the file writable and try again."_s;
    const QString folderText = u"The folder "_s + containerPath()
                               + u", which holds the database, is read-only, so Velto cannot save anything. "
                                 u"Make the folder writable and try again."_s;
    const struct {
        const char *what;
        bool made; // an earlier start made the database
        QString readOnly;
        QString failure;
    } cases[] = {
        {"the file", true, databasePath(), fileText},
        {"the folder, where the journal files cannot be made", true, containerPath(), folderText},
        {"the folder, before any database was made", false, containerPath(), folderText},
    };
    constexpr auto writable = QFile::WriteOwner | QFile::WriteUser | QFile::WriteGroup | QFile::WriteOther;
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        ASSERT_TRUE(QDir(containerPath()).removeRecursively());
        if (c.made)
            await(model()->start());
        else
            ASSERT_TRUE(QDir().mkpath(containerPath()));
        const auto permissions = QFile::permissions(c.readOnly);
        ASSERT_TRUE(QFile::setPermissions(c.readOnly, permissions & ~writable));
        const auto app = model();
        {
            const PermissionBitsEnforced enforced;
            if (!enforced.isEnforced()) {
                QFile::setPermissions(c.readOnly, permissions);
                GTEST_SKIP() << "this process writes whatever the permission bits say and cannot give that up";
            }
            await(app->start());
        }
        EXPECT_EQ(app->failureMessage(), c.failure);
        EXPECT_FALSE(app->services());

        ASSERT_TRUE(QFile::setPermissions(c.readOnly, permissions));
        await(app->retry());
        EXPECT_EQ(app->startup(), AppModel::Startup::ready());
    }
}

TEST_F(AppModelTest, SessionLeftRunningIsAdoptedAfterTheBoardsFirstLoad)
{
    await(model()->start());
    writer()->execute(uR"(
        INSERT INTO cards (id, bookmark, display_path, display_name, status, priority, sort_order, created_at,
                           status_changed_at)
        VALUES ('C1', x'', '/home/ada/Thesis', 'Thesis', 'in_progress', 'now', 1.0, 0, 0);
        INSERT INTO time_sessions (id, card_id, started_at, source) VALUES ('E1', 'C1', 1700000000, 'manual');
    )"_s);
    const auto app = model();
    await(app->start());
    EXPECT_TRUE(app->timer()->hasRunningSession());
    EXPECT_EQ(app->timer()->runningCardName(), u"Thesis"_s);
    EXPECT_EQ(app->board()->cards().size(), 1);
}

TEST_F(AppModelTest, FoldersHandedOverWaitForTheFirstLoad)
{
    const QString folder = m_dir.filePath(u"Thesis"_s);
    ASSERT_TRUE(QDir().mkpath(folder));
    {
        const auto first = model();
        first->handOver({{QUrl::fromLocalFile(folder)}, std::nullopt});
        await(first->start());
        ASSERT_EQ(first->board()->cards().size(), 1);
        EXPECT_EQ(first->board()->selectedCardID(), first->board()->cards().first().id);
    }
    // At the next launch the folder is already known, even under a new name.
    const QString renamed = m_dir.filePath(u"Thesis final"_s);
    ASSERT_TRUE(QDir().rename(folder, renamed));
    const auto app = model();
    app->handOver({{QUrl::fromLocalFile(renamed)}, std::nullopt});
    await(app->start());
    ASSERT_EQ(app->board()->cards().size(), 1);
    EXPECT_EQ(app->board()->cards().first().displayName, u"Thesis final"_s);

    // Once started, folders are added at once.
    const QString other = m_dir.filePath(u"Other"_s);
    ASSERT_TRUE(QDir().mkpath(other));
    app->handOver({{QUrl::fromLocalFile(other)}, std::nullopt});
    EXPECT_TRUE(QTest::qWaitFor([&] { return app->board()->cards().size() == 2; }, 5000));
}

// Start-up hands the delegate hooks that see the running session and close it; before that, and
// once the model is gone, a quit is immediate.
TEST_F(AppModelTest, StartupWiresTheDelegatesHooks)
{
    int quits = 0;
    auto *delegate = new VeltoAppDelegate([&] { ++quits; }, VeltoAppDelegate::Sleep(), QCoreApplication::instance());
    const std::unique_ptr<VeltoAppDelegate> owned(delegate);
    await(model()->start());
    writer()->execute(uR"(
        INSERT INTO cards (id, bookmark, display_path, display_name, status, priority, sort_order, created_at,
                           status_changed_at)
        VALUES ('C1', x'', '/home/ada/Thesis', 'Thesis', 'in_progress', 'now', 1.0, 0, 0);
        INSERT INTO time_sessions (id, card_id, started_at, source) VALUES ('E1', 'C1', 1700000000, 'manual');
    )"_s);
    auto app = model();
    EXPECT_FALSE(delegate->hasRunningTimer());
    await(app->start());
    ASSERT_TRUE(app->timer()->hasRunningSession());
    EXPECT_TRUE(delegate->hasRunningTimer());

    // No watchdog clock was given: the stop must finish by itself.
    await(delegate->stopRunningTimer());
    EXPECT_FALSE(app->timer()->hasRunningSession());
    EXPECT_EQ(writer()->queryInt(u"SELECT COUNT(*) FROM time_sessions WHERE ended_at IS NULL"_s), 0);

    app.reset();
    EXPECT_FALSE(delegate->hasRunningTimer());
    await(delegate->stopRunningTimer());
    delegate->requestQuit();
    EXPECT_EQ(quits, 1);
}

TEST(FolderHandoffTest, TakesFoldersOnlyAndSaysWhyWhenThereAreNone)
{
    QTemporaryDir dir;
    ASSERT_TRUE(QDir(dir.path()).mkpath(u"Folder"_s));
    QFile file(dir.filePath(u"notes.txt"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    const QUrl folder = QUrl::fromLocalFile(dir.filePath(u"Folder"_s));
    const QString unreadable = u"Velto could not read the selection."_s;
    const struct {
        QStringList arguments;
        FolderHandoff expected;
    } cases[] = {
        {{u"Folder/"_s, u"notes.txt"_s}, {{folder}, std::nullopt}},
        {{folder.toString()}, {{folder}, std::nullopt}},
        {{u"notes.txt"_s, u"absent"_s}, {{}, u"Velto tracks folders, not files. Select a folder instead."_s}},
        {{u""_s}, {{}, unreadable}},
        {{u"https://example.org/"_s}, {{}, unreadable}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.arguments.join(u' ').toStdString());
        EXPECT_EQ(FolderHandoff::fromArguments(c.arguments, dir.path()), c.expected);
    }
}

} // namespace
