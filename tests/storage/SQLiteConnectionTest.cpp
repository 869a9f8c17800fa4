#include "SQLiteConnection.h"
#include "SQLiteStatement.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

class SQLiteConnectionTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(m_dir.isValid());
        m_connection = SQLiteConnection::open(path(), SQLiteConnection::Access::readWrite);
        m_connection->configure();
        m_connection->execute(uR"(
            CREATE TABLE items (
                id INTEGER PRIMARY KEY,
                name TEXT,
                size INTEGER CHECK (size >= 0),
                payload BLOB NOT NULL DEFAULT x''
            );
        )"_s);
    }

    QString path() const { return m_dir.filePath(u"test.sqlite"_s); }

    qint64 count() { return m_connection->queryInt(u"SELECT count(*) FROM items"_s).value_or(-1); }

    QTemporaryDir m_dir;
    std::shared_ptr<SQLiteConnection> m_connection;
};

template <typename Body>
SQLiteError failureOf(Body body)
{
    try {
        body();
    } catch (const SQLiteError &error) {
        return error;
    }
    ADD_FAILURE() << "no SQLiteError was thrown";
    return SQLiteError(-1, {}, {});
}

TEST(SQLiteError, PrintsCodeMessageAndContext)
{
    EXPECT_STREQ(SQLiteError(19, u"CHECK constraint failed: size >= 0"_s, u"stepping INSERT"_s).what(),
                 "SQLite error 19 (CHECK constraint failed: size >= 0) while stepping INSERT");
    // Placeholders inside the message are not substituted a second time.
    EXPECT_EQ(SQLiteError(1, u"near %3"_s, u"x"_s).text(), u"SQLite error 1 (near %3) while x"_s);
}

TEST(Summarize, ShortensAndJoinsLines)
{
    const QString exactly120 = QString(120, u'a');
    const QString ofLength121 = QString(121, u'b');
    // Four family emoji made of joined code points: one visible character each.
    const QString family = u"\U0001F468\u200D\U0001F469\u200D\U0001F467"_s;
    const QString families121 = QString(family).repeated(121);

    const struct {
        const char *name;
        QString sql;
        QString expected;
    } cases[] = {
        {"single line stays", u"SELECT 1"_s, u"SELECT 1"_s},
        {"indented lines join with one blank", u"SELECT id,\n\t  name\n    FROM items\r\n   WHERE id = ?\n"_s,
         u"SELECT id, name FROM items WHERE id = ?"_s},
        {"unicode line separators split", u"A\u2028B\u2029C\u0085D\vE\fF"_s, u"A B C D E F"_s},
        {"blank lines vanish", u"\n\n  \t \nSELECT 2\n\n"_s, u"SELECT 2"_s},
        {"inner blanks kept", u"SELECT  1"_s, u"SELECT  1"_s},
        {"120 characters stay whole", exactly120, exactly120},
        {"121 characters become 117 and dots", ofLength121, QString(117, u'b') + u"..."_s},
        {"characters are what a reader sees", families121, QString(family).repeated(117) + u"..."_s},
        {"120 visible characters of many code units stay", QString(family).repeated(120),
         QString(family).repeated(120)},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EQ(summarize(c.sql), c.expected);
    }
}

