#pragma once

#include "Card.h"
#include "CardResolution.h"
#include "FailedSearches.h"
#include "FolderWatch.h"
#include "MountWatch.h"
#include "WorkingFileRead.h"

#include <QHash>
#include <QList>
#include <QString>

#include <memory>

// One look at the folders of some cards, taken away from the interface: each folder's verdict
// where it can be told without a search, and its working file read where its row says it is.
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

    // The earlier verdicts, confirmations and reads a look may keep where nothing changed; the
    // mounts are read through `mounts` where there is one, so that a confirmation can hold, and
    // a confirmed folder `folders` noted nothing of is not looked at again.
    struct Earlier {
        std::shared_ptr<FailedSearches> failedSearches;
        std::shared_ptr<MountWatch> mounts;
        std::shared_ptr<FolderWatch> folders;
        QHash<QString, CardResolution> verdicts;
        QHash<QString, CardResolution::Confirmed> confirmed;
        QHash<QString, WorkingFileRead> reads;
        QHash<QString, WithoutFile> withoutFile;
    };

    // Looks at the folders of `rows`. Blocks on the file system.
    [[nodiscard]] static FolderLook of(const QList<Card> &rows, const Earlier &earlier);
};
