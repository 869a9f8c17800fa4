#include "ChecklistItem.h"

#include "RepositoryError.h"
#include "RowReading.h"
#include "SQLiteStatement.h"

using namespace Qt::StringLiterals;

QString checklistItemColumns()
{
    return u"id, card_id, bookmark, display_name, is_done, is_missing, sort_order"_s;
}

ChecklistItem checklistItemFromRow(const SQLiteStatement &row)
{
    ChecklistItem item;
    item.id = row.text(0);
    auto bookmark = row.blob(2);
    if (!bookmark)
        throw RepositoryError(
            RepositoryError::MalformedRow{u"checklist_items"_s, item.id, u"bookmark is NULL"_s});
    item.bookmark = *bookmark;
    item.cardID = row.text(1);
    item.displayName = row.text(3);
    item.isDone = RowReading::flag(row, 4);
    item.isMissing = RowReading::flag(row, 5);
    item.sortOrder = row.real(6);
    return item;
}
