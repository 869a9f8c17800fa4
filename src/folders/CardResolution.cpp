#include "CardResolution.h"

#include "BookmarkError.h"
#include "FileIdentity.h"
#include "FolderPaths.h"
#include "FreedesktopTrash.h"
#include "InShares.h"
#include "SecurityScopedBookmark.h"

#include <algorithm>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

using Availability = CardResolution::Availability;

// The verdict when the card's folder cannot be taken from where the bookmark leads: the card
// keeps the name and path it had.
CardResolution missingAsStored(const Card &card, std::optional<QByteArray> refreshed, const QString &failure)
{
    return {card.id, std::nullopt, Availability::missing, card.displayName, card.displayPath, std::move(refreshed),
            failure};
}

// What stands at the resolved place: the resolve already saw it when it confirmed the folder there.
BookmarkPathCheck checkPlace(const ResolvedBookmark &resolved)
{
    if (resolved.isDirectory)
        return SecurityScopedBookmark::checkFoundKind(*resolved.isDirectory, true);
    const SecurityScopedBookmark::ScopedAccess access(resolved.url);
    return SecurityScopedBookmark::checkPath(resolved.url, true);
}

CardResolution fromCheck(const Card &card, ResolvedBookmark resolved, const QString &path)
{
    const BookmarkPathCheck check = checkPlace(resolved);
    CardResolution resolution{card.id, std::move(resolved.url), Availability::available,
                              FolderPaths::lastComponent(path), path, std::move(resolved.refreshedData), std::nullopt};
    if (std::holds_alternative<BookmarkPathCheck::Gone>(check.outcome)) {
        resolution.availability = Availability::missing;
        resolution.locationURL.reset();
        resolution.failure = u"The folder is no longer at this location."_s;
    } else if (const auto *problem = std::get_if<BookmarkPathCheck::Problem>(&check.outcome)) {
        resolution.availability = Availability::unreachable;
        resolution.failure = problem->message;
    }
    return resolution;
}

CardResolution fromResolved(const Card &card, ResolvedBookmark resolved, const ResolutionContext &context)
{
    // A bookmark follows its folder into the Trash; judged from the path alone, before any disk access.
    const QString path = resolved.url.toLocalFile();
    if (FreedesktopTrash::holds(path, context.homeTrashFiles, context.userID))
        return missingAsStored(card, std::move(resolved.refreshedData), u"This folder is in the Trash."_s);
    return fromCheck(card, std::move(resolved), path);
}

using Confirmed = CardResolution::Confirmed;

// A verdict told without a search, and its folder's confirmation where it was found available.
struct Looked {
    std::optional<CardResolution> verdict;
    std::optional<Confirmed> confirmed;
};

// Whether the verdict finds nothing at the place, where a look without a search tells that only
// once a search found the folder nowhere else.
bool isGoneFrom(const CardResolution &verdict, const BookmarkPlace &place)
{
    return verdict.availability == Availability::missing && !verdict.locationURL && !verdict.refreshedBookmark
        && !place.isElsewhere && verdict.displayPath == place.path;
}

Looked lookWithoutSearch(const Card &card, const ResolutionContext &context, FolderWatch *folders)
{
    std::optional<BookmarkPlace> place;
    std::optional<ResolvedBookmark> resolved;
    try {
        place = SecurityScopedBookmark::placeOf(card.bookmark, context);
        // Before the look, so that whatever happens to the folder after it is noted.
        if (folders && !place->isElsewhere)
            folders->arm(place->path);
        resolved = SecurityScopedBookmark::resolveWithoutSearch(card.bookmark, *place, context);
    } catch (const BookmarkError &error) {
        return {missingAsStored(card, std::nullopt, error.text()), std::nullopt};
    }
    if (!resolved)
        return {};
    const auto modified = resolved->modified;
    CardResolution verdict = fromResolved(card, std::move(*resolved), context);
    if (verdict.availability == Availability::available && modified)
        return {std::move(verdict), Confirmed{card.bookmark, context.mountGeneration, std::move(*place), *modified}};
    if (isGoneFrom(verdict, *place))
        return {std::move(verdict), Confirmed{card.bookmark, context.mountGeneration, std::move(*place), 0, true}};
    return {std::move(verdict), std::nullopt};
}

