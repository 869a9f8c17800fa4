#include "SQLiteStatement.h"

#include "SQLiteConnection.h"
#include "SQLiteError.h"

#include <sqlite3.h>

using namespace Qt::StringLiterals;

SQLiteStatement::SQLiteStatement(sqlite3_stmt *handle, QString sql,
                                 std::shared_ptr<SQLiteConnection> connection)
    : m_handle(handle), m_sql(std::move(sql)), m_connection(std::move(connection))
{
}

SQLiteStatement::~SQLiteStatement()
{
    sqlite3_finalize(m_handle);
}

void SQLiteStatement::bind(const QList<SQLiteValue> &values)
{
    const int expected = sqlite3_bind_parameter_count(m_handle);
    if (expected != values.size())
        throw SQLiteError(SQLITE_MISUSE,
                          u"%1 parameter(s) to bind, %2 value(s) given"_s.arg(expected).arg(values.size()),
                          u"binding "_s + summarize(m_sql));

    for (int i = 1; i <= expected; ++i) {
        const auto &value = values[i - 1].value;
        int code = SQLITE_OK;
        if (std::holds_alternative<std::nullptr_t>(value)) {
            code = sqlite3_bind_null(m_handle, i);
        } else if (auto integer = std::get_if<qint64>(&value)) {
            code = sqlite3_bind_int64(m_handle, i, *integer);
        } else if (auto real = std::get_if<double>(&value)) {
            code = sqlite3_bind_double(m_handle, i, *real);
        } else if (auto text = std::get_if<QString>(&value)) {
            code = sqlite3_bind_text(m_handle, i, text->toUtf8().constData(), -1, SQLITE_TRANSIENT);
        } else if (auto bytes = std::get_if<QByteArray>(&value)) {
            code = bytes->isEmpty()
                ? sqlite3_bind_zeroblob(m_handle, i, 0)
                : sqlite3_bind_blob64(m_handle, i, bytes->constData(), sqlite3_uint64(bytes->size()),
                                      SQLITE_TRANSIENT);
        }
        if (code != SQLITE_OK)
            throw SQLiteError(code, m_connection->messageFor(code),
                              u"binding parameter %1 of %2"_s.arg(i).arg(summarize(m_sql)));
    }
}

bool SQLiteStatement::step()
{
    const int code = sqlite3_step(m_handle);
    if (code == SQLITE_ROW)
        return true;
    if (code == SQLITE_DONE)
        return false;
    throw SQLiteError(code, m_connection->messageFor(code), u"stepping "_s + summarize(m_sql));
}

void SQLiteStatement::reset()
{
    sqlite3_reset(m_handle);
    sqlite3_clear_bindings(m_handle);
}

bool SQLiteStatement::isNull(int column) const
{
    return sqlite3_column_type(m_handle, column) == SQLITE_NULL;
}

QString SQLiteStatement::text(int column) const
{
    return optionalText(column).value_or(QString());
}

std::optional<QString> SQLiteStatement::optionalText(int column) const
{
    const auto text = utf8(column);
    if (!text)
        return std::nullopt;
    return text->toString();
}

std::optional<QUtf8StringView> SQLiteStatement::utf8(int column) const
{
    if (isNull(column))
        return std::nullopt;
    const auto *text = reinterpret_cast<const char *>(sqlite3_column_text(m_handle, column));
    if (text == nullptr)
        return std::nullopt;
    return QUtf8StringView(text, sqlite3_column_bytes(m_handle, column));
}

qint64 SQLiteStatement::int64(int column) const
{
    return sqlite3_column_int64(m_handle, column);
}

std::optional<qint64> SQLiteStatement::optionalInt64(int column) const
{
    if (isNull(column))
        return std::nullopt;
    return int64(column);
}

double SQLiteStatement::real(int column) const
{
    return sqlite3_column_double(m_handle, column);
}

std::optional<double> SQLiteStatement::optionalReal(int column) const
{
    if (isNull(column))
        return std::nullopt;
    return real(column);
}

std::optional<QByteArray> SQLiteStatement::blob(int column) const
{
    const void *bytes = sqlite3_column_blob(m_handle, column);
    if (bytes != nullptr) {
        const int count = sqlite3_column_bytes(m_handle, column);
        return count < 1 ? QByteArray() : QByteArray(static_cast<const char *>(bytes), count);
    }
    if (isNull(column))
        return std::nullopt;
    return QByteArray();
}
