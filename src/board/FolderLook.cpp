#include "FolderLook.h"

#include "ResolutionContext.h"
#include "WorkingFileCache.h"

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

QHash<QString, QString> foldersOfRows(const QList<Card> &rows)
{
    QHash<QString, QString> folders;
    folders.reserve(rows.size());
    for (const Card &row : rows)
        folders.insert(row.id, row.displayPath);
    return folders;
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
    const auto context = ResolutionContext::current(earlier.failedSearches);
    return {CardResolution::resolveWithoutSearch(rows, context, earlier.verdicts),
            WorkingFileCache::refreshed(earlier.reads, foldersOfRows(rows))};
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
    keepOnly(early.readsAtRows, standing);
    early.verdicts.needingSearch.removeIf([&standing](const Card &row) { return !standing.contains(row.id); });

    early.verdicts.known.insert(changes.look.verdicts.known);
    early.verdicts.needingSearch.append(changes.look.verdicts.needingSearch);
    early.readsAtRows.insert(changes.look.readsAtRows);
    return early;
}
