#include "Tag.h"

#include "RowReading.h"
#include "SQLiteStatement.h"

Tag tagFromRow(const SQLiteStatement &row)
{
    return Tag{row.text(0), row.text(1), RowReading::color(row, 2)};
}
