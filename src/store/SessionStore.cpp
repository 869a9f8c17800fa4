#include "Database.h"

#include "RepositoryError.h"
#include "StoreQueries.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace {

QString sessionPlaceholders()
{
    return QStringList(9, u"?"_s).join(u", "_s);
}

QString insertSessionSql()
{
    return u"INSERT INTO time_sessions ("_s + sessionColumns() + u")\nVALUES ("_s + sessionPlaceholders() + u")"_s;
}

SQLiteValue storedMood(const std::optional<Mood> &mood)
{
    if (!mood)
        return nullptr;
    return rawValue(*mood);
}

QList<SQLiteValue> sessionValues(const TimeSession &session)
{
    return {session.id,
            session.cardID,
            session.startedAt.storedSeconds(),
            StoreQueries::storedDate(session.endedAt),
            rawValue(session.source),
            session.confidence,
            session.note,
            session.targetSeconds,
            storedMood(session.mood)};
}

QList<TimeSession> readSessions(SQLiteConnection &connection, const QString &sql, const QList<SQLiteValue> &values = {})
{
    return StoreQueries::readAll(connection, sql, values, sessionFromRow);
}

std::optional<TimeSession> readRunningSession(SQLiteConnection &connection)
{
    const QString sql = u"SELECT "_s + sessionColumns()
        + u" FROM time_sessions\nWHERE ended_at IS NULL ORDER BY started_at DESC LIMIT 1"_s;
    const QList<TimeSession> running = readSessions(connection, sql);
    if (running.isEmpty())
        return std::nullopt;
    return running.first();
}

// The mood is assigned only when asked for, so that editing a session's times keeps its rating.
std::pair<QString, QList<SQLiteValue>> sessionUpdate(const TimeSession &session, bool includingMood)
{
    QStringList assignments{u"started_at = ?"_s, u"ended_at = ?"_s, u"note = ?"_s};
    QList<SQLiteValue> values{session.startedAt.storedSeconds(), StoreQueries::storedDate(session.endedAt),
                              session.note};
    if (includingMood) {
        assignments.append(u"mood = ?"_s);
        values.append(storedMood(session.mood));
    }
    values.append(session.id);
    return {u"UPDATE time_sessions\nSET "_s + assignments.join(u", "_s) + u"\nWHERE id = ?"_s, values};
}

// Closes the latest open session unless something closed it first. A clock put back behind the
// start gives a session of no length rather than one the table would refuse.
std::optional<TimeSession> closeRunningSession(SQLiteConnection &connection, VeltoDate at)
{
    std::optional<TimeSession> session = readRunningSession(connection);
    if (!session)
        return std::nullopt;
    const VeltoDate end = at > session->startedAt ? at : session->startedAt;
    StoreQueries::write(connection, u"UPDATE time_sessions SET ended_at = ?\nWHERE id = ? AND ended_at IS NULL"_s,
                        {end.storedSeconds(), session->id});
    if (connection.changes() < 1)
        return std::nullopt;
    session->endedAt = end.floored();
    return session;
}

} // namespace

Task<QList<TimeSession>> Database::allSessions()
{
    return run([](SQLiteConnection &connection) {
        return readSessions(connection, u"SELECT "_s + sessionColumns() + u" FROM time_sessions ORDER BY started_at"_s);
    });
}

Task<QList<TimeSession>> Database::sessions(QString cardID)
{
    return run([cardID](SQLiteConnection &connection) {
        return readSessions(connection,
                            u"SELECT "_s + sessionColumns()
                                + u" FROM time_sessions\nWHERE card_id = ? ORDER BY started_at DESC"_s,
                            {cardID});
    });
}

Task<std::optional<TimeSession>> Database::runningSession()
{
    return run([](SQLiteConnection &connection) { return readRunningSession(connection); });
}

Task<void> Database::insertSession(TimeSession session)
{
    return run([this, session](SQLiteConnection &connection) {
        StoreQueries::write(connection, insertSessionSql(), sessionValues(session));
        postChange();
    });
}

Task<void> Database::updateSession(TimeSession session, bool includingMood)
{
    return run([this, session, includingMood](SQLiteConnection &connection) {
        const auto [sql, values] = sessionUpdate(session, includingMood);
        StoreQueries::write(connection, sql, values);
        if (connection.changes() < 1)
            throw RepositoryError(RepositoryError::NotFound{u"time_sessions"_s, session.id});
        postChange();
    });
}

Task<void> Database::deleteSession(QString id)
{
    return run([this, id](SQLiteConnection &connection) {
        StoreQueries::write(connection, u"DELETE FROM time_sessions WHERE id = ?"_s, {id});
        postChange();
    });
}

Task<void> Database::startSession(TimeSession session, VeltoDate at)
{
    return run([this, session, at](SQLiteConnection &connection) {
        // Every open row goes, of any card: strays of a crash or of the other process included.
        connection.transaction([&] {
            StoreQueries::write(connection, u"UPDATE time_sessions SET ended_at = ? WHERE ended_at IS NULL"_s,
                                {at.storedSeconds()});
            StoreQueries::write(connection, insertSessionSql(), sessionValues(session));
        });
        postChange();
    });
}

Task<std::optional<TimeSession>> Database::stopRunningSession(VeltoDate at)
{
    return run([this, at](SQLiteConnection &connection) {
        const auto closed = connection.transaction([&] { return closeRunningSession(connection, at); });
        if (closed)
            postChange();
        return closed;
    });
}
