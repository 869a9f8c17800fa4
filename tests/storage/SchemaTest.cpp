#include "MigrationError.h"
#include "SQLiteConnection.h"
#include "SQLiteStatement.h"
#include "Schema.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <thread>

using namespace Qt::StringLiterals;

namespace {

const QList<QString> allNames{
    u"initial"_s, u"add_last_seen_file_count"_s, u"add_finder_tag"_s, u"add_tag_color"_s,
    u"add_title_and_goal"_s, u"widen_priority"_s, u"repair_child_references"_s, u"add_focus_target_and_mood"_s,
};

QString fixture(const QString &name)
{
    QFile file(QStringLiteral(VELTO_TEST_FIXTURES) + u'/' + name);
    if (!file.open(QIODevice::ReadOnly))
        ADD_FAILURE() << "missing fixture " << name.toStdString();
    return QString::fromUtf8(file.readAll());
}

class SchemaTest : public ::testing::Test {
protected:
    QString path() const { return m_dir.filePath(u"Velto.sqlite"_s); }

    std::shared_ptr<SQLiteConnection> openConfigured()
    {
        auto connection = SQLiteConnection::open(path(), SQLiteConnection::Access::readWrite);
        connection->configure();
        return connection;
    }

    // A file as version 5 wrote it, loaded the way it lies on disk: without foreign-key checks.
    void writeVersion5Fixture()
    {
        SQLiteConnection::open(path(), SQLiteConnection::Access::readWrite)->execute(fixture(u"velto-v5.sql"_s));
    }

    qint64 count(SQLiteConnection &connection, const QString &table)
    {
        return connection.queryInt(u"SELECT count(*) FROM "_s + table).value_or(-1);
    }

    QList<QString> scratchTables(SQLiteConnection &connection)
    {
        return connection.queryTextColumn(
            u"SELECT name FROM sqlite_master WHERE name LIKE '\\_v6\\_%' ESCAPE '\\' OR name LIKE '\\_v7\\_%' ESCAPE '\\'"_s);
    }

