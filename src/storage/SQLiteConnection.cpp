#include "SQLiteConnection.h"

#include "SQLiteStatement.h"

#include <QTextBoundaryFinder>

#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int busyTimeoutMilliseconds = 5000;

// A connection is used by one thread at a time, the database's worker, which runs one job after
// another; SQLite's lock around every call, each column of each row included, would guard nothing.
int flagsFor(SQLiteConnection::Access access)
{
    switch (access) {
    case SQLiteConnection::Access::readWrite:
        return SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX;
    case SQLiteConnection::Access::readOnly:
        return SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX;
    }
    Q_UNREACHABLE();
}

QString fallbackMessage(int code)
{
    if (const char *text = sqlite3_errstr(code))
        return QString::fromUtf8(text);
    return u"unknown error"_s;
}

bool isLineBreak(QChar c)
{
    switch (c.unicode()) {
    case u'\n':
    case u'\v':
    case u'\f':
    case u'\r':
    case 0x0085:
    case 0x2028:
    case 0x2029:
        return true;
    default:
        return false;
    }
}

QString trimmedOfSpacesAndTabs(QStringView piece)
{
    qsizetype begin = 0;
    qsizetype end = piece.size();
    while (begin < end && (piece[begin] == u' ' || piece[begin] == u'\t'))
        ++begin;
    while (end > begin && (piece[end - 1] == u' ' || piece[end - 1] == u'\t'))
        --end;
    return piece.sliced(begin, end - begin).toString();
}

// Where the visible character number `count` begins, or -1 when the text is shorter.
qsizetype offsetOfGrapheme(const QString &text, qsizetype count)
{
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    qsizetype seen = 0;
    while (seen < count) {
        if (finder.toNextBoundary() < 0)
            return -1;
        ++seen;
    }
    return finder.position() < text.size() ? finder.position() : -1;
}

} // namespace

QString summarize(const QString &sql)
{
    QStringList pieces;
    qsizetype start = 0;
    for (qsizetype i = 0; i <= sql.size(); ++i) {
        if (i == sql.size() || isLineBreak(sql[i])) {
            QString piece = trimmedOfSpacesAndTabs(QStringView(sql).sliced(start, i - start));
            if (!piece.isEmpty())
                pieces.append(piece);
            start = i + 1;
        }
    }
    const QString joined = pieces.join(u' ');
    if (offsetOfGrapheme(joined, 120) < 0)
        return joined;
    return joined.left(offsetOfGrapheme(joined, 117)) + u"..."_s;
}

SQLiteConnection::SQLiteConnection(sqlite3 *handle, QString path, Access access)
    : m_handle(handle), m_path(std::move(path)), m_access(access)
{
}

SQLiteConnection::~SQLiteConnection()
{
    sqlite3_close_v2(m_handle);
}

std::shared_ptr<SQLiteConnection> SQLiteConnection::open(const QString &path, Access access)
{
    sqlite3 *handle = nullptr;
    const int code = sqlite3_open_v2(path.toUtf8().constData(), &handle, flagsFor(access), nullptr);
    if (code != SQLITE_OK || handle == nullptr) {
        QString message = fallbackMessage(code);
        if (handle != nullptr) {
            if (const char *text = sqlite3_errmsg(handle))
                message = QString::fromUtf8(text);
            sqlite3_close_v2(handle);
        }
        throw SQLiteError(code, message, u"opening "_s + path);
    }
    sqlite3_busy_timeout(handle, busyTimeoutMilliseconds);
    return std::shared_ptr<SQLiteConnection>(new SQLiteConnection(handle, path, access));
}

QString SQLiteConnection::messageFor(int code) const
{
    if (const char *text = sqlite3_errmsg(m_handle))
        return QString::fromUtf8(text);
    return fallbackMessage(code);
}

void SQLiteConnection::configure()
{
    execute(u"PRAGMA foreign_keys = ON"_s);
    // A sort too large for the cache stays in memory, sparing a temporary file written and read back.
    execute(u"PRAGMA temp_store = MEMORY"_s);
    if (m_access == Access::readOnly)
        return; // a reader changes neither the journal nor the durability of the file
    const QString mode = queryText(u"PRAGMA journal_mode = WAL"_s).value_or(u"unknown"_s);
    if (mode.toLower() != u"wal"_s)
        throw SQLiteError(1, u"journal_mode is '%1' after requesting WAL"_s.arg(mode),
                          u"configuring "_s + m_path);
    execute(u"PRAGMA synchronous = NORMAL"_s);
}

void SQLiteConnection::execute(const QString &sql)
{
    char *error = nullptr;
    const int code = sqlite3_exec(m_handle, sql.toUtf8().constData(), nullptr, nullptr, &error);
    if (code == SQLITE_OK)
        return;
    QString message;
    if (error != nullptr) {
        message = QString::fromUtf8(error);
        sqlite3_free(error);
    } else {
        message = messageFor(code);
    }
    throw SQLiteError(code, message, u"executing "_s + summarize(sql));
}

std::shared_ptr<SQLiteStatement> SQLiteConnection::prepare(const QString &sql)
{
    sqlite3_stmt *statement = nullptr;
    const int code = sqlite3_prepare_v2(m_handle, sql.toUtf8().constData(), -1, &statement, nullptr);
    if (code != SQLITE_OK || statement == nullptr) {
        sqlite3_finalize(statement);
        throw SQLiteError(code, messageFor(code), u"preparing "_s + summarize(sql));
    }
    return std::make_shared<SQLiteStatement>(statement, sql, shared_from_this());
}

std::optional<qint64> SQLiteConnection::queryInt(const QString &sql, const QList<SQLiteValue> &values)
{
    auto statement = prepare(sql);
    statement->bind(values);
    if (!statement->step())
        return std::nullopt;
    return statement->optionalInt64(0);
}

std::optional<QString> SQLiteConnection::queryText(const QString &sql, const QList<SQLiteValue> &values)
{
    auto statement = prepare(sql);
    statement->bind(values);
    if (!statement->step())
        return std::nullopt;
    return statement->optionalText(0);
}

QList<QString> SQLiteConnection::queryTextColumn(const QString &sql, const QList<SQLiteValue> &values)
{
    auto statement = prepare(sql);
    statement->bind(values);
    QList<QString> texts;
    while (statement->step()) {
        if (auto text = statement->optionalText(0))
            texts.append(*text);
    }
    return texts;
}

bool SQLiteConnection::isReadOnly() const
{
    return sqlite3_db_readonly(m_handle, "main") == 1;
}

int SQLiteConnection::changes() const
{
    return sqlite3_changes(m_handle);
}

void SQLiteConnection::rollbackQuietly() noexcept
{
    try {
        execute(u"ROLLBACK"_s);
    } catch (...) {
        // The failure that led here is the one the caller needs to see.
    }
}
