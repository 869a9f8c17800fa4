#pragma once

#include "SQLiteError.h"
#include "SQLiteValue.h"

#include <QList>
#include <QString>

#include <memory>
#include <optional>
#include <type_traits>

struct sqlite3;
class SQLiteStatement;

// A strict, shared handle on one SQLite connection. Every call that can fail throws SQLiteError
// naming what was being done; statements keep the connection alive.
class SQLiteConnection : public std::enable_shared_from_this<SQLiteConnection> {
public:
    enum class Access { readWrite, readOnly };

    static std::shared_ptr<SQLiteConnection> open(const QString &path, Access access);
    ~SQLiteConnection();

    SQLiteConnection(const SQLiteConnection &) = delete;
    SQLiteConnection &operator=(const SQLiteConnection &) = delete;

    [[nodiscard]] sqlite3 *handle() const { return m_handle; }
    [[nodiscard]] const QString &path() const { return m_path; }
    [[nodiscard]] Access access() const { return m_access; }
    // Whether SQLite holds the file for reading only. Asked for read-write on a file that refuses
    // writes, it opens the file that way without a word, and every write fails later.
    [[nodiscard]] bool isReadOnly() const;

    void configure();
    void execute(const QString &sql);
    [[nodiscard]] std::shared_ptr<SQLiteStatement> prepare(const QString &sql);

    std::optional<qint64> queryInt(const QString &sql, const QList<SQLiteValue> &values = {});
    std::optional<QString> queryText(const QString &sql, const QList<SQLiteValue> &values = {});
    QList<QString> queryTextColumn(const QString &sql, const QList<SQLiteValue> &values = {});

    [[nodiscard]] int changes() const;

    // BEGIN IMMEDIATE, the body, COMMIT; on any failure ROLLBACK (whose own failure is dropped)
    // and the first failure goes on to the caller.
    template <typename Body>
    auto transaction(Body &&body) -> std::invoke_result_t<Body>
    {
        execute(QStringLiteral("BEGIN IMMEDIATE"));
        try {
            if constexpr (std::is_void_v<std::invoke_result_t<Body>>) {
                body();
                execute(QStringLiteral("COMMIT"));
            } else {
                auto result = body();
                execute(QStringLiteral("COMMIT"));
                return result;
            }
        } catch (...) {
            rollbackQuietly();
            throw;
        }
    }

    // The text SQLite gives for the last failure on this handle, or for the code alone.
    [[nodiscard]] QString messageFor(int code) const;

private:
    SQLiteConnection(sqlite3 *handle, QString path, Access access);
    void rollbackQuietly() noexcept;

    sqlite3 *m_handle;
    QString m_path;
    Access m_access;
};

// The short, one-line form of SQL that error contexts show: at most 120 visible characters.
[[nodiscard]] QString summarize(const QString &sql);
