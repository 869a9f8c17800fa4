#include "RowReading.h"

#include "SQLiteStatement.h"

using namespace Qt::StringLiterals;

namespace RowReading {

bool flag(const SQLiteStatement &row, int column)
{
    return row.int64(column) == 1;
}

VeltoDate date(const SQLiteStatement &row, int column)
{
    return VeltoDate::fromStoredSeconds(row.int64(column));
}

std::optional<VeltoDate> optionalDate(const SQLiteStatement &row, int column)
{
    if (row.isNull(column))
        return std::nullopt;
    return date(row, column);
}

QString color(const SQLiteStatement &row, int column)
{
    return row.optionalText(column).value_or(u"#8E8E93"_s);
}

QString textOrNull(const std::optional<QUtf8StringView> &word)
{
    return word ? word->toString() : u"NULL"_s;
}

} // namespace RowReading
