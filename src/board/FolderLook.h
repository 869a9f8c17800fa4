#pragma once

#include "Card.h"
#include "CardResolution.h"
#include "FailedSearches.h"
#include "WorkingFileRead.h"

#include <QHash>
#include <QList>
#include <QSet>
#include <QString>

#include <memory>

// One look at the folders of some cards, taken away from the interface: each folder's verdict
// where it can be told without a search, and its working file read where its row says it is.
// A reload starts one at the rows it had before it reads the store, and completes it with a
// look at the few rows the store then gives otherwise, so the folders are looked at while the
// store is read.
struct FolderLook {
    // A folder seen without a working file, and when an entry was last added to it or removed
    // from it. While that stays the same no file can have appeared there, so the folder is not
    // looked into again: most folders have no working file, and looking for one would cost as
    // much as the look at the folder itself.
    struct WithoutFile {
        QString path;
        qint64 modified = 0;
        bool operator==(const WithoutFile &) const = default;
    };

    CardResolution::Partial verdicts;
    QHash<QString, WorkingFileRead> readsAtRows;
    // By card id.
    QHash<QString, WithoutFile> withoutFile;

    // The earlier verdicts and reads a look may keep where nothing changed.
    struct Earlier {
        std::shared_ptr<FailedSearches> failedSearches;
        QHash<QString, CardResolution> verdicts;
        QHash<QString, WorkingFileRead> reads;
        QHash<QString, WithoutFile> withoutFile;
    };

    // Looks at the folders of `rows`. Blocks on the file system.
    [[nodiscard]] static FolderLook of(const QList<Card> &rows, const Earlier &earlier);

    // A look at the rows of `cards` that a look at `lookedAt` cannot stand for: new rows, and
    // rows whose bookmark or recorded folder changed. Blocks on the file system.
    struct OfChanges;
    [[nodiscard]] static OfChanges ofChanges(const QList<Card> &lookedAt, const QList<Card> &cards,
                                             const Earlier &earlier);

    // What `early`, taken at earlier rows, and `changes` tell of `cards` together.
    [[nodiscard]] static FolderLook completed(FolderLook early, OfChanges changes, const QList<Card> &cards);
};

struct FolderLook::OfChanges {
    // Empty when every row of `cards` stands as it was looked at and none was removed.
    QSet<QString> changedIDs;
    bool hasRemovals = false;
    FolderLook look;
};
