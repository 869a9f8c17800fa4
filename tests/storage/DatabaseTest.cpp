#include "Await.h"
#include "Database.h"

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

// A dropped task runs on to its end, and jobs run in the order issued, off the calling thread.
TEST_F(DatabaseTest, JobsRunOffTheCallingThreadInTheOrderIssuedEvenWhenDropped)
{
    (void)m_database->run([](SQLiteConnection &connection) {
        connection.execute(u"INSERT INTO projects (id, name, color) VALUES ('P1', 'First', '#2A78D6')"_s);
    });
    QThread *const caller = QThread::currentThread();
    auto read = m_database->run([caller](SQLiteConnection &connection) {
        return std::pair(connection.queryText(u"SELECT name FROM projects"_s), QThread::currentThread() != caller);
    });
    EXPECT_EQ(await(std::move(read)), std::pair(std::optional(u"First"_s), true));
}

TEST_F(DatabaseTest, FailureComesBackToTheAwaitingCoroutineOnItsThread)
{
    QThread *resumedOn = nullptr;
    auto operation = [&]() -> Task<QString> {
        try {
            co_await m_database->run([](SQLiteConnection &connection) { connection.execute(u"SELEKT"_s); });
        } catch (const SQLiteError &error) {
            resumedOn = QThread::currentThread();
            co_return error.text();
        }
        co_return QString();
    };
    EXPECT_EQ(await(operation()), u"SQLite error 1 (near \"SELEKT\": syntax error) while executing SELEKT"_s);
    EXPECT_EQ(resumedOn, QThread::currentThread());
}

// The error names the whole path, however long, so that the user can find the folder.
TEST(Database, AFileThatCannotBeMadeFailsNamingItsPath)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QString(130, u'd') + u"/missing/Velto.sqlite"_s);
    try {
        Database::create(path);
        FAIL() << "opening should have failed";
    } catch (const SQLiteError &error) {
        EXPECT_EQ(error.code(), 14); // SQLITE_CANTOPEN
        EXPECT_EQ(error.context(), u"opening "_s + path);
    }
}

} // namespace
