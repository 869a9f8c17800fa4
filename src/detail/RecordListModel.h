#pragma once

#include <QAbstractListModel>
#include <QList>

#include <algorithm>
#include <functional>

// The base of the detail pane's lists: each holds records that its owner replaces whole after a
// fresh read. A row whose record changed in place says so by itself, so a view keeps its scroll
// position and delegates; only a list that gained, lost or reordered records is reset.
class RecordListModel : public QAbstractListModel {
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;

protected:
    template <typename Record, typename Key>
    void replaceRows(QList<Record> &rows, const QList<Record> &next, Key key)
    {
        const bool sameRecords = std::ranges::equal(rows, next, {}, key, key);
        if (!sameRecords) {
            beginResetModel();
            rows = next;
            endResetModel();
            return;
        }
        for (qsizetype row = 0; row < rows.size(); ++row) {
            if (rows.at(row) == next.at(row))
                continue;
            rows[row] = next.at(row);
            emit dataChanged(index(int(row)), index(int(row)));
        }
    }

    // Tells the views that `role`, derived from outside the records, may differ on `row`.
    void roleChanged(qsizetype row, int role) { emit dataChanged(index(int(row)), index(int(row)), {role}); }
};
