#include "StoreQueries.h"

namespace StoreQueries {

void write(SQLiteConnection &connection, const QString &sql, const QList<SQLiteValue> &values)
{
    auto statement = connection.prepare(sql);
    statement->bind(values);
    statement->step();
}

std::optional<double> queryReal(SQLiteConnection &connection, const QString &sql, const QList<SQLiteValue> &values)
{
    auto statement = connection.prepare(sql);
    statement->bind(values);
    if (!statement->step())
        return std::nullopt;
    return statement->optionalReal(0);
}

double orderAfterLast(SQLiteConnection &connection, const QString &sql, const QList<SQLiteValue> &values)
{
    const auto highest = queryReal(connection, sql, values);
    return highest ? *highest + 1.0 : 0.0;
}

SQLiteValue storedDate(const std::optional<VeltoDate> &date)
{
    if (!date)
        return nullptr;
    return date->storedSeconds();
}

SQLiteValue storedFlag(bool flag)
{
    return flag ? 1 : 0;
}

} // namespace StoreQueries
