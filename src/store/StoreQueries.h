#pragma once

#include "SQLiteConnection.h"
#include "SQLiteStatement.h"
#include "SQLiteValue.h"
#include "VeltoDate.h"

#include <QList>
#include <QString>

#include <optional>
#include <type_traits>

// The few shapes every statement of the stores takes: a write stepped once, a list read row by
// row, a single number. All of them run on the database's worker, inside one operation.
namespace StoreQueries {

// Prepares, binds and steps `sql` to its end.
void write(SQLiteConnection &connection, const QString &sql, const QList<SQLiteValue> &values = {});

// Every row of `sql` through `fromRow`, in the statement's order. The first row that fails to
// read fails the whole list.
template <typename FromRow>
auto readAll(SQLiteConnection &connection, const QString &sql, const QList<SQLiteValue> &values, FromRow fromRow)
{
    auto statement = connection.prepare(sql);
    statement->bind(values);
    QList<std::invoke_result_t<FromRow, const SQLiteStatement &>> records;
    while (statement->step())
        records.append(fromRow(*statement));
    return records;
}

// The first column of the first row as a real; absent for no row or a NULL.
std::optional<double> queryReal(SQLiteConnection &connection, const QString &sql, const QList<SQLiteValue> &values);

// One more than the highest order `sql` gives (a max(sort_order) over one column or card), or 0
// when it gives none: the order at the bottom of that list.
double orderAfterLast(SQLiteConnection &connection, const QString &sql, const QList<SQLiteValue> &values);

// Whole seconds since 1970, or NULL for an absent date.
SQLiteValue storedDate(const std::optional<VeltoDate> &date);

SQLiteValue storedFlag(bool flag);

} // namespace StoreQueries
