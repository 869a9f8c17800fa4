#pragma once

#include "FolderEntry.h"
#include "RecordListModel.h"

#include <QSet>
#include <QString>
#include <QtQml/qqmlregistration.h>

// The top level of a card's folder as the folder browser shows it, each entry with whether a
// checklist item already carries its name.
class FolderEntryListModel : public RecordListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("A CardDetailModel holds the folder's entries")

public:
    enum Role { NameRole = Qt::UserRole + 1, UrlRole, IsDirectoryRole, IsOnChecklistRole };
    Q_ENUM(Role)

    using RecordListModel::RecordListModel;

    [[nodiscard]] const QList<FolderEntry> &entries() const { return m_entries; }
    void setEntries(const QList<FolderEntry> &entries);
    // The display names of the checklist's items.
    void setChecklistNames(const QSet<QString> &names);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

private:
    QList<FolderEntry> m_entries;
    QSet<QString> m_checklistNames;
};
