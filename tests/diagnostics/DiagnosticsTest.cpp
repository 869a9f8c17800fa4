#include "DiagnosticSections.h"
#include "DiagnosticsModel.h"
#include "PlatformText.h"
#include "StoreFixture.h"

#include <QFileInfo>
#include <QProcess>
#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

using Signal = DiagnosticRow::Signal;

const QLocale english(QLocale::English, QLocale::UnitedKingdom);

DiagnosticsReport soundReport()
{
    DiagnosticsReport report;
    report.container = {u"io.quillmere.Velto"_s, u"/home/ann/.local/share/io.quillmere.Velto"_s,
                        AppGroupContainer::Route::entitlement};
    report.migration = {8, 8, {}};
    report.database = {u"/home/ann/.local/share/io.quillmere.Velto/Velto.sqlite"_s, true, 2048, u"wal"_s, true, 8, 8,
                       {u"cards"_s, u"projects"_s}, u"3.40.1"_s};
    report.notificationName = u"io.quillmere.Velto.databaseDidChange"_s;
    return report;
}

const DiagnosticRow *rowLabelled(const QList<DiagnosticRow> &rows, const QString &label)
{
    for (const DiagnosticRow &row : rows)
        if (row.label == label)
            return &row;
    return nullptr;
}

// Each case spoils one thing of a sound report and names the row that must say so.
TEST(DiagnosticSections, EachRowJudgesItsValue)
{
    const struct {
        const char *name;
        void (*spoil)(DiagnosticsReport &);
        QString label;
        QString value;
        Signal signal;
        std::optional<QString> detail;
    } cases[] = {
        {"WAL in capitals is WAL", [](DiagnosticsReport &r) { r.database.journalMode = u"WAL"_s; },
         u"Journal mode"_s, u"WAL"_s, Signal::ok, std::nullopt},
        {"a rollback journal", [](DiagnosticsReport &r) { r.database.journalMode = u"delete"_s; },
         u"Journal mode"_s, u"delete"_s, Signal::problem, u"A second process cannot read concurrently without WAL."_s},
        {"foreign keys off", [](DiagnosticsReport &r) { r.database.foreignKeysEnabled = false; },
         u"Foreign keys"_s, u"off"_s, Signal::problem, u"Every ON DELETE CASCADE in the schema is inert."_s},
        {"an older file", [](DiagnosticsReport &r) { r.database.schemaVersion = 7; },
         u"Schema version"_s, u"7 of 8"_s, Signal::warning, std::nullopt},
        {"a missing file", [](DiagnosticsReport &r) { r.database.fileExists = false; },
         u"Exists"_s, u"no"_s, Signal::problem, std::nullopt},
        {"the size with its sidecars", [](DiagnosticsReport &) {},
         u"On disk"_s, english.formattedDataSize(2048), Signal::neutral, u"Includes the -wal and -shm sidecars."_s},
        {"the fallback route",
         [](DiagnosticsReport &r) { r.container.route = AppGroupContainer::Route::homeDirectoryFallback; },
         u"Resolved via"_s, u"homeDirectoryFallback"_s, Signal::problem, PlatformText::containerBuiltFromAccountHome()},
        {"the system's route", [](DiagnosticsReport &) {},
         u"Resolved via"_s, u"entitlement"_s, Signal::ok, PlatformText::containerFoundThroughDataDirectory()},
        {"a start-up with nothing to do", [](DiagnosticsReport &) {},
         u"Applied now"_s, u"none — already at version 8"_s, Signal::ok, std::nullopt},
        {"a start-up that migrated",
         [](DiagnosticsReport &r) { r.migration = {6, 8, {u"v7_tags"_s, u"v8_titles"_s}}; },
         u"Applied now"_s, u"v7_tags, v8_titles"_s, Signal::ok, u"Version 6 → 8."_s},
        {"no tables", [](DiagnosticsReport &r) { r.database.tables.clear(); },
         u"Found"_s, u"none"_s, Signal::problem, std::nullopt},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        DiagnosticsReport report = soundReport();
        c.spoil(report);
        const QList<DiagnosticRow> rows = DiagnosticSections::appGroup(report) + DiagnosticSections::database(report, english)
            + DiagnosticSections::migrations(report) + DiagnosticSections::missingTables(report);
        const DiagnosticRow *row = rowLabelled(rows, c.label);
        ASSERT_NE(row, nullptr);
        EXPECT_EQ(row->value, c.value);
        EXPECT_EQ(row->signal, c.signal);
        EXPECT_EQ(row->detail, c.detail);
        // One spoiled value leaves every other row of the report as it reads when all is well.
        EXPECT_EQ(rows.size(), DiagnosticSections::appGroup(soundReport()).size()
                                   + DiagnosticSections::database(soundReport(), english).size() + 1
                                   + (report.database.tables.isEmpty() ? 1 : 0));
    }
}

