#include "AppModel.h"
#include "Await.h"
#include "FolderHandoff.h"
#include "SQLiteConnection.h"

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
    AppGroupSources sources(QList<std::pair<QString, QString>> extra = {},
                            std::optional<QString> bundle = u"io.quillmere.Velto"_s) const
    {
        QProcessEnvironment environment;
        environment.insert(u"XDG_DATA_HOME"_s, m_dir.path());
        for (const auto &[name, value] : extra)
            environment.insert(name, value);
        return {std::move(bundle), environment, m_dir.filePath(u"account"_s)};
    }

    std::shared_ptr<QSettings> defaults() const
    {
        return std::make_shared<QSettings>(m_settingsDir.filePath(u"defaults.ini"_s), QSettings::IniFormat);
    }

    QString containerPath() const { return m_dir.filePath(u"io.quillmere.Velto"_s); }
    QString databasePath() const { return containerPath() + u"/Velto.sqlite"_s; }

    QByteArray fileBytes(const QString &path) const
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QTemporaryDir m_dir;
    QTemporaryDir m_settingsDir;
};

TEST_F(AppModelTest, StartOpensTheDatabaseInTheContainer)
{
    AppModel model(sources(), defaults());
    QSignalSpy startupChanges(&model, &AppModel::startupChanged);
    await(model.start());

    EXPECT_EQ(model.startup(), AppModel::Startup::ready());
    EXPECT_EQ(startupChanges.count(), 1); // starting was already the state: only ready notifies
    ASSERT_TRUE(model.services().has_value());
    EXPECT_EQ(model.services()->container.path, containerPath());
    EXPECT_EQ(model.services()->migration.toVersion, 8);
    EXPECT_NE(model.timer(), nullptr);

    auto reader = SQLiteConnection::open(databasePath(), SQLiteConnection::Access::readOnly);
    EXPECT_EQ(reader->queryInt(u"PRAGMA user_version"_s), 8);
    EXPECT_EQ(reader->queryText(u"PRAGMA journal_mode"_s), u"wal"_s);
}

TEST_F(AppModelTest, SecondStartDoesNothing)
{
    AppModel model(sources(), defaults());
    await(model.start());
    const auto database = model.services()->database;
    QSignalSpy startupChanges(&model, &AppModel::startupChanged);
    QSignalSpy servicesChanges(&model, &AppModel::servicesChanged);

    await(model.start());

    EXPECT_EQ(model.services()->database, database);
    EXPECT_EQ(startupChanges.count(), 0);
    EXPECT_EQ(servicesChanges.count(), 0);
}

TEST_F(AppModelTest, AutomatedCheckHostTouchesNothing)
{
    AppModel model(sources({{u"XCTestConfigurationFilePath"_s, u""_s}}), defaults());
    await(model.start());
    EXPECT_EQ(model.startup(), AppModel::Startup::starting());
    EXPECT_FALSE(model.services().has_value());
    EXPECT_FALSE(QDir(containerPath()).exists());
}

TEST_F(AppModelTest, FailuresLandInStartupAndLeaveNoServices)
{
    const QString identifierText =
        u"No App Group identifier. Set VELTO_APP_GROUP_IDENTIFIER when configuring the build, or set the "
        u"VELTO_APP_GROUP environment variable."_s;
    AppModel model(sources({}, u"$(TEAM).Velto"_s), defaults());
    await(model.start());
    EXPECT_EQ(model.startup(), AppModel::Startup::failed(identifierText));
    EXPECT_FALSE(model.services().has_value());
    EXPECT_EQ(model.timer(), nullptr);
    EXPECT_TRUE(QDir(m_dir.path()).entryList(QDir::NoDotAndDotDot | QDir::AllEntries).isEmpty());
}

TEST_F(AppModelTest, NewerDatabaseIsRefusedAndLeftAsItWas)
{
    QDir().mkpath(containerPath());
    {
        auto connection = SQLiteConnection::open(databasePath(), SQLiteConnection::Access::readWrite);
        connection->configure();
        connection->execute(u"CREATE TABLE future (x); INSERT INTO future VALUES (1); PRAGMA user_version = 9;"_s);
        connection->execute(u"PRAGMA wal_checkpoint(TRUNCATE)"_s);
    }
    const QByteArray before = fileBytes(databasePath());

    AppModel model(sources(), defaults());
    await(model.start());

    EXPECT_EQ(model.startupKind(), AppModel::StartupKind::Failed);
    EXPECT_EQ(model.failureMessage(), u"This database is at schema version 9 but this build only understands "
                                      u"version 8. It was written by a newer version of Velto."_s);
    EXPECT_FALSE(model.services().has_value());
    EXPECT_EQ(fileBytes(databasePath()), before);
}

