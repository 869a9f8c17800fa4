#pragma once

#include "BookmarkPlace.h"
#include "Card.h"
#include "FolderIdentity.h"
#include "FolderWatch.h"
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

    // A folder confirmed at its bookmark's place, with what a later look needs to confirm it there
    // again at one system call: the bookmark that led there and the reading of the mounts it was
    // worked out under (see ResolutionContext::mountGeneration). `modified` is when an entry was
    // last added to or removed from the folder (see FileIdentity::modified). Or, where `isGone`,
    // a folder confirmed missing: nothing stands at its place and a search found it nowhere else.
    struct Confirmed {
        QByteArray bookmark;
        quint64 mountGeneration = 0;
        BookmarkPlace place;
        qint64 modified = 0;
        bool isGone = false;

        bool operator==(const Confirmed &) const = default;
    };

    // The verdicts as far as they go without searching for a folder that is not where it was
    // (see SecurityScopedBookmark::resolveWithoutSearch): those known at once, by id, and the
    // cards left for a search. A verdict equal to the card's `earlier` one is kept as that one, and
    // when every card's is, `known` is `earlier` itself, so that a board whose folders stayed put
    // costs nothing to compare. `confirmed` holds, by card id, each folder found available where
    // its verdict puts it, and each one gone for good; likewise it is `earlierConfirmed` itself
    // when none of those changed. A card confirmed earlier under the same bookmark and the same
    // mounts, whose earlier verdict found its folder there, costs one system call, and none where
    // `folders` has noted nothing of its folder since; one confirmed gone, whose search has not
    // been asked for again, costs none while `folders` has noted nothing where it was. `folders`
    // is armed for each folder looked at.
    struct Partial {
        QHash<QString, CardResolution> known;
        QList<Card> needingSearch;
        QHash<QString, Confirmed> confirmed;
    };
    [[nodiscard]] static Partial resolveWithoutSearch(const QList<Card> &cards, const ResolutionContext &context,
                                                      const QHash<QString, CardResolution> &earlier = {},
                                                      const QHash<QString, Confirmed> &earlierConfirmed = {},
                                                      FolderWatch *folders = nullptr);

    // Absent when nothing can be read at `url`.
    [[nodiscard]] static std::optional<FolderIdentity> folderIdentity(const QUrl &url);

    // Whether the card's row must be rewritten to match this verdict.
    [[nodiscard]] bool needsPersisting(const Card &card) const;

    bool operator==(const CardResolution &) const = default;
};
