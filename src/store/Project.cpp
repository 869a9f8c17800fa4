#include "Project.h"

#include "RowReading.h"
#include "SQLiteStatement.h"

Project projectFromRow(const SQLiteStatement &row)
{
    return Project{row.text(0), row.text(1), RowReading::color(row, 2)};
}
