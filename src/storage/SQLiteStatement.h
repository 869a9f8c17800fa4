#pragma once

#include "SQLiteValue.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QUtf8StringView>

#include <memory>
#include <optional>

struct sqlite3_stmt;
class SQLiteConnection;

// One prepared statement, finalized when dropped; it holds its connection so that it can never
// outlive it. Column readers never fail: a NULL reads as empty or absent, as each one says.
class SQLiteStatement {
public:
    SQLiteStatement(sqlite3_stmt *handle, QString sql, std::shared_ptr<SQLiteConnection> connection);
    ~SQLiteStatement();

    SQLiteStatement(const SQLiteStatement &) = delete;
    SQLiteStatement &operator=(const SQLiteStatement &) = delete;

    [[nodiscard]] const QString &sql() const { return m_sql; }

    void bind(const QList<SQLiteValue> &values);
    // True for a row, false when done; any other result throws.
    bool step();
    void reset();

    [[nodiscard]] bool isNull(int column) const;
    [[nodiscard]] QString text(int column) const;
    [[nodiscard]] std::optional<QString> optionalText(int column) const;
    // The column's text as SQLite holds it, without a copy: valid until the statement steps again.
    [[nodiscard]] std::optional<QUtf8StringView> utf8(int column) const;
    [[nodiscard]] qint64 int64(int column) const;
    [[nodiscard]] std::optional<qint64> optionalInt64(int column) const;
    [[nodiscard]] double real(int column) const;
    [[nodiscard]] std::optional<double> optionalReal(int column) const;
    // Absent for NULL; a zero-length blob reads back as an empty buffer.
    [[nodiscard]] std::optional<QByteArray> blob(int column) const;

private:
    sqlite3_stmt *m_handle;
    QString m_sql;
    std::shared_ptr<SQLiteConnection> m_connection;
};
