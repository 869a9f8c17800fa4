#pragma once

#include "Card.h"
#include "FolderIdentity.h"
#include "ResolutionContext.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>
#include <QUrl>

#include <optional>

// The verdict on one card's folder at one moment: where it is, whether it can be used, what name
// and path to show, which new bookmark to store, and what to tell the user. Made without the
// database; every failure becomes a verdict.
struct CardResolution {
    enum class Availability { available, missing, unreachable };

    QString cardID;
    std::optional<QUrl> locationURL;
    Availability availability = Availability::missing;
    QString displayName;
    QString displayPath;
    std::optional<QByteArray> refreshedBookmark;
    std::optional<QString> failure;

    [[nodiscard]] static CardResolution resolve(const Card &card);
    [[nodiscard]] static CardResolution resolve(const Card &card, const ResolutionContext &context);

    // Every card, by id; a later card with the same id replaces an earlier one. Blocks on the
    // file system, so it never runs on the GUI thread.
    [[nodiscard]] static QHash<QString, CardResolution> resolveAll(const QList<Card> &cards);
    [[nodiscard]] static QHash<QString, CardResolution> resolveAll(const QList<Card> &cards,
                                                                   const ResolutionContext &context);

    // The verdicts as far as they go without searching for a folder that is not where it was
    // (see SecurityScopedBookmark::resolveWithoutSearch): those known at once, by id, and the
    // cards left for a search. A verdict equal to the card's `earlier` one is kept as that one, and
    // when every card's is, `known` is `earlier` itself, so that a board whose folders stayed put
    // costs nothing to compare.
    // `folderModified` holds, for each folder confirmed where its card's verdict puts it, when an
    // entry was last added to or removed from it (see FileIdentity::modified).
    struct Partial {
        QHash<QString, CardResolution> known;
        QList<Card> needingSearch;
        QHash<QString, qint64> folderModified;
    };
    [[nodiscard]] static Partial resolveWithoutSearch(const QList<Card> &cards, const ResolutionContext &context,
                                                      const QHash<QString, CardResolution> &earlier = {});

    // Absent when nothing can be read at `url`.
    [[nodiscard]] static std::optional<FolderIdentity> folderIdentity(const QUrl &url);

    // Whether the card's row must be rewritten to match this verdict.
    [[nodiscard]] bool needsPersisting(const Card &card) const;

    bool operator==(const CardResolution &) const = default;
};
