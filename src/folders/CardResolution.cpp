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

// A verdict told without a search, and when its folder last changed where it was confirmed.
struct Looked {
    std::optional<CardResolution> verdict;
    std::optional<qint64> folderModified;
};

Looked lookWithoutSearch(const Card &card, const ResolutionContext &context)
{
    std::optional<ResolvedBookmark> resolved;
    try {
        resolved = SecurityScopedBookmark::resolveWithoutSearch(card.bookmark, context);
    } catch (const BookmarkError &error) {
        return {missingAsStored(card, std::nullopt, error.text()), std::nullopt};
    }
    if (!resolved)
        return {};
    const auto modified = resolved->modified;
    CardResolution verdict = fromResolved(card, std::move(*resolved), context);
    const bool isThere = verdict.availability == Availability::available;
    return {std::move(verdict), isThere ? modified : std::nullopt};
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
                                                             const QHash<QString, CardResolution> &earlier)
{
    // Each card's verdict lands in its own slot, and one that repeats the earlier verdict is
    // dropped there, on the thread that made it, so that an unchanged board builds nothing.
    struct Slot {
        std::optional<CardResolution> verdict;
        std::optional<qint64> folderModified;
        bool isUnchanged = false;
    };
    std::vector<Slot> cardSlots(size_t(cards.size()));
    InShares::run(cards.size(), [&](qsizetype i) {
        Slot &slot = cardSlots[size_t(i)];
        auto looked = lookWithoutSearch(cards.at(i), context);
        slot.verdict = std::move(looked.verdict);
        slot.folderModified = looked.folderModified;
        const auto known = earlier.constFind(cards.at(i).id);
        if (slot.verdict && known != earlier.cend() && *known == *slot.verdict) {
            slot.verdict.reset();
            slot.isUnchanged = true;
        }
    });
    Partial partial;
    partial.folderModified.reserve(cards.size());
    for (qsizetype i = 0; i < cards.size(); ++i) {
        if (const auto modified = cardSlots[size_t(i)].folderModified)
            partial.folderModified.insert(cards.at(i).id, *modified);
    }
    const bool allUnchanged = earlier.size() == cards.size()
        && std::ranges::all_of(cardSlots, [](const Slot &slot) { return slot.isUnchanged; });
    if (allUnchanged) {
        partial.known = earlier;
        return partial;
    }

    partial.known.reserve(cards.size());
    for (qsizetype i = 0; i < cards.size(); ++i) {
        Slot &slot = cardSlots[size_t(i)];
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
