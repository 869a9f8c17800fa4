#pragma once

#include "FailedSearches.h"
#include "MountTable.h"
#include "MountWatch.h"

#include <QString>

#include <memory>

// What following bookmarks needs to know about this machine, read once and shared by a whole
// batch: the mounts, the user's home and home Trash, and the user's id.
struct ResolutionContext {
    MountTable mounts;
    // Both canonical where they exist, as resolved paths are; empty when unknown.
    QString homeDirectory;
    QString homeTrashFiles;
    uint userID = 0;
    // Bookmarks not to search for again; absent, every bookmark away from its place is searched for.
    std::shared_ptr<FailedSearches> failedSearches;
    // The number of the watch's reading that `mounts` is (see MountWatch); 0 when they were read
    // for this context alone, so that nothing worked out from them is known to hold later.
    quint64 mountGeneration = 0;

    static ResolutionContext current(std::shared_ptr<FailedSearches> failedSearches = {});
    static ResolutionContext current(MountWatch &mounts, std::shared_ptr<FailedSearches> failedSearches = {});
};
