#pragma once

#include "Await.h"
#include "Database.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDeadlineTimer>
#include <QStringList>
#include <QTemporaryDir>
#include <QUuid>

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <memory>
#include <optional>
#include <ostream>
#include <utility>

// Failure messages show a text as text rather than as bytes.
inline void PrintTo(const QString &text, std::ostream *out)
{
    *out << '"' << text.toStdString() << '"';
}

// A card whose bookmark, path and name all derive from its id; dates at 1000 s past 2001.
inline Card makeCard(const QString &id, CardStatus status, double sortOrder)
{
    Card card;
    card.id = id;
    card.bookmark = id.toUtf8();
    card.displayPath = QStringLiteral("/home/ann/") + id;
    card.displayName = id;
    card.status = status;
    card.sortOrder = sortOrder;
    card.createdAt = VeltoDate(1000);
    card.statusChangedAt = VeltoDate(1000);
    return card;
}

inline TimeSession makeSession(const QString &id, const QString &cardID, double startedAt,
                               std::optional<double> endedAt = std::nullopt)
{
    TimeSession session;
    session.id = id;
    session.cardID = cardID;
    session.startedAt = VeltoDate(startedAt);
    if (endedAt)
        session.endedAt = VeltoDate(*endedAt);
    return session;
}

// A fresh database on a private change channel, with a real observer of that channel, so that a
// test can count what an operation posted.
class StoreFixture : public ::testing::Test {
protected:
    void SetUp() override
    {
        if (!QDBusConnection::sessionBus().isConnected())
            GTEST_SKIP() << "needs a session bus: run under dbus-run-session";
        reopen();
    }

    // Starts over with an empty database in a new file, on a channel of its own.
    void reopen()
    {
        m_observation.reset();
        m_channel = freshChannel();
        m_database = Database::create(m_dir.filePath(QStringLiteral("Velto-%1.sqlite").arg(++m_files)), m_channel);
        await(m_database->open());
        m_posts = 0;
        m_observation = m_channel.observe([this] { ++m_posts; });
        ASSERT_TRUE(m_observation);
    }

    Database &database() { return *m_database; }

    // How many posts arrived since the last call. A marker sent on another channel after the
    // operation comes back only after every earlier signal of this process, so nothing is missed.
    int takePosts()
    {
        const DatabaseChangeNotifier marker = freshChannel();
        bool arrived = false;
        const auto observation = marker.observe([&arrived] { arrived = true; });
        marker.post();
        QDeadlineTimer deadline(5000);
        while (!arrived && !deadline.hasExpired())
            QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        EXPECT_TRUE(arrived) << "the bus did not deliver the marker";
        return std::exchange(m_posts, 0);
    }

    // Runs SQL that no operation would write, such as a row the readers must refuse.
    void execute(const QString &sql)
    {
        await(m_database->run([sql](SQLiteConnection &connection) { connection.execute(sql); }));
    }

    // Every row of every table, as text, to prove that a failed write left them as they were.
    QStringList snapshot()
    {
        return await(m_database->run([](SQLiteConnection &connection) {
            QStringList rows;
            for (const char *table : {"projects", "tags", "cards", "card_tags", "checklist_items", "time_sessions"}) {
                const QByteArray sql = QByteArray("SELECT * FROM ") + table + " ORDER BY rowid";
                sqlite3_stmt *statement = nullptr;
                sqlite3_prepare_v2(connection.handle(), sql.constData(), -1, &statement, nullptr);
                while (sqlite3_step(statement) == SQLITE_ROW) {
                    QStringList columns{QString::fromLatin1(table)};
                    for (int i = 0; i < sqlite3_column_count(statement); ++i)
                        columns.append(QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_column_text(statement, i))));
                    rows.append(columns.join(u'|'));
                }
                sqlite3_finalize(statement);
            }
            return rows;
        }));
    }

private:
    static DatabaseChangeNotifier freshChannel()
    {
        return DatabaseChangeNotifier::forAppGroup(QStringLiteral("test.velto.")
                                                   + QUuid::createUuid().toString(QUuid::WithoutBraces));
    }

    QTemporaryDir m_dir;
    DatabaseChangeNotifier m_channel;
    std::shared_ptr<Database> m_database;
    std::shared_ptr<DatabaseChangeNotifier::Observation> m_observation;
    int m_posts = 0;
    int m_files = 0;
};