TEST(DiagnosticSections, TheCountShowsTheLastDeliveryAndTheObserverItsRegistration)
{
    const QDateTime at(QDate(2026, 3, 11), QTime(14, 5));
    const auto rows = DiagnosticSections::notification(soundReport(), false, 3, at, english);
    EXPECT_EQ(rowLabelled(rows, u"Received here"_s)->value, u"3 (last at %1)"_s.arg(english.toString(at.time(), QLocale::ShortFormat)));
    EXPECT_EQ(rowLabelled(rows, u"Observer"_s)->value, u"not registered"_s);
    EXPECT_EQ(rowLabelled(rows, u"Observer"_s)->signal, Signal::problem);
    EXPECT_EQ(rowLabelled(DiagnosticSections::notification(soundReport(), true, 0, std::nullopt, english),
                          u"Received here"_s)->value,
              u"0"_s);
}

class DiagnosticsTest : public StoreFixture {
protected:
    DatabaseDiagnostics snapshot() { return await(database().diagnostics()); }

    static qint64 sizeOf(const QString &path) { return QFileInfo::exists(path) ? QFileInfo(path).size() : 0; }
};

TEST_F(DiagnosticsTest, TheSnapshotReadsTheFileAndItsSettings)
{
    const DatabaseDiagnostics taken = snapshot();
    EXPECT_TRUE(taken.fileExists);
    EXPECT_EQ(taken.path, database().path());
    EXPECT_EQ(taken.journalMode, u"wal"_s);
    EXPECT_TRUE(taken.foreignKeysEnabled);
    EXPECT_EQ(taken.schemaVersion, 8);
    EXPECT_EQ(taken.expectedSchemaVersion, 8);
    EXPECT_TRUE(taken.tables.contains(u"time_sessions"_s));
    QStringList sorted = taken.tables;
    sorted.sort();
    EXPECT_EQ(taken.tables, sorted);
    for (const QString &table : taken.tables)
        EXPECT_FALSE(table.startsWith(u"sqlite_"_s)) << table.toStdString();
    const QString path = database().path();
    EXPECT_TRUE(QFileInfo::exists(path + u"-wal"_s));
    EXPECT_EQ(taken.onDiskBytes, sizeOf(path) + sizeOf(path + u"-wal"_s) + sizeOf(path + u"-shm"_s));

    // A file that lost its WAL, as after a clean close in another mode, counts alone; whatever
    // version the file claims, the expected one stays this build's.
    execute(u"PRAGMA journal_mode = DELETE; PRAGMA foreign_keys = OFF; PRAGMA user_version = 5"_s);
    ASSERT_FALSE(QFileInfo::exists(path + u"-wal"_s));
    const DatabaseDiagnostics spoiled = snapshot();
    EXPECT_EQ(spoiled.journalMode, u"delete"_s);
    EXPECT_FALSE(spoiled.foreignKeysEnabled);
    EXPECT_EQ(spoiled.schemaVersion, 5);
    EXPECT_EQ(spoiled.expectedSchemaVersion, 8);
    EXPECT_EQ(spoiled.onDiskBytes, QFileInfo(path).size() + sizeOf(path + u"-shm"_s));
}

TEST_F(DiagnosticsTest, ThePostsOfEveryProcessAreCountedWithoutANewSnapshot)
{
    // The application's own channel, which the probe posts on.
    const auto notifier = DatabaseChangeNotifier::forAppGroup(QStringLiteral(VELTO_APP_GROUP_IDENTIFIER));
    const AppGroupContainer container{u"io.quillmere.Velto"_s, u"/tmp"_s, AppGroupContainer::Route::entitlement};
    DiagnosticsModel model(VeltoServices{container, database().shared_from_this(), notifier, {8, 8, {}}});
    EXPECT_EQ(model.stateKind(), DiagnosticsModel::StateKind::Loading);
    EXPECT_FALSE(model.isObserving());

    await(model.refresh());
    ASSERT_EQ(model.stateKind(), DiagnosticsModel::StateKind::Ready);
    EXPECT_TRUE(model.isObserving());
    const auto &report = std::get<DiagnosticsReport>(model.state());
    EXPECT_EQ(report.container, container);
    EXPECT_EQ(report.notificationName, notifier.name);
    EXPECT_EQ(rowLabelled(DiagnosticSections::migrations(report), u"Applied now"_s)->value,
              u"none — already at version 8"_s);

    QSignalSpy stateChanges(&model, &DiagnosticsModel::stateChanged);
    model.postChangeNotification();
    // Other tests on the same bus may post too, so each step counts from where the last one left.
    ASSERT_TRUE(waitFor([&] { return model.notificationsReceived() >= 1; }));
    EXPECT_TRUE(model.lastNotificationAt().has_value());

    const int beforeProbe = model.notificationsReceived();
    QProcess probe;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(u"VELTO_APP_GROUP"_s);
    probe.setProcessEnvironment(environment);
    probe.start(QStringLiteral(VELTO_PROBE_PATH), {u"--post"_s});
    ASSERT_TRUE(probe.waitForFinished(10000));
    ASSERT_EQ(probe.exitCode(), 0) << probe.readAllStandardError().toStdString();
    EXPECT_TRUE(waitFor([&] { return model.notificationsReceived() > beforeProbe; }));
    EXPECT_EQ(stateChanges.count(), 0);

    // A refresh takes a new snapshot; the observation and its count go on.
    const int beforeRefresh = model.notificationsReceived();
    await(model.refresh());
    EXPECT_GE(model.notificationsReceived(), beforeRefresh);
    EXPECT_TRUE(model.isObserving());
}

} // namespace
