#include "MigrationError.h"
#include "SQLiteConnection.h"
#include "Schema.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <thread>

using namespace Qt::StringLiterals;

namespace {

class SchemaTest : public ::testing::Test {
protected:
    std::shared_ptr<SQLiteConnection> openConfigured()
    {
        auto connection = SQLiteConnection::open(m_dir.filePath(u"Velto.sqlite"_s), SQLiteConnection::Access::readWrite);
        connection->configure();
        return connection;
    }

    // A file as version 5 wrote it, loaded the way it lies on disk: without foreign-key checks.
    void writeVersion5File(const QString &damage = {})
    {
        QFile file(QStringLiteral(VELTO_TEST_FIXTURES "/velto-v5.sql"));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        SQLiteConnection::open(m_dir.filePath(u"Velto.sqlite"_s), SQLiteConnection::Access::readWrite)
            ->execute(QString::fromUtf8(file.readAll()) + damage);
    }

    static qint64 count(SQLiteConnection &connection, const QString &table)
    {
        return connection.queryInt(u"SELECT count(*) FROM "_s + table).value_or(-1);
    }

    static QList<QString> scratchTables(SQLiteConnection &connection)
    {
        return connection.queryTextColumn(u"SELECT name FROM sqlite_master WHERE name GLOB '_v[0-9]_*'"_s);
    }