// Whether one look at the place of the card's earlier confirmation settles its verdict: the same
// bookmark under the same mounts leads to the same place, and the same folder found there is
// given the verdict it had. A folder confirmed gone stays gone while nothing appears at its place
// and its failed search stands.
bool isConfirmable(const Card &card, const ResolutionContext &context, const CardResolution &earlier,
                   const Confirmed &confirmed)
{
    if (context.mountGeneration == 0 || confirmed.mountGeneration != context.mountGeneration
        || confirmed.bookmark != card.bookmark)
        return false;
    if (confirmed.isGone)
        return isGoneFrom(earlier, confirmed.place) && context.failedSearches
            && context.failedSearches->contains(card.bookmark);
    return !confirmed.place.isElsewhere && earlier.availability == Availability::available
        && !earlier.refreshedBookmark && earlier.displayPath == confirmed.place.path;
}

// The card's earlier confirmation where one look at its place settles its verdict; else null.
const Confirmed *confirmation(const Card &card, const ResolutionContext &context,
                              const QHash<QString, CardResolution> &earlier,
                              const QHash<QString, Confirmed> &earlierConfirmed)
{
    const auto known = earlier.constFind(card.id);
    const auto confirmed = earlierConfirmed.constFind(card.id);
    if (known == earlier.cend() || confirmed == earlierConfirmed.cend()
        || !isConfirmable(card, context, *known, *confirmed))
        return nullptr;
    return &*confirmed;
}

// One card's share of a look. What repeats the earlier look is flagged rather than made again.
struct CardSlot {
    std::optional<CardResolution> verdict;
    std::optional<Confirmed> confirmed;
    bool isUnchanged = false;
    bool isConfirmedAsBefore = false;
};

// A confirmable folder is armed in `folders` before this; any other, here once its place is known.
CardSlot lookAgain(const Card &card, const ResolutionContext &context, const QHash<QString, CardResolution> &earlier,
                   const QHash<QString, Confirmed> &earlierConfirmed, FolderWatch *folders, EntryReader &reader)
{
    CardSlot slot;
    // A folder found where it was gone from takes the whole look.
    const Confirmed *confirmed = confirmation(card, context, earlier, earlierConfirmed);
    if (confirmed && !confirmed->isGone) {
        if (const auto found = SecurityScopedBookmark::foundAt(confirmed->place, reader)) {
            slot.isUnchanged = true;
            slot.isConfirmedAsBefore = found->modified == confirmed->modified;
            if (!slot.isConfirmedAsBefore) {
                slot.confirmed = *confirmed;
                slot.confirmed->modified = found->modified;
            }
            return slot;
        }
    }
    Looked looked = lookWithoutSearch(card, context, folders);
    const auto known = earlier.constFind(card.id);
    slot.isUnchanged = looked.verdict && known != earlier.cend() && *known == *looked.verdict;
    if (!slot.isUnchanged)
        slot.verdict = std::move(looked.verdict);
    const auto wasConfirmed = earlierConfirmed.constFind(card.id);
    slot.isConfirmedAsBefore = looked.confirmed && wasConfirmed != earlierConfirmed.cend()
        && *looked.confirmed == *wasConfirmed;
    if (!slot.isConfirmedAsBefore)
        slot.confirmed = std::move(looked.confirmed);
    return slot;
}

// Each card's share of a look, in the cards' order. A folder confirmed earlier that the watch has
// noted nothing of since keeps its verdict without a system call; the rest are looked at.
std::vector<CardSlot> slotsOf(const QList<Card> &cards, const ResolutionContext &context,
                              const QHash<QString, CardResolution> &earlier,
                              const QHash<QString, Confirmed> &earlierConfirmed, FolderWatch *folders)
{
    std::vector<CardSlot> cardSlots(size_t(cards.size()));
    std::vector<qsizetype> toLook;
    if (folders)
        folders->takeNotes();
    for (qsizetype i = 0; i < cards.size(); ++i) {
        const Confirmed *confirmed = folders ? confirmation(cards.at(i), context, earlier, earlierConfirmed) : nullptr;
        if (confirmed && folders->isQuiet(confirmed->place.path)) {
            cardSlots[size_t(i)] = {std::nullopt, std::nullopt, true, true};
            continue;
        }
        // Armed here rather than on the threads that look, which would wait on each other for it.
        if (confirmed)
            folders->arm(confirmed->place.path);
        toLook.push_back(i);
    }
    // Each share's slots are made on the thread that looked, so that an unchanged board builds nothing.
    InShares::runInRanges(qsizetype(toLook.size()), [&](qsizetype begin, qsizetype end) {
        EntryReader reader;
        for (qsizetype j = begin; j < end; ++j) {
            const qsizetype i = toLook[size_t(j)];
            cardSlots[size_t(i)] = lookAgain(cards.at(i), context, earlier, earlierConfirmed, folders, reader);
        }
    });
    return cardSlots;
}