    QTemporaryDir m_dir;
};

TEST_F(SchemaTest, NewFileRunsAllEightMigrations)
{
    auto connection = openConfigured();
    const MigrationOutcome outcome = Schema::migrate(*connection);
    EXPECT_EQ(outcome, (MigrationOutcome{0, 8, allNames}));
    EXPECT_EQ(connection->queryTextColumn(u"SELECT name FROM sqlite_master WHERE type = 'table' ORDER BY name"_s),
              (QList<QString>{u"card_tags"_s, u"cards"_s, u"checklist_items"_s, u"projects"_s, u"tags"_s,
                              u"time_sessions"_s}));
    EXPECT_EQ(connection->queryTextColumn(u"SELECT name FROM sqlite_master WHERE type = 'index' AND name LIKE 'idx%' ORDER BY name"_s),
              (QList<QString>{u"idx_card_tags_tag"_s, u"idx_cards_deadline"_s, u"idx_cards_project"_s,
                              u"idx_cards_status_changed"_s, u"idx_cards_status_sort"_s, u"idx_checklist_items_card"_s,
                              u"idx_time_sessions_card"_s, u"idx_time_sessions_started"_s}));
    EXPECT_EQ(connection->queryTextColumn(u"SELECT name FROM pragma_table_info('cards') ORDER BY cid"_s).size(), 16);
    EXPECT_EQ(connection->queryTextColumn(u"SELECT name FROM pragma_table_info('time_sessions') ORDER BY cid"_s).size(), 9);
}

TEST_F(SchemaTest, CurrentFileOpensNoTransaction)
{
    Schema::migrate(*openConfigured());

    // Another process holds the write lock: a run that tried to take it would wait and fail.
    auto other = openConfigured();
    other->execute(u"BEGIN IMMEDIATE"_s);
    auto connection = openConfigured();
    EXPECT_EQ(Schema::migrate(*connection), (MigrationOutcome{8, 8, {}}));
    other->execute(u"ROLLBACK"_s);
}

TEST_F(SchemaTest, Version5FileKeepsEveryRow)
{
    writeVersion5Fixture();
    auto connection = openConfigured();
    const MigrationOutcome outcome = Schema::migrate(*connection);
    EXPECT_EQ(outcome, (MigrationOutcome{5, 8, allNames.mid(5)}));

    const struct {
        const char *table;
        qint64 rows;
    } expected[] = {{"projects", 2}, {"tags", 2}, {"cards", 2}, {"card_tags", 2}, {"checklist_items", 1}, {"time_sessions", 2}};
    for (const auto &e : expected) {
        SCOPED_TRACE(e.table);
        EXPECT_EQ(count(*connection, QString::fromLatin1(e.table)), e.rows);
    }
    EXPECT_EQ(connection->queryText(u"SELECT priority FROM cards WHERE display_name = 'Thesis'"_s), u"now"_s);
    EXPECT_EQ(connection->queryText(u"SELECT goal FROM cards WHERE display_name = 'Thesis'"_s), u"Finish chapter two"_s);
    EXPECT_EQ(connection->queryInt(u"SELECT count(*) FROM time_sessions WHERE target_seconds IS NULL AND mood IS NULL"_s), 2);
    EXPECT_TRUE(scratchTables(*connection).isEmpty());
    EXPECT_EQ(connection->queryTextColumn(u"PRAGMA foreign_key_check"_s), QList<QString>{});
}

TEST_F(SchemaTest, ChecksOfTheFinalSchemaHold)
{
    auto connection = openConfigured();
    Schema::migrate(*connection);
    connection->execute(uR"(
        INSERT INTO cards (id, bookmark, display_path, display_name, status, priority, sort_order, created_at, status_changed_at)
        VALUES ('C1', x'', '/a', 'a', 'not_started', 'today', 1.0, 0, 0);
        INSERT INTO time_sessions (id, card_id, started_at, source) VALUES ('S0', 'C1', 100, 'manual');
    )"_s);

    const struct {
        const char *name;
        QString sql;
        bool accepted;
    } cases[] = {
        {"priority this_week", u"UPDATE cards SET priority = 'this_week'"_s, true},
        {"priority urgent", u"UPDATE cards SET priority = 'urgent'"_s, false},
        {"status waiting", u"UPDATE cards SET status = 'waiting'"_s, true},
        {"status done", u"UPDATE cards SET status = 'done'"_s, false},
        {"session ending before it began", u"INSERT INTO time_sessions (id, card_id, started_at, ended_at, source) VALUES ('S1', 'C1', 100, 99, 'manual')"_s, false},
        {"session ending as it began", u"INSERT INTO time_sessions (id, card_id, started_at, ended_at, source) VALUES ('S2', 'C1', 100, 100, 'auto')"_s, true},
        {"target of zero seconds", u"UPDATE time_sessions SET target_seconds = 0"_s, false},
        {"target of one second", u"UPDATE time_sessions SET target_seconds = 1"_s, true},
        {"mood great", u"UPDATE time_sessions SET mood = 'great'"_s, false},
        {"mood scattered", u"UPDATE time_sessions SET mood = 'scattered'"_s, true},
        {"session of no card", u"INSERT INTO time_sessions (id, card_id, started_at, source) VALUES ('S3', 'nobody', 1, 'manual')"_s, false},
        {"source typed", u"INSERT INTO time_sessions (id, card_id, started_at, source) VALUES ('S4', 'C1', 1, 'typed')"_s, false},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        bool accepted = true;
        try {
            connection->execute(c.sql);
        } catch (const SQLiteError &error) {
            accepted = false;
            EXPECT_EQ(error.code(), 19) << error.what();
        }
        EXPECT_EQ(accepted, c.accepted);
    }
}

TEST_F(SchemaTest, PriorityTodayNeedsMigrationSix)
{
    auto connection = openConfigured();
    Schema::migrate(*connection, Schema::migrations().mid(0, 5));
    const QString insert = u"INSERT INTO cards (id, bookmark, display_path, display_name, status, priority, sort_order, created_at, status_changed_at) VALUES ('C1', x'', '/a', 'a', 'not_started', 'today', 1.0, 0, 0)"_s;
    EXPECT_THROW(connection->execute(insert), SQLiteError);
    Schema::migrate(*connection);
    EXPECT_NO_THROW(connection->execute(insert));
}

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

TEST_F(SchemaTest, DeletesCascadeAfterTheChain)
{
    writeVersion5Fixture();
    auto connection = openConfigured();
    Schema::migrate(*connection);

    connection->execute(u"DELETE FROM cards WHERE display_name = 'Thesis'"_s);
    EXPECT_EQ(count(*connection, u"card_tags"_s), 1);
    EXPECT_EQ(count(*connection, u"checklist_items"_s), 0);
    EXPECT_EQ(count(*connection, u"time_sessions"_s), 0);

    connection->execute(u"DELETE FROM projects WHERE name = 'Garden'"_s);
    EXPECT_EQ(connection->queryInt(u"SELECT count(*) FROM cards WHERE project_id IS NULL"_s), 1);
    EXPECT_EQ(count(*connection, u"cards"_s), 1);

    connection->execute(u"DELETE FROM tags"_s);
    EXPECT_EQ(count(*connection, u"card_tags"_s), 0);
}

TEST_F(SchemaTest, FailedMigrationLeavesTheLastGoodVersion)
{
    writeVersion5Fixture();
    {
        // A damaged file: a session whose card is gone, written while foreign keys were off.
        auto raw = SQLiteConnection::open(path(), SQLiteConnection::Access::readWrite);
        raw->execute(u"INSERT INTO time_sessions (id, card_id, started_at, source) VALUES ('orphan', 'nobody', 1, 'manual')"_s);
    }
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

TEST(SchemaOrder, ListsMustStrictlyIncrease)
{
    const auto entry = [](qint64 version) { return Migration{version, u"m"_s, u"SELECT 1"_s}; };
    const struct {
        const char *name;
        QList<Migration> list;
        std::optional<QString> failure;
    } cases[] = {
        {"shipped list", Schema::migrations(), std::nullopt},
        {"empty list", {}, std::nullopt},
        {"gaps are fine", {entry(1), entry(5)}, std::nullopt},
        {"repeated version", {entry(1), entry(2), entry(2)}, u"Schema.migrations is not strictly increasing: 2 then 2"_s},
        {"going back", {entry(3), entry(1)}, u"Schema.migrations is not strictly increasing: 3 then 1"_s},
        {"first entry zero", {entry(0)}, u"Schema.migrations is not strictly increasing: 0 then 0"_s},
        {"first entry negative", {entry(-2)}, u"Schema.migrations is not strictly increasing: 0 then -2"_s},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        std::optional<QString> failure;
        try {
            Schema::validateOrder(c.list);
        } catch (const MigrationError &error) {
            failure = error.text();
        }
        EXPECT_EQ(failure, c.failure);
    }
}

TEST_F(SchemaTest, FaultyListStopsBeforeTheFileIsRead)
{
    auto connection = openConfigured();
    const QList<Migration> faulty{{2, u"b"_s, u"CREATE TABLE b (x)"_s}, {1, u"a"_s, u"CREATE TABLE a (x)"_s}};
    EXPECT_THROW(Schema::migrate(*connection, faulty), MigrationError);
    EXPECT_EQ(connection->queryInt(u"PRAGMA user_version"_s), 0);
}

TEST_F(SchemaTest, WorkDoneByAnotherProcessMeanwhileIsNotRepeated)
{
    writeVersion5Fixture();
    auto other = openConfigured();
    // The other process takes the write lock first and brings the file to version 7 while this
    // one, having read version 5, waits for the lock.
    other->execute(u"BEGIN IMMEDIATE"_s);
    std::thread otherProcess([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        other->execute(Schema::migrations().at(5).sql);
        other->execute(Schema::migrations().at(6).sql);
        other->execute(u"PRAGMA user_version = 7"_s);
        other->execute(u"COMMIT"_s);
    });
    auto connection = openConfigured();
    const MigrationOutcome outcome = Schema::migrate(*connection);
    otherProcess.join();

    EXPECT_EQ(outcome, (MigrationOutcome{5, 8, {u"add_focus_target_and_mood"_s}}));
    EXPECT_EQ(count(*connection, u"time_sessions"_s), 2);
}

} // namespace
