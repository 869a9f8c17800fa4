#include "ChecklistListModel.h"

#include <utility>

void ChecklistListModel::setItems(const QList<ChecklistItem> &items)
{
    replaceRows(m_items, items, &ChecklistItem::id);
}

void ChecklistListModel::setSelectedItemID(const std::optional<QString> &id)
{
    const std::optional<QString> previous = std::exchange(m_selectedItemID, id);
    for (qsizetype row = 0; row < m_items.size(); ++row) {
        const QString &itemID = m_items.at(row).id;
        if ((previous == itemID) != (id == itemID))
            roleChanged(row, IsSelectedRole);
    }
}

int ChecklistListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_items.size());
}

QVariant ChecklistListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const ChecklistItem &item = m_items.at(index.row());
    switch (role) {
    case ItemIDRole:
        return item.id;
    case Qt::DisplayRole:
    case DisplayNameRole:
        return item.displayName;
    case IsDoneRole:
        return item.isDone;
    case IsMissingRole:
        return item.isMissing;
    case IsSelectedRole:
        return m_selectedItemID == item.id;
    default:
        return {};
    }
}

QHash<int, QByteArray> ChecklistListModel::roleNames() const
{
    return {{ItemIDRole, "itemID"},
            {DisplayNameRole, "displayName"},
            {IsDoneRole, "isDone"},
            {IsMissingRole, "isMissing"},
            {IsSelectedRole, "isSelected"}};
}
