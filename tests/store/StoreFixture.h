#pragma once

#include "Await.h"
#include "ChangeChannels.h"
#include "Database.h"

#include <QDBusConnection>
#include <QStringList>
#include <QTemporaryDir>
#include <QThread>

#include <gtest/gtest.h>

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
        ASSERT_TRUE(drainBus()) << "the bus did not deliver the marker";
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
        // The database posts from its worker; the post must still come to the observing thread.
        m_observation = m_channel.observe([this] {
            EXPECT_EQ(QThread::currentThread(), QCoreApplication::instance()->thread());
            ++m_posts;
        });
        ASSERT_TRUE(m_observation);
    }

    Database &database() { return *m_database; }

    // The posts that arrived since the last call.
    int takePosts()
    {
        EXPECT_TRUE(drainBus()) << "the bus did not deliver the marker";
        return std::exchange(m_posts, 0);
    }

    // Runs SQL that no operation would write, such as a row the readers must refuse.
    void execute(const QString &sql)
    {
        await(m_database->run([sql](SQLiteConnection &connection) { connection.execute(sql); }));
    }

    // Every value of every table as text, to show that a failed write left them as they were.
    QStringList snapshot()
    {
        return await(m_database->run([](SQLiteConnection &connection) {
            QStringList rows;
            for (const char16_t *name : {u"projects", u"tags", u"cards", u"card_tags", u"checklist_items", u"time_sessions"}) {
                const QString table = QString::fromUtf16(name);
                const auto columns = connection.queryText(
                    QStringLiteral("SELECT group_concat('quote(' || name || ')', ' || '','' || ') FROM pragma_table_info(?)"),
                    {table});
                rows += connection.queryTextColumn(QStringLiteral("SELECT %1 FROM %2").arg(columns.value(), table));
            }
            return rows;
        }));
    }

private:
    QTemporaryDir m_dir;
    DatabaseChangeNotifier m_channel;
    std::shared_ptr<Database> m_database;
    std::shared_ptr<DatabaseChangeNotifier::Observation> m_observation;
    int m_posts = 0;
    int m_files = 0;
};
