#include "SQLiteConnection.h"
#include "SQLiteStatement.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <functional>

using namespace Qt::StringLiterals;

namespace {

class SQLiteConnectionTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        m_connection = SQLiteConnection::open(m_dir.filePath(u"test.sqlite"_s), SQLiteConnection::Access::readWrite);
        m_connection->configure();
        m_connection->execute(u"CREATE TABLE items (id INTEGER PRIMARY KEY, name TEXT,\n"
                              u"    size INTEGER CHECK (size >= 0), payload BLOB NOT NULL DEFAULT x'')"_s);
    }

    qint64 count() { return m_connection->queryInt(u"SELECT count(*) FROM items"_s).value_or(-1); }

    QTemporaryDir m_dir;
    std::shared_ptr<SQLiteConnection> m_connection;
};

SQLiteError failureOf(const std::function<void()> &body)
{
    try {
        body();
    } catch (const SQLiteError &error) {
        return error;
    }
    ADD_FAILURE() << "no SQLiteError was thrown";
    return SQLiteError(-1, {}, {});
}

TEST(Summarize, JoinsLinesAndShortensToWhatAReaderSees)
{
    // A family emoji of joined code points is one visible character.
    const QString family = u"\U0001F468\u200D\U0001F469\u200D\U0001F467"_s;
    const struct {
        const char *name;
        QString sql;
        QString expected;
    } cases[] = {
        {"indented lines join with one blank", u"\n\nSELECT id,\n\t  name\r\n   FROM items  \n"_s,
         u"SELECT id, name FROM items"_s},
        {"unicode line separators split", u"A\u2028B\u2029C\u0085D\vE\fF"_s, u"A B C D E F"_s},
        {"120 visible characters of many code units stay", family.repeated(120), family.repeated(120)},
        {"121 visible characters are cut between them", family.repeated(121), family.repeated(117) + u"..."_s},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(summarize(c.sql), c.expected);
    }
}

TEST_F(SQLiteConnectionTest, FailuresNameWhatWasBeingDone)
{
    const QString insert = u"INSERT INTO items (name, size) VALUES (?, ?)"_s;
    const struct {
        const char *name;
        std::function<void()> body;
        int code;
        QString message;
        QString context;
    } cases[] = {
        {"one value too many", [&] { m_connection->prepare(insert)->bind({u"a"_s, 1, 2}); }, 21,
         u"2 parameter(s) to bind, 3 value(s) given"_s, u"binding "_s + insert},
        {"unknown table in prepare", [&] { (void)m_connection->prepare(u"SELECT * FROM nowhere"_s); }, 1,
         u"no such table: nowhere"_s, u"preparing SELECT * FROM nowhere"_s},
        {"text without a statement", [&] { (void)m_connection->prepare(u"-- only a comment"_s); }, 0,
         u"not an error"_s, u"preparing -- only a comment"_s},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        const SQLiteError error = failureOf(c.body);
        EXPECT_EQ(error.code(), c.code);
        EXPECT_EQ(error.message(), c.message);
        EXPECT_EQ(error.context(), c.context);
    }
    EXPECT_EQ(count(), 0);
    // A placeholder inside the message is not substituted a second time.
    EXPECT_STREQ(SQLiteError(1, u"near %3"_s, u"x"_s).what(), "SQLite error 1 (near %3) while x");
}

TEST_F(SQLiteConnectionTest, AFailedRollbackDoesNotHideTheCause)
{
    const SQLiteError error = failureOf([&] {
        m_connection->transaction([&] {
            m_connection->execute(u"ROLLBACK"_s); // the transaction's own ROLLBACK will now fail
            m_connection->execute(u"SELEKT"_s);
        });
    });
    EXPECT_EQ(error.context(), u"executing SELEKT"_s);
    EXPECT_NO_THROW(m_connection->transaction([] {}));
}

TEST_F(SQLiteConnectionTest, ABeginThatFailsRollsNothingBack)
{
    m_connection->execute(u"BEGIN"_s);
    const SQLiteError error = failureOf([&] { m_connection->transaction([] {}); });
    EXPECT_EQ(error.context(), u"executing BEGIN IMMEDIATE"_s);
    // The caller's own transaction is still open.
    EXPECT_NO_THROW(m_connection->execute(u"COMMIT"_s));
}

TEST_F(SQLiteConnectionTest, StatementKeepsItsConnectionAlive)
{
    auto statement = m_connection->prepare(u"SELECT 'still here'"_s);
    m_connection.reset();
    ASSERT_TRUE(statement->step());
    EXPECT_EQ(statement->text(0), u"still here"_s);
}

// A writer asks for WAL and fails without it; a reader of a read-only file leaves the journal as
// it is. Both enforce foreign keys.
TEST(SQLiteConnection, ConfigureSetsTheJournalOnlyForAWriter)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(u"rollback.sqlite"_s);
    auto writer = SQLiteConnection::open(path, SQLiteConnection::Access::readWrite);
    writer->configure();
    EXPECT_EQ(writer->queryText(u"PRAGMA journal_mode"_s), u"wal"_s);
    EXPECT_EQ(writer->queryInt(u"PRAGMA foreign_keys"_s), 1);
    writer->execute(u"PRAGMA journal_mode = DELETE; CREATE TABLE t (x)"_s);
    writer.reset();

    QFile::setPermissions(path, QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther);
    auto reader = SQLiteConnection::open(path, SQLiteConnection::Access::readOnly);
    EXPECT_NO_THROW(reader->configure());
    EXPECT_EQ(reader->queryText(u"PRAGMA journal_mode"_s), u"delete"_s);
    EXPECT_EQ(reader->queryInt(u"PRAGMA foreign_keys"_s), 1);
    EXPECT_EQ(failureOf([&] { reader->execute(u"INSERT INTO t VALUES (1)"_s); }).code(), 8); // SQLITE_READONLY

    auto memory = SQLiteConnection::open(u":memory:"_s, SQLiteConnection::Access::readWrite);
    const SQLiteError error = failureOf([&] { memory->configure(); });
    EXPECT_EQ(error.message(), u"journal_mode is 'memory' after requesting WAL"_s);
    EXPECT_EQ(error.context(), u"configuring :memory:"_s);
}

} // namespace
