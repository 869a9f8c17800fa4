#pragma once

#include <QList>
#include <QString>
#include <QUrl>

// One item at the top level of a card's folder, as the detail pane and the briefing show it.
struct FolderEntry {
    QUrl url;
    QString name;
    // A link is not a folder here, even when it leads to one.
    bool isDirectory = false;

    // The top level of the folder at `url` without hidden items, folders first, then by name in
    // natural order ("File 9" before "File 10", case not counting). Throws FolderListingError
    // when the folder cannot be read.
    [[nodiscard]] static QList<FolderEntry> list(const QUrl &url);

    // How many entries are files; folders do not count.
    [[nodiscard]] static qsizetype fileCount(const QList<FolderEntry> &entries);

    bool operator==(const FolderEntry &) const = default;
};
