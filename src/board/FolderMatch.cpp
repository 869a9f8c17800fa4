#include "FolderMatch.h"

#include "SecurityScopedBookmark.h"

#include <optional>

namespace {

using Availability = CardResolution::Availability;

std::optional<FolderIdentity> identityWithAccess(const QUrl &url)
{
    const SecurityScopedBookmark::ScopedAccess access(url);
    return CardResolution::folderIdentity(url);
}

std::optional<Card> cardWithIdentity(const FolderIdentity &identity, const QList<Card> &cards,
                                     const QHash<QString, CardResolution> &resolutions)
{
    for (const Card &card : cards) {
        const auto resolution = resolutions.constFind(card.id);
        if (resolution == resolutions.cend() || resolution->availability != Availability::available
            || !resolution->locationURL)
            continue;
        if (identityWithAccess(*resolution->locationURL) == identity)
            return card;
    }
    return std::nullopt;
}

std::optional<Card> strandedCardAt(const QString &path, const QList<Card> &cards,
                                   const QHash<QString, CardResolution> &resolutions)
{
    for (const Card &card : cards) {
        if (card.displayPath != path)
            continue;
        if (card.isMissing)
            return card;
        const auto resolution = resolutions.constFind(card.id);
        if (resolution != resolutions.cend() && resolution->availability == Availability::unreachable)
            return card;
    }
    return std::nullopt;
}

} // namespace

FolderMatch FolderMatch::classify(const QUrl &url, const QList<Card> &cards,
                                  const QHash<QString, CardResolution> &resolutions)
{
    if (const auto identity = identityWithAccess(url)) {
        if (auto card = cardWithIdentity(*identity, cards, resolutions))
            return {AlreadyTracked{std::move(*card)}};
    }
    if (auto card = strandedCardAt(url.toLocalFile(), cards, resolutions))
        return {StrandedCardAtSamePath{std::move(*card)}};
    return {};
}