TEST_F(SQLiteConnectionTest, FailuresNameWhatWasBeingDone)
{
    const QString longInsert = u"INSERT INTO items (name, size) VALUES (?, ?) -- "_s + QString(100, u'x');

    const struct {
        const char *name;
        std::function<void()> body;
        int code;
        QString message;
        QString context;
    } cases[] = {
        {"one value too many", [&] { m_connection->prepare(u"INSERT INTO items (name, size) VALUES (?, ?)"_s)->bind({u"a"_s, 1, 2}); },
         21, u"2 parameter(s) to bind, 3 value(s) given"_s, u"binding INSERT INTO items (name, size) VALUES (?, ?)"_s},
        {"a missing value", [&] { m_connection->prepare(u"SELECT ?"_s)->bind({}); },
         21, u"1 parameter(s) to bind, 0 value(s) given"_s, u"binding SELECT ?"_s},
        {"violated check", [&] {
             auto s = m_connection->prepare(u"INSERT INTO items (name, size) VALUES (?, ?)"_s);
             s->bind({u"a"_s, -1});
             s->step();
         },
         19, u"CHECK constraint failed: size >= 0"_s, u"stepping INSERT INTO items (name, size) VALUES (?, ?)"_s},
        {"syntax error in execute", [&] { m_connection->execute(u"SELEKT 1"_s); },
         1, u"near \"SELEKT\": syntax error"_s, u"executing SELEKT 1"_s},
        {"unknown table in prepare", [&] { (void)m_connection->prepare(u"SELECT * FROM nowhere"_s); },
         1, u"no such table: nowhere"_s, u"preparing SELECT * FROM nowhere"_s},
        {"text without a statement", [&] { (void)m_connection->prepare(u"-- only a comment"_s); },
         0, u"not an error"_s, u"preparing -- only a comment"_s},
        {"long SQL is summarised", [&] { m_connection->prepare(longInsert)->bind({}); },
         21, u"2 parameter(s) to bind, 0 value(s) given"_s, u"binding "_s + longInsert.left(117) + u"..."_s},
        {"queryInt reports its failing stage", [&] { m_connection->queryInt(u"SELECT ? + ?"_s, {1}); },
         21, u"2 parameter(s) to bind, 1 value(s) given"_s, u"binding SELECT ? + ?"_s},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        const SQLiteError error = failureOf(c.body);
        EXPECT_EQ(error.code(), c.code);
        EXPECT_EQ(error.message(), c.message);
        EXPECT_EQ(error.context(), c.context);
    }
    EXPECT_EQ(count(), 0);
}

TEST_F(SQLiteConnectionTest, BlobsKeepEmptyApartFromNull)
{
    auto insert = m_connection->prepare(u"INSERT INTO items (id, name, payload) VALUES (?, ?, ?)"_s);
    insert->bind({1, nullptr, QByteArray()});
    insert->step();
    insert->reset();
    insert->bind({2, u"two"_s, QByteArray("\0\1", 2)});
    insert->step();

    auto read = m_connection->prepare(u"SELECT payload, name, NULL FROM items ORDER BY id"_s);
    read->bind({});
    ASSERT_TRUE(read->step());
    ASSERT_TRUE(read->blob(0).has_value());
    EXPECT_TRUE(read->blob(0)->isEmpty());
    EXPECT_FALSE(read->optionalText(1).has_value());
    EXPECT_EQ(read->text(1), QString());
    EXPECT_FALSE(read->blob(2).has_value());
    ASSERT_TRUE(read->step());
    EXPECT_EQ(*read->blob(0), QByteArray("\0\1", 2));
    EXPECT_EQ(read->text(1), u"two"_s);
    EXPECT_FALSE(read->step());
}

TEST_F(SQLiteConnectionTest, QueriesGiveAbsentForNoRowAndNull)
{
    m_connection->execute(u"INSERT INTO items (id, name, size) VALUES (1, 'a', NULL), (2, NULL, 5), (3, 'c', 7)"_s);

    EXPECT_EQ(m_connection->queryInt(u"SELECT size FROM items WHERE id = ?"_s, {99}), std::nullopt);
    EXPECT_EQ(m_connection->queryInt(u"SELECT size FROM items WHERE id = ?"_s, {1}), std::nullopt);
    EXPECT_EQ(m_connection->queryInt(u"SELECT size FROM items WHERE id = ?"_s, {2}), 5);
    EXPECT_EQ(m_connection->queryText(u"SELECT name FROM items WHERE id = 2"_s), std::nullopt);
    EXPECT_EQ(m_connection->queryTextColumn(u"SELECT name FROM items ORDER BY id"_s), (QList<QString>{u"a"_s, u"c"_s}));
}

TEST_F(SQLiteConnectionTest, ChangesTellAWriteThatFoundItsRow)
{
    m_connection->execute(u"INSERT INTO items (id, name) VALUES (1, 'a')"_s);
    auto update = m_connection->prepare(u"UPDATE items SET name = ? WHERE id = ?"_s);
    update->bind({u"b"_s, 1});
    update->step();
    EXPECT_EQ(m_connection->changes(), 1);
    update->reset();
    update->bind({u"b"_s, 2});
    update->step();
    EXPECT_EQ(m_connection->changes(), 0);
}

