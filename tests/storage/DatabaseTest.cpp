#include "Await.h"
#include "Database.h"
#include "SQLiteStatement.h"

#include <QTemporaryDir>
#include <QThread>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

class DatabaseTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        m_database = Database::create(m_dir.filePath(u"Velto.sqlite"_s));
        await(m_database->open());
    }

    QTemporaryDir m_dir;
    std::shared_ptr<Database> m_database;
};

TEST_F(DatabaseTest, OpenBringsANewFileToTheCurrentVersion)
{
    auto fresh = Database::create(m_dir.filePath(u"other.sqlite"_s));
    const MigrationOutcome outcome = await(fresh->open());
    EXPECT_EQ(outcome.fromVersion, 0);
    EXPECT_EQ(outcome.toVersion, 8);
    EXPECT_EQ(outcome.applied.size(), 8);
}

TEST_F(DatabaseTest, JobsRunOffTheCallingThreadInTheOrderIssued)
{
    QThread *const caller = QThread::currentThread();
    auto insert = m_database->run([caller](SQLiteConnection &connection) {
        connection.execute(u"INSERT INTO projects (id, name, color) VALUES ('P1', 'First', '#2A78D6')"_s);
        return QThread::currentThread() != caller;
    });
    auto read = m_database->run([](SQLiteConnection &connection) {
        return connection.queryText(u"SELECT name FROM projects"_s);
    });
    // Both were issued before either was awaited; the second sees what the first wrote.
    EXPECT_EQ(await(std::move(read)), u"First"_s);
    EXPECT_TRUE(await(std::move(insert)));
}

TEST_F(DatabaseTest, FailureComesBackToTheAwaitingCoroutineOnItsThread)
{
    QThread *const caller = QThread::currentThread();
    QThread *resumedOn = nullptr;
    auto operation = [&]() -> Task<QString> {
        try {
            co_await m_database->run([](SQLiteConnection &connection) {
                connection.execute(u"INSERT INTO nowhere VALUES (1)"_s);
            });
        } catch (const SQLiteError &error) {
            resumedOn = QThread::currentThread();
            co_return error.text();
        }
        co_return QString();
    };
    EXPECT_EQ(await(operation()),
              u"SQLite error 1 (no such table: nowhere) while executing INSERT INTO nowhere VALUES (1)"_s);
    EXPECT_EQ(resumedOn, caller);
}

TEST_F(DatabaseTest, ADroppedTaskStillRunsToItsEnd)
{
    {
        auto dropped = m_database->run([](SQLiteConnection &connection) {
            connection.execute(u"INSERT INTO tags (id, name) VALUES ('T1', 'kept')"_s);
        });
    }
    auto read = m_database->run([](SQLiteConnection &connection) {
        return connection.queryInt(u"SELECT count(*) FROM tags"_s);
    });
    EXPECT_EQ(await(std::move(read)), 1);
}

TEST(Database, OpeningAFileThatCannotBeMadeFails)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(u"no/such/folder/Velto.sqlite"_s);
    try {
        Database::create(path);
        FAIL() << "opening should have failed";
    } catch (const SQLiteError &error) {
        EXPECT_EQ(error.context(), u"opening "_s + path);
    }
}

} // namespace
