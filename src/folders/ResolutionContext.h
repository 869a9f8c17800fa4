#pragma once

#include "MountTable.h"

#include <QString>

// What following bookmarks needs to know about this machine, read once and shared by a whole
// batch: the mounts, the user's home and home Trash, and the user's id.
struct ResolutionContext {
    MountTable mounts;
    // Both canonical where they exist, as resolved paths are; empty when unknown.
    QString homeDirectory;
    QString homeTrashFiles;
    uint userID = 0;

    static ResolutionContext current();
};
