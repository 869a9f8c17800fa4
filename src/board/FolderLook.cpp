#include "FolderLook.h"

#include "ResolutionContext.h"
#include "WorkingFileCache.h"

#include <QDateTime>

#include <chrono>
#include <optional>
#include <utility>

namespace {

// A verdict and a working file depend on nothing else of a row.
bool looksTheSame(const Card &row, const Card &lookedAt)
{
    return row.bookmark == lookedAt.bookmark && row.displayPath == lookedAt.displayPath
        && row.displayName == lookedAt.displayName;
}

// The rows of `cards` a look at `lookedAt` does not stand for; rows in the same order, the usual
// case, are matched without building an index.
QList<Card> rowsChanged(const QList<Card> &lookedAt, const QList<Card> &cards)
{
    QList<Card> changed;
    QHash<QString, const Card *> byID;
    for (qsizetype i = 0; i < cards.size(); ++i) {
        const Card &row = cards.at(i);
        const Card *earlier = nullptr;
        if (byID.isEmpty() && i < lookedAt.size() && lookedAt.at(i).id == row.id) {
            earlier = &lookedAt.at(i);
        } else {
            if (byID.isEmpty()) {
                byID.reserve(lookedAt.size());
                for (const Card &card : lookedAt)
                    byID.insert(card.id, &card);
            }
            earlier = byID.value(row.id);
        }
        if (earlier == nullptr || !looksTheSame(row, *earlier))
            changed.append(row);
    }
    return changed;
}

// A folder's timestamps come from a clock that ticks coarsely and may not be this one: a folder
// changed this recently may change again within the same tick, unseen.
constexpr qint64 settledAfter = std::chrono::nanoseconds(std::chrono::seconds(1)).count();

// When the folder of `row` last changed, where the verdict confirmed it at the row's path.
std::optional<qint64> modifiedAtRow(const Card &row, const CardResolution::Partial &verdicts)
{
    const auto modified = verdicts.folderModified.constFind(row.id);
    if (modified == verdicts.folderModified.cend())
        return std::nullopt;
    const auto verdict = verdicts.known.constFind(row.id);
    if (verdict == verdicts.known.cend() || verdict->displayPath != row.displayPath)
        return std::nullopt;
    return *modified;
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

template<typename Value>
void keepOnly(QHash<QString, Value> &table, const QSet<QString> &ids)
{
    table.removeIf([&ids](const auto &entry) { return !ids.contains(entry.key()); });
}

} // namespace

FolderLook FolderLook::of(const QList<Card> &rows, const Earlier &earlier)
{
    if (rows.isEmpty())
        return {};
    const qint64 started = QDateTime::currentMSecsSinceEpoch() * 1'000'000;
    const auto context = ResolutionContext::current(earlier.failedSearches);
    FolderLook look;
    look.verdicts = CardResolution::resolveWithoutSearch(rows, context, earlier.verdicts);
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

FolderLook::OfChanges FolderLook::ofChanges(const QList<Card> &lookedAt, const QList<Card> &cards,
                                            const Earlier &earlier)
{
    const QList<Card> changed = rowsChanged(lookedAt, cards);
    OfChanges changes;
    // Every row present and as it was, and as many rows as before: none was removed.
    changes.hasRemovals = cards.size() - changed.size() != lookedAt.size();
    for (const Card &row : changed)
        changes.changedIDs.insert(row.id);
    changes.look = of(changed, earlier);
    return changes;
}

FolderLook FolderLook::completed(FolderLook early, OfChanges changes, const QList<Card> &cards)
{
    if (changes.changedIDs.isEmpty() && !changes.hasRemovals)
        return early;
    if (changes.changedIDs.size() == cards.size())
        return std::move(changes.look);
    // What the early look said of a removed or changed row no longer holds.
    QSet<QString> standing;
    standing.reserve(cards.size());
    for (const Card &row : cards) {
        if (!changes.changedIDs.contains(row.id))
            standing.insert(row.id);
    }
    keepOnly(early.verdicts.known, standing);
    keepOnly(early.verdicts.folderModified, standing);
    keepOnly(early.readsAtRows, standing);
    keepOnly(early.withoutFile, standing);
    early.verdicts.needingSearch.removeIf([&standing](const Card &row) { return !standing.contains(row.id); });

    early.verdicts.known.insert(changes.look.verdicts.known);
    early.verdicts.needingSearch.append(changes.look.verdicts.needingSearch);
    early.verdicts.folderModified.insert(changes.look.verdicts.folderModified);
    early.readsAtRows.insert(changes.look.readsAtRows);
    early.withoutFile.insert(changes.look.withoutFile);
    return early;
}