TEST_F(AppModelTest, RetryReachesReadyOnceTheCauseIsFixed)
{
    QFile blocker(containerPath());
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    blocker.close();

    AppModel model(sources(), defaults());
    await(model.start());
    ASSERT_EQ(model.startupKind(), AppModel::StartupKind::Failed);
    EXPECT_TRUE(model.failureMessage().startsWith(u"Could not use the App Group container at "_s + containerPath() + u".\n"_s))
        << model.failureMessage().toStdString();

    // The failure stays on screen until the next attempt begins.
    QSignalSpy startupChanges(&model, &AppModel::startupChanged);
    FocusSettings *const focus = model.focus();
    ASSERT_TRUE(blocker.remove());
    await(model.retry());

    EXPECT_EQ(model.startup(), AppModel::Startup::ready());
    EXPECT_EQ(startupChanges.count(), 2); // starting, then ready
    EXPECT_EQ(model.focus(), focus);
    EXPECT_NE(model.timer(), nullptr);
    EXPECT_TRUE(QFile::exists(databasePath()));
}

} // namespace

namespace {

TEST_F(AppModelTest, SessionLeftRunningIsAdoptedAtStart)
{
    {
        AppModel first(sources(), defaults());
        await(first.start());
    }
    {
        auto connection = SQLiteConnection::open(databasePath(), SQLiteConnection::Access::readWrite);
        connection->configure();
        connection->execute(uR"(
            INSERT INTO cards (id, bookmark, display_path, display_name, status, priority, sort_order, created_at, status_changed_at)
            VALUES ('C0000000-0000-4000-8000-000000000001', x'', '/home/ada/Thesis', 'Thesis', 'in_progress', 'now', 1.0, 0, 0);
            INSERT INTO time_sessions (id, card_id, started_at, source)
            VALUES ('E0000000-0000-4000-8000-000000000001', 'C0000000-0000-4000-8000-000000000001', 1700000000, 'manual');
        )"_s);
    }
    AppModel model(sources(), defaults());
    await(model.start());
    ASSERT_NE(model.timer(), nullptr);
    EXPECT_TRUE(model.timer()->hasRunningSession());
    EXPECT_EQ(model.timer()->runningCardName(), u"Thesis"_s);
    ASSERT_NE(model.board(), nullptr);
    EXPECT_EQ(model.board()->cards().size(), 1) << "the board's first load comes before the adoption";
}

TEST_F(AppModelTest, FoldersHandedOverWaitForTheFirstLoad)
{
    const QString folder = m_dir.filePath(u"Thesis"_s);
    ASSERT_TRUE(QDir().mkpath(folder));
    {
        AppModel first(sources(), defaults());
        first.handOverFolders({QUrl::fromLocalFile(folder)});
        await(first.start());
        ASSERT_EQ(first.board()->cards().size(), 1);
        EXPECT_EQ(first.board()->selectedCardID(), first.board()->cards().first().id);
    }
    // At the next launch the folder is already known, even under a new name.
    const QString renamed = m_dir.filePath(u"Thesis final"_s);
    ASSERT_TRUE(QDir().rename(folder, renamed));
    AppModel model(sources(), defaults());
    model.handOverFolders({QUrl::fromLocalFile(renamed)});
    await(model.start());
    ASSERT_EQ(model.board()->cards().size(), 1);
    EXPECT_EQ(model.board()->cards().first().displayName, u"Thesis final"_s);

    // Once started, folders are added at once.
    const QString other = m_dir.filePath(u"Other"_s);
    ASSERT_TRUE(QDir().mkpath(other));
    model.handOverFolders({QUrl::fromLocalFile(other)});
    EXPECT_TRUE(QTest::qWaitFor([&] { return model.board()->cards().size() == 2; }, 5000));
}

TEST(FolderHandoffTest, TakesFoldersOnlyAndSaysWhyWhenThereAreNone)
{
    QTemporaryDir dir;
    ASSERT_TRUE(QDir(dir.path()).mkpath(u"Folder"_s));
    QFile file(dir.filePath(u"notes.txt"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    const QUrl folder = QUrl::fromLocalFile(dir.filePath(u"Folder"_s));
    const QString tracksFolders = u"Velto tracks folders, not files. Select a folder instead."_s;
    struct Case {
        QStringList arguments;
        FolderHandoff expected;
    };
    const std::vector<Case> cases{
        {{u"Folder"_s, u"notes.txt"_s}, {{folder}, std::nullopt}},
        {{dir.filePath(u"Folder/"_s)}, {{folder}, std::nullopt}},
        {{folder.toString()}, {{folder}, std::nullopt}},
        {{u"notes.txt"_s, u"absent"_s}, {{}, tracksFolders}},
        {{u""_s}, {{}, u"Velto could not read the selection."_s}},
        {{u"https://example.org/"_s}, {{}, u"Velto could not read the selection."_s}},
    };
    for (const Case &entry : cases) {
        SCOPED_TRACE(entry.arguments.join(u' ').toStdString());
        EXPECT_EQ(FolderHandoff::fromArguments(entry.arguments, dir.path()), entry.expected);
    }
}

} // namespace
