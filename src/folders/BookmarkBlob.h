#pragma once

#include "FileIdentity.h"
#include "MountTable.h"

#include <QByteArray>
#include <QString>

// The bytes a bookmark is on Linux: a versioned record of where a file was, what it was, and the
// volume it lives on, enough to find it again after a rename or a move on that volume.
struct BookmarkBlob {
    static constexpr quint32 magic = 0x56424D4B; // "VBMK"
    static constexpr quint16 currentVersion = 1;

    QString path;
    FileIdentity identity;
    MountTable::Mount volume;

    [[nodiscard]] QByteArray encoded() const;

    // Throws BookmarkError (couldNotResolve) for bytes that are empty, foreign, of a later
    // version, cut short or damaged, including a path that does not lie on its own volume.
    static BookmarkBlob decoded(const QByteArray &data);

    bool operator==(const BookmarkBlob &) const = default;
};
