#include "FolderLook.h"

#include "ResolutionContext.h"
#include "WorkingFileCache.h"

#include <QDateTime>

#include <chrono>
#include <optional>
#include <utility>

namespace {

// A folder's timestamps come from a clock that ticks coarsely and may not be this one: a folder
// changed this recently may change again within the same tick, unseen.
constexpr qint64 settledAfter = std::chrono::nanoseconds(std::chrono::seconds(1)).count();

// When the folder of `row` last changed, where the verdict confirmed it at the row's path.
std::optional<qint64> modifiedAtRow(const Card &row, const CardResolution::Partial &verdicts)
{
    const auto confirmed = verdicts.confirmed.constFind(row.id);
    if (confirmed == verdicts.confirmed.cend())
        return std::nullopt;
    const auto verdict = verdicts.known.constFind(row.id);
    if (verdict == verdicts.known.cend() || verdict->displayPath != row.displayPath)
        return std::nullopt;
    return confirmed->modified;
}

// The rows' folders to look into for a working file, by card id, and those known to hold none.
struct FoldersToRead {
    QHash<QString, QString> folders;
    QHash<QString, FolderLook::WithoutFile> withoutFile;
};

FoldersToRead foldersToRead(const QList<Card> &rows, const CardResolution::Partial &verdicts,
                            const QHash<QString, FolderLook::WithoutFile> &earlier)
{
    FoldersToRead toRead;
    toRead.folders.reserve(rows.size());
    for (const Card &row : rows) {
        const auto known = earlier.constFind(row.id);
        if (known != earlier.cend() && known->path == row.displayPath && known->modified == modifiedAtRow(row, verdicts))
            toRead.withoutFile.insert(row.id, *known);
        else
            toRead.folders.insert(row.id, row.displayPath);
    }
    // The earlier table itself when all of it still holds, so that nothing is copied.
    if (toRead.withoutFile.size() == earlier.size())
        toRead.withoutFile = earlier;
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
    look.verdicts = CardResolution::resolveWithoutSearch(rows, context, earlier.verdicts, earlier.confirmed);
    FoldersToRead toRead = foldersToRead(rows, look.verdicts, earlier.withoutFile);
    look.readsAtRows = WorkingFileCache::refreshed(earlier.reads, toRead.folders);
    look.withoutFile = std::move(toRead.withoutFile);
    for (const Card &row : rows) {
        if (!toRead.folders.contains(row.id) || look.readsAtRows.contains(row.id))
            continue;
        if (const auto modified = modifiedAtRow(row, look.verdicts); modified && *modified < started - settledAfter)
            look.withoutFile.insert(row.id, {row.displayPath, *modified});
    }
    return look;
}
