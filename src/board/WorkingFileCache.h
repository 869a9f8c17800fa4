#pragma once

#include "WorkingFileRead.h"

#include <QByteArray>
#include <QHash>
#include <QString>

#include <functional>

// The working files of the board's cards, read again on a reload only where a file's size or
// modification time changed, so that a board of many cards costs one look at each folder.
namespace WorkingFileCache {

// Reads at most one byte past the size limit; throws WorkingFileError when the file cannot be
// opened.
using Reader = std::function<QByteArray(const QString &path)>;

[[nodiscard]] QByteArray readFile(const QString &path);

// The reads for the cards with these folders (by card id), reusing the earlier read of a file
// that has not changed. A card without the file has no entry. Blocks on the file system.
[[nodiscard]] QHash<QString, WorkingFileRead> refreshed(const QHash<QString, WorkingFileRead> &earlier,
                                                        const QHash<QString, QString> &folders,
                                                        const Reader &read = readFile);

} // namespace WorkingFileCache
