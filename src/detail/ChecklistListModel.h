#pragma once

#include "ChecklistItem.h"
#include "RecordListModel.h"

#include <QString>
#include <QtQml/qqmlregistration.h>

#include <optional>

// A card's checklist as its rows show it: ticked, struck through, marked missing, selected.
class ChecklistListModel : public RecordListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("A CardDetailModel holds the checklist")

public:
    enum Role { ItemIDRole = Qt::UserRole + 1, DisplayNameRole, IsDoneRole, IsMissingRole, IsSelectedRole };
    Q_ENUM(Role)

    using RecordListModel::RecordListModel;

    [[nodiscard]] const QList<ChecklistItem> &items() const { return m_items; }
    void setItems(const QList<ChecklistItem> &items);
    void setSelectedItemID(const std::optional<QString> &id);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

private:
    QList<ChecklistItem> m_items;
    std::optional<QString> m_selectedItemID;
};
