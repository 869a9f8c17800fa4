#include "FolderLook.h"

#include "ResolutionContext.h"
#include "WorkingFileCache.h"

#include <QDateTime>

#include <chrono>
#include <optional>
#include <utility>
#include <vector>

namespace {

// A folder's timestamps come from a clock that ticks coarsely and may not be this one: a folder
// changed this recently may change again within the same tick, unseen.
constexpr qint64 settledAfter = std::chrono::nanoseconds(std::chrono::seconds(1)).count();

// What the look confirmed at the row's path: the folder there, or that it is gone from there.
const CardResolution::Confirmed *confirmedAtRow(const Card &row,
                                                const QHash<QString, CardResolution::Confirmed> &confirmedByID)
{
    const auto confirmed = confirmedByID.constFind(row.id);
    if (confirmed == confirmedByID.cend() || confirmed->place.path != row.displayPath)
        return nullptr;
    return &*confirmed;
}

// The rows' folders to look into for a working file, by card id, and those known to hold none;
// of the first, when each was last changed where it was confirmed at its row. A folder gone for
// good is neither.
struct FoldersToRead {
    QHash<QString, QString> folders;
    QHash<QString, qint64> modified;
    QHash<QString, FolderLook::WithoutFile> withoutFile;
};

FoldersToRead foldersToRead(const QList<Card> &rows, const QHash<QString, CardResolution::Confirmed> &confirmed,
                            const QHash<QString, FolderLook::WithoutFile> &earlier)
{
    FoldersToRead toRead;
    std::vector<const Card *> stillWithout;
    for (const Card &row : rows) {
        const CardResolution::Confirmed *atRow = confirmedAtRow(row, confirmed);
        // No file can be read in a folder that is not there.
        if (atRow && atRow->isGone)
            continue;
        const auto modified = atRow ? std::optional(atRow->modified) : std::nullopt;
        const auto known = earlier.constFind(row.id);
        if (known != earlier.cend() && known->path == row.displayPath && known->modified == modified) {
            stillWithout.push_back(&row);
            continue;
        }
        toRead.folders.insert(row.id, row.displayPath);
        if (modified)
            toRead.modified.insert(row.id, *modified);
    }
    // The earlier table itself when all of it still holds, so that nothing is copied.
    if (qsizetype(stillWithout.size()) == earlier.size()) {
        toRead.withoutFile = earlier;
        return toRead;
    }
    for (const Card *row : stillWithout)
        toRead.withoutFile.insert(row->id, earlier.value(row->id));
    return toRead;
}

} // namespace

FolderLook FolderLook::of(const QList<Card> &rows, const Earlier &earlier)
{
    if (rows.isEmpty())
        return {};
    const qint64 started = QDateTime::currentMSecsSinceEpoch() * 1'000'000;
    const auto context = earlier.mounts ? ResolutionContext::current(*earlier.mounts, earlier.failedSearches)
                                        : ResolutionContext::current(earlier.failedSearches);
    FolderLook look;
    look.verdicts = CardResolution::resolveWithoutSearch(rows, context, earlier.verdicts, earlier.confirmed,
                                                             earlier.folders.get());
    FoldersToRead toRead = foldersToRead(rows, look.verdicts.confirmed, earlier.withoutFile);
    look.readsAtRows = WorkingFileCache::refreshed(earlier.reads, toRead.folders);
    look.withoutFile = std::move(toRead.withoutFile);
    for (auto folder = toRead.folders.cbegin(); folder != toRead.folders.cend(); ++folder) {
        if (look.readsAtRows.contains(folder.key()))
            continue;
        const auto modified = toRead.modified.constFind(folder.key());
        if (modified != toRead.modified.cend() && *modified < started - settledAfter)
            look.withoutFile.insert(folder.key(), {folder.value(), *modified});
    }
    return look;
}
