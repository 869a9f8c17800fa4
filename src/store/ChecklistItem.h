#pragma once

#include <QByteArray>
#include <QString>

class SQLiteStatement;

// One file picked out of a card's folder as key to the work.
struct ChecklistItem {
    QString id;
    QString cardID;
    QByteArray bookmark;
    QString displayName;
    bool isDone = false;
    bool isMissing = false;
    double sortOrder = 0.0;

    bool operator==(const ChecklistItem &) const = default;
};

// The columns the SELECT and the INSERT on `checklist_items` name, in the order
// `checklistItemFromRow` reads them.
[[nodiscard]] QString checklistItemColumns();

// The item on the statement's current row; throws RepositoryError for a NULL bookmark.
[[nodiscard]] ChecklistItem checklistItemFromRow(const SQLiteStatement &row);
