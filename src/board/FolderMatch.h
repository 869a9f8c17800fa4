#pragma once

#include "Card.h"
#include "CardResolution.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QUrl>

#include <variant>

// What the board already knows of a folder about to be added.
struct FolderMatch {
    // This very folder has a card, found by its identity on disk wherever it now is.
    struct AlreadyTracked {
        Card card;
        bool operator==(const AlreadyTracked &) const = default;
    };
    // A card that lost its folder remembers this path: the folder, or access to it, came back.
    struct StrandedCardAtSamePath {
        Card card;
        bool operator==(const StrandedCardAtSamePath &) const = default;
    };
    struct NotTracked {
        bool operator==(const NotTracked &) const = default;
    };

    std::variant<AlreadyTracked, StrandedCardAtSamePath, NotTracked> value = NotTracked{};

    // Identity first, so a folder renamed or moved since its card was made is still recognised;
    // then the path, for cards whose folder is missing or out of reach. Reads the disk.
    [[nodiscard]] static FolderMatch classify(const QUrl &url, const QList<Card> &cards,
                                              const QHash<QString, CardResolution> &resolutions);

    bool operator==(const FolderMatch &) const = default;
};