TEST_F(SQLiteConnectionTest, TransactionCommitsOrRollsBackWhole)
{
    m_connection->transaction([&] {
        m_connection->execute(u"INSERT INTO items (name) VALUES ('kept')"_s);
        m_connection->execute(u"INSERT INTO items (name) VALUES ('kept too')"_s);
    });
    EXPECT_EQ(count(), 2);

    const SQLiteError error = failureOf([&] {
        m_connection->transaction([&] {
            m_connection->execute(u"INSERT INTO items (name) VALUES ('lost')"_s);
            m_connection->execute(u"INSERT INTO items (size) VALUES (-5)"_s);
        });
    });
    EXPECT_EQ(error.code(), 19);
    EXPECT_EQ(count(), 2);

    // A value comes back out of the body.
    EXPECT_EQ(m_connection->transaction([&] { return count(); }), 2);
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
    // Nothing is left open: a new transaction can begin.
    EXPECT_NO_THROW(m_connection->transaction([] {}));
}

TEST_F(SQLiteConnectionTest, BeginFailureIsNotRolledBack)
{
    m_connection->execute(u"BEGIN"_s);
    const SQLiteError error = failureOf([&] { m_connection->transaction([] {}); });
    EXPECT_EQ(error.context(), u"executing BEGIN IMMEDIATE"_s);
    // The caller's own transaction is still open: the layer did not roll it back.
    EXPECT_NO_THROW(m_connection->execute(u"COMMIT"_s));
}

TEST_F(SQLiteConnectionTest, StatementKeepsItsConnectionAlive)
{
    m_connection->execute(u"INSERT INTO items (name) VALUES ('still here')"_s);
    auto statement = m_connection->prepare(u"SELECT name FROM items"_s);
    m_connection.reset();
    statement->bind({});
    ASSERT_TRUE(statement->step());
    EXPECT_EQ(statement->text(0), u"still here"_s);
}

TEST_F(SQLiteConnectionTest, ConfigureTurnsOnWalAndForeignKeys)
{
    EXPECT_EQ(m_connection->queryText(u"PRAGMA journal_mode"_s), u"wal"_s);
    EXPECT_EQ(m_connection->queryInt(u"PRAGMA foreign_keys"_s), 1);
    EXPECT_EQ(m_connection->queryInt(u"PRAGMA synchronous"_s), 1); // NORMAL
}

TEST(SQLiteConnection, ConfigureRefusesAJournalThatIsNotWal)
{
    auto memory = SQLiteConnection::open(u":memory:"_s, SQLiteConnection::Access::readWrite);
    const SQLiteError error = failureOf([&] { memory->configure(); });
    EXPECT_EQ(error.code(), 1);
    EXPECT_EQ(error.message(), u"journal_mode is 'memory' after requesting WAL"_s);
    EXPECT_EQ(error.context(), u"configuring :memory:"_s);
}

TEST(SQLiteConnection, ReaderLeavesTheJournalAlone)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(u"rollback.sqlite"_s);
    SQLiteConnection::open(path, SQLiteConnection::Access::readWrite)->execute(u"CREATE TABLE t (x)"_s);
    QFile::setPermissions(path, QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther);

    auto reader = SQLiteConnection::open(path, SQLiteConnection::Access::readOnly);
    EXPECT_NO_THROW(reader->configure());
    EXPECT_EQ(reader->queryText(u"PRAGMA journal_mode"_s), u"delete"_s);
    EXPECT_EQ(reader->queryInt(u"PRAGMA foreign_keys"_s), 1);
    const SQLiteError error = failureOf([&] { reader->execute(u"INSERT INTO t VALUES (1)"_s); });
    EXPECT_EQ(error.code(), 8); // SQLITE_READONLY
}

TEST(SQLiteConnection, OpenFailureNamesTheWholePath)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QString(130, u'd') + u"/missing/Velto.sqlite"_s);
    const SQLiteError error = failureOf([&] { SQLiteConnection::open(path, SQLiteConnection::Access::readWrite); });
    EXPECT_EQ(error.code(), 14); // SQLITE_CANTOPEN
    EXPECT_EQ(error.context(), u"opening "_s + path);
    EXPECT_FALSE(error.message().isEmpty());
}

} // namespace
