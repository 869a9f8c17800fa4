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

// A card whose bookmark, path and name derive from its id, with dates at 1000 s.
inline Card makeCard(const QString &id, CardStatus status, double sortOrder)
{
    Card card;
    card.id = card.displayName = id;
    card.bookmark = id.toUtf8();
    card.displayPath = QStringLiteral("/home/ann/") + id;
    card.status = status;
    card.sortOrder = sortOrder;
    card.createdAt = card.statusChangedAt = VeltoDate(1000);
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

// A fresh database on a private change channel with a real observer, so that a test can count
// what an operation posted.
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

    // The posts that arrived since the last call. Signals of one process arrive in order, so once
    // a marker sent afterwards on another channel is back, none is still on its way.
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

    // Every row of every table as text, to show that a failed write left them as they were.
    QStringList snapshot()
    {
        return await(m_database->run([](SQLiteConnection &connection) {
            QStringList rows;
            for (const char *table : {"projects", "tags", "cards", "card_tags", "checklist_items", "time_sessions"}) {
                sqlite3_stmt *statement = nullptr;
                sqlite3_prepare_v2(connection.handle(), (QByteArray("SELECT * FROM ") + table).constData(), -1,
                                   &statement, nullptr);
                while (sqlite3_step(statement) == SQLITE_ROW) {
                    for (int i = 0; i < sqlite3_column_count(statement); ++i) {
                        const auto *text = reinterpret_cast<const char *>(sqlite3_column_text(statement, i));
                        rows.append(QString::fromUtf8(text));
                    }
                }
                sqlite3_finalize(statement);
            }
            return rows;
        }));
    }

private:
    static DatabaseChangeNotifier freshChannel()
    {
        return DatabaseChangeNotifier::forAppGroup(QStringLiteral("test.velto.") + QUuid::createUuid().toString());
    }

    QTemporaryDir m_dir;
    DatabaseChangeNotifier m_channel;
    std::shared_ptr<Database> m_database;
    std::shared_ptr<DatabaseChangeNotifier::Observation> m_observation;
    int m_posts = 0;
    int m_files = 0;
};
