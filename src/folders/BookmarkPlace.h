#pragma once

#include "FileIdentity.h"

#include <QString>

// Where a bookmark's item should stand under the present mounts, and what to find there. It
// follows from the bookmark and the mounts alone, so it holds for as long as both stay the same.
struct BookmarkPlace {
    QString path;
    FileIdentity wanted;
    // The volume is mounted elsewhere than when the bookmark was made: a bookmark that leads
    // here is stale even where its item is found.
    bool isElsewhere = false;

    bool operator==(const BookmarkPlace &) const = default;
};
