#include "Database.h"

#include "StoreQueries.h"

using namespace Qt::StringLiterals;

namespace {

QList<SQLiteValue> checklistItemValues(const ChecklistItem &item)
{
    return {item.id,
            item.cardID,
            item.bookmark,
            item.displayName,
            StoreQueries::storedFlag(item.isDone),
            StoreQueries::storedFlag(item.isMissing),
            item.sortOrder};
}

void insertRow(SQLiteConnection &connection, const ChecklistItem &item)
{
    StoreQueries::write(connection,
                        u"INSERT INTO checklist_items ("_s + checklistItemColumns() + u")\nVALUES (?, ?, ?, ?, ?, ?, ?)"_s,
                        checklistItemValues(item));
}

} // namespace

Task<QHash<QString, ChecklistProgress>> Database::checklistProgress()
{
    return run([](SQLiteConnection &connection) {
        auto statement =
            connection.prepare(u"SELECT card_id, count(*), sum(is_done)\nFROM checklist_items GROUP BY card_id"_s);
        QHash<QString, ChecklistProgress> progress;
        while (statement->step()) {
            if (statement->isNull(0))
                continue;
            // sum() of no non-NULL value is NULL, which int64 reads as 0.
            progress.insert(statement->text(0), ChecklistProgress{statement->int64(2), statement->int64(1)});
        }
        return progress;
    });
}

Task<QList<ChecklistItem>> Database::checklistItems(QString cardID)
{
    return run([cardID](SQLiteConnection &connection) {
        return StoreQueries::readAll(connection,
                                     u"SELECT "_s + checklistItemColumns()
                                         + u" FROM checklist_items\nWHERE card_id = ? ORDER BY sort_order"_s,
                                     {cardID}, checklistItemFromRow);
    });
}

Task<void> Database::insertChecklistItem(ChecklistItem item)
{
    return run([this, item](SQLiteConnection &connection) {
        insertRow(connection, item);
        postChange();
    });
}

Task<ChecklistItem> Database::appendChecklistItem(ChecklistItem item)
{
    return run([this, item](SQLiteConnection &connection) {
        ChecklistItem stored = item;
        connection.transaction([&] {
            stored.sortOrder = StoreQueries::orderAfterLast(
                connection, u"SELECT max(sort_order) FROM checklist_items WHERE card_id = ?"_s, {stored.cardID});
            insertRow(connection, stored);
        });
        postChange();
        return stored;
    });
}

Task<void> Database::setChecklistItemDone(bool isDone, QString id)
{
    return run([this, isDone, id](SQLiteConnection &connection) {
        StoreQueries::write(connection, u"UPDATE checklist_items SET is_done = ? WHERE id = ?"_s,
                            {StoreQueries::storedFlag(isDone), id});
        postChange();
    });
}

Task<void> Database::deleteChecklistItem(QString id)
{
    return run([this, id](SQLiteConnection &connection) {
        StoreQueries::write(connection, u"DELETE FROM checklist_items WHERE id = ?"_s, {id});
        postChange();
    });
}
