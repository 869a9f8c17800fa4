#include "FolderEntryListModel.h"

#include <utility>

void FolderEntryListModel::setEntries(const QList<FolderEntry> &entries)
{
    replaceRows(m_entries, entries, &FolderEntry::url);
}

void FolderEntryListModel::setChecklistNames(const QSet<QString> &names)
{
    const QSet<QString> previous = std::exchange(m_checklistNames, names);
    for (qsizetype row = 0; row < m_entries.size(); ++row) {
        const QString &name = m_entries.at(row).name;
        if (previous.contains(name) != names.contains(name))
            roleChanged(row, IsOnChecklistRole);
    }
}

int FolderEntryListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_entries.size());
}

QVariant FolderEntryListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const FolderEntry &entry = m_entries.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case NameRole:
        return entry.name;
    case UrlRole:
        return entry.url;
    case IsDirectoryRole:
        return entry.isDirectory;
    case IsOnChecklistRole:
        return m_checklistNames.contains(entry.name);
    default:
        return {};
    }
}

QHash<int, QByteArray> FolderEntryListModel::roleNames() const
{
    return {{NameRole, "name"}, {UrlRole, "url"}, {IsDirectoryRole, "isDirectory"}, {IsOnChecklistRole, "isOnChecklist"}};
}