    QTemporaryDir m_dir;
};

// Rebuilding a table drops its indexes; every one must be back at the end of the chain.
TEST_F(SchemaTest, NewFileRunsEveryMigrationAndKeepsEveryIndex)
{
    auto connection = openConfigured();
    const MigrationOutcome outcome = Schema::migrate(*connection);
    EXPECT_EQ(std::tuple(outcome.fromVersion, outcome.toVersion, outcome.applied.size()), std::tuple(0, 8, 8));
    EXPECT_EQ(connection->queryTextColumn(u"SELECT name FROM sqlite_master WHERE name LIKE 'idx%' ORDER BY name"_s),
              (QList<QString>{u"idx_card_tags_tag"_s, u"idx_cards_deadline"_s, u"idx_cards_project"_s,
                              u"idx_cards_status_changed"_s, u"idx_cards_status_sort"_s, u"idx_checklist_items_card"_s,
                              u"idx_time_sessions_card"_s, u"idx_time_sessions_started"_s}));
}

TEST_F(SchemaTest, CurrentFileOpensNoTransaction)
{
    Schema::migrate(*openConfigured());
    // Another process holds the write lock: a run that tried to take it would wait and fail.
    auto other = openConfigured();
    other->execute(u"BEGIN IMMEDIATE"_s);
    EXPECT_EQ(Schema::migrate(*openConfigured()), (MigrationOutcome{8, 8, {}}));
    other->execute(u"ROLLBACK"_s);
}

TEST_F(SchemaTest, Version5FileKeepsEveryRow)
{
    writeVersion5File();
    auto connection = openConfigured();
    EXPECT_EQ(Schema::migrate(*connection),
              (MigrationOutcome{5, 8, {u"widen_priority"_s, u"repair_child_references"_s, u"add_focus_target_and_mood"_s}}));
    const std::pair<QString, qint64> expected[] = {{u"projects"_s, 2}, {u"tags"_s, 2}, {u"cards"_s, 2},
                                                   {u"card_tags"_s, 2}, {u"checklist_items"_s, 1},
                                                   {u"time_sessions"_s, 2}};
    for (const auto &[table, rows] : expected)
        EXPECT_EQ(count(*connection, table), rows) << table.toStdString();
    EXPECT_EQ(connection->queryTextColumn(u"SELECT priority || ' ' || goal FROM cards WHERE goal IS NOT NULL"_s),
              QList{u"now Finish chapter two"_s});
    EXPECT_TRUE(scratchTables(*connection).isEmpty());
    EXPECT_EQ(connection->queryTextColumn(u"PRAGMA foreign_key_check"_s), QList<QString>{});
}

// The rebuilt tables keep their checks: rows a faulty writer could leave are refused.
TEST_F(SchemaTest, ChecksOfTheFinalSchemaHold)
{
    auto connection = openConfigured();
    Schema::migrate(*connection);
    connection->execute(u"INSERT INTO cards (id, bookmark, display_path, display_name, status, priority, sort_order,"
                        u" created_at, status_changed_at) VALUES ('C1', x'', '/a', 'a', 'not_started', 'today', 1, 0, 0);"
                        u"INSERT INTO time_sessions (id, card_id, started_at, source) VALUES ('S0', 'C1', 100, 'manual')"_s);
    const QString cases[] = {
        u"UPDATE cards SET priority = 'urgent'"_s,
        u"UPDATE cards SET status = 'done'"_s,
        u"UPDATE time_sessions SET ended_at = 99"_s,
        u"UPDATE time_sessions SET target_seconds = 0"_s,
    };
    for (const QString &sql : cases) {
        try {
            connection->execute(sql);
            ADD_FAILURE() << "accepted " << sql.toStdString();
        } catch (const SQLiteError &error) {
            EXPECT_EQ(error.code(), 19) << sql.toStdString();
        }
    }
}

// Tags made before they had colours are dealt the palette by rowid.
TEST_F(SchemaTest, MigrationFourDealsTagColoursByRowid)
{
    auto connection = openConfigured();
    Schema::migrate(*connection, Schema::migrations().mid(0, 3));
    for (int rowid = 1; rowid <= 9; ++rowid)
        connection->execute(u"INSERT INTO tags (rowid, id, name) VALUES (%1, 'T%1', 'tag %1')"_s.arg(rowid));
    Schema::migrate(*connection);
    EXPECT_EQ(connection->queryTextColumn(u"SELECT color FROM tags ORDER BY rowid"_s),
              (QList<QString>{u"#EB6834"_s, u"#1BAF7A"_s, u"#EDA100"_s, u"#E87BA4"_s, u"#008300"_s, u"#4A3AA7"_s,
                              u"#E34948"_s, u"#2A78D6"_s, u"#EB6834"_s}));
}

TEST_F(SchemaTest, FailedMigrationLeavesTheLastGoodVersion)
{
    // A damaged file: a session whose card is gone, written while foreign keys were off.
    writeVersion5File(u"INSERT INTO time_sessions (id, card_id, started_at, source) VALUES ('orphan', 'nobody', 1, 'manual');"_s);
    auto connection = openConfigured();
    try {
        Schema::migrate(*connection);
        FAIL() << "the migration should have failed";
    } catch (const SQLiteError &error) {
        EXPECT_EQ(error.code(), 19);
        EXPECT_TRUE(error.context().startsWith(u"executing CREATE TABLE _v6_card_tags"_s)) << error.what();
    }
    EXPECT_EQ(connection->queryInt(u"PRAGMA user_version"_s), 5);
    EXPECT_TRUE(scratchTables(*connection).isEmpty());
    EXPECT_EQ(count(*connection, u"cards"_s), 2);
    EXPECT_EQ(count(*connection, u"time_sessions"_s), 3);
}

TEST_F(SchemaTest, NewerDatabaseIsRefusedBeforeAnythingIsWritten)
{
    auto connection = openConfigured();
    connection->execute(u"PRAGMA user_version = 9"_s);
    try {
        Schema::migrate(*connection);
        FAIL() << "a newer database must be refused";
    } catch (const MigrationError &error) {
        EXPECT_EQ(error.text(), u"This database is at schema version 9 but this build only understands version 8. "
                                u"It was written by a newer version of Velto."_s);
    }
    EXPECT_EQ(connection->queryInt(u"SELECT count(*) FROM sqlite_master"_s), 0);
}

TEST_F(SchemaTest, WorkDoneByAnotherProcessMeanwhileIsNotRepeated)
{
    writeVersion5File();
    auto other = openConfigured();
    // The other process takes the write lock first and brings the file to version 7 while this
    // one, having read version 5, waits for the lock.
    other->execute(u"BEGIN IMMEDIATE"_s);
    std::thread otherProcess([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        other->execute(Schema::migrations().at(5).sql + Schema::migrations().at(6).sql
                       + u"PRAGMA user_version = 7; COMMIT"_s);
    });
    const MigrationOutcome outcome = Schema::migrate(*openConfigured());
    otherProcess.join();
    EXPECT_EQ(outcome, (MigrationOutcome{5, 8, {u"add_focus_target_and_mood"_s}}));
}

} // namespace