// Stops watching folders no card is confirmed at, once the watch holds more than the board.
void watchOnlyConfirmed(FolderWatch &folders, qsizetype cardCount, const QHash<QString, Confirmed> &confirmed)
{
    if (!folders.hasMoreArmedThan(cardCount))
        return;
    QSet<QString> places;
    for (const Confirmed &folder : confirmed)
        places.insert(folder.place.path);
    folders.keepOnly(places);
}

// The earlier table itself when every card's confirmation is as it was, so that nothing is copied.
QHash<QString, Confirmed> confirmedByID(const QList<Card> &cards, std::vector<CardSlot> &cardSlots,
                                        const QHash<QString, Confirmed> &earlier)
{
    // It holds when no card gained a confirmation and every one it has was kept: a folder that stays
    // missing, having none, does not make the table anew at every look.
    const auto kept = std::ranges::count_if(cardSlots, [](const CardSlot &slot) { return slot.isConfirmedAsBefore; });
    const bool gained = std::ranges::any_of(cardSlots, [](const CardSlot &slot) { return slot.confirmed.has_value(); });
    if (!gained && kept == earlier.size())
        return earlier;
    QHash<QString, Confirmed> confirmed;
    confirmed.reserve(cards.size());
    for (qsizetype i = 0; i < cards.size(); ++i) {
        CardSlot &slot = cardSlots[size_t(i)];
        const QString &id = cards.at(i).id;
        if (slot.isConfirmedAsBefore)
            confirmed.insert(id, earlier.value(id));
        else if (slot.confirmed)
            confirmed.insert(id, std::move(*slot.confirmed));
    }
    return confirmed;
}

} // namespace

CardResolution CardResolution::resolve(const Card &card)
{
    return resolve(card, ResolutionContext::current());
}

CardResolution CardResolution::resolve(const Card &card, const ResolutionContext &context)
{
    ResolvedBookmark resolved;
    try {
        resolved = SecurityScopedBookmark::resolve(card.bookmark, context);
    } catch (const BookmarkError &error) {
        return missingAsStored(card, std::nullopt, error.text());
    }
    return fromResolved(card, std::move(resolved), context);
}

QHash<QString, CardResolution> CardResolution::resolveAll(const QList<Card> &cards)
{
    return resolveAll(cards, ResolutionContext::current());
}

QHash<QString, CardResolution> CardResolution::resolveAll(const QList<Card> &cards, const ResolutionContext &context)
{
    // Each card is resolved into its own slot; the dictionary is then filled in list order.
    QList<CardResolution> resolutions(cards.size());
    CardResolution *results = resolutions.data();
    InShares::run(cards.size(), [&](qsizetype i) { results[i] = resolve(cards.at(i), context); });

    QHash<QString, CardResolution> byID;
    byID.reserve(resolutions.size());
    for (CardResolution &resolution : resolutions) {
        const QString id = resolution.cardID;
        byID.insert(id, std::move(resolution));
    }
    return byID;
}

CardResolution::Partial CardResolution::resolveWithoutSearch(const QList<Card> &cards,
                                                             const ResolutionContext &context,
                                                             const QHash<QString, CardResolution> &earlier,
                                                             const QHash<QString, Confirmed> &earlierConfirmed,
                                                             FolderWatch *folders)
{
    std::vector<CardSlot> cardSlots = slotsOf(cards, context, earlier, earlierConfirmed, folders);
    Partial partial;
    partial.confirmed = confirmedByID(cards, cardSlots, earlierConfirmed);
    if (folders)
        watchOnlyConfirmed(*folders, cards.size(), partial.confirmed);
    const bool allUnchanged = earlier.size() == cards.size()
        && std::ranges::all_of(cardSlots, [](const CardSlot &slot) { return slot.isUnchanged; });
    if (allUnchanged) {
        partial.known = earlier;
        return partial;
    }

    partial.known.reserve(cards.size());
    for (qsizetype i = 0; i < cards.size(); ++i) {
        CardSlot &slot = cardSlots[size_t(i)];
        const QString &id = cards.at(i).id;
        if (slot.isUnchanged)
            partial.known.insert(id, earlier.value(id));
        else if (slot.verdict)
            partial.known.insert(id, std::move(*slot.verdict));
        else
            partial.needingSearch.append(cards.at(i));
    }
    return partial;
}

std::optional<FolderIdentity> CardResolution::folderIdentity(const QUrl &url)
{
    const auto identity = FileIdentity::read(url.toLocalFile(), FileIdentity::Detail::statOnly);
    if (!identity)
        return std::nullopt;
    return FolderIdentity{identity->inode, identity->device};
}

bool CardResolution::needsPersisting(const Card &card) const
{
    return card.isMissing != (availability == Availability::missing) || card.displayName != displayName
        || card.displayPath != displayPath || refreshedBookmark.has_value();
}
