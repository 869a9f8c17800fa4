#pragma once

#include "BookmarkPathCheck.h"
#include "BookmarkPlace.h"
#include "EntryReader.h"
#include "ResolutionContext.h"
#include "ResolvedBookmark.h"

#include <QByteArray>
#include <QUrl>

#include <optional>

// Durable references to a user's files and folders that survive a rename or a move on their
// volume, and the test of what stands at a path. Failures are BookmarkError.
namespace SecurityScopedBookmark {

// Holds access to a location for as long as it lives. Linux decides access by permissions
// alone, so there is never a scope to open and `didStart` is always false; the object keeps the
// shape of holding one so that callers hold access exactly where it would be needed.
class ScopedAccess {
public:
    explicit ScopedAccess(QUrl url);
    ScopedAccess(const ScopedAccess &) = delete;
    ScopedAccess &operator=(const ScopedAccess &) = delete;

    [[nodiscard]] const QUrl &url() const { return m_url; }
    [[nodiscard]] bool didStart() const { return m_didStart; }

private:
    QUrl m_url;
    bool m_didStart;
};

// A bookmark of the local file or folder at `url`; throws BookmarkError (couldNotCreate).
[[nodiscard]] QByteArray create(const QUrl &url);
[[nodiscard]] QByteArray create(const QUrl &url, const MountTable &mounts);

// Where a bookmark leads now: at its recorded place if the same file is still there, else where
// it was found in the Trash or nearby (stale, with a fresh blob), else the recorded place itself.
// Throws BookmarkError (couldNotResolve) for a blob it cannot read or a volume that is not mounted.
[[nodiscard]] ResolvedBookmark resolve(const QByteArray &data);
[[nodiscard]] ResolvedBookmark resolve(const QByteArray &data, const ResolutionContext &context);

// Where the bookmarked item should stand under the mounts of `context`. Throws BookmarkError
// (couldNotResolve) like resolve.
[[nodiscard]] BookmarkPlace placeOf(const QByteArray &data, const ResolutionContext &context);

// The same as resolve, as far as it goes without searching, from the bookmark's `place`: absent
// when the item is not there and the context does not hold that a search for it found nothing.
[[nodiscard]] std::optional<ResolvedBookmark> resolveWithoutSearch(const QByteArray &data, const BookmarkPlace &place,
                                                                   const ResolutionContext &context);

// What stands at `place` when it is the bookmarked item itself; absent when it is not. One
// system call where the bookmark recorded the item's birth time.
[[nodiscard]] std::optional<FileIdentity> foundAt(const BookmarkPlace &place, EntryReader &reader);

// Whether what stands at `url` can be used as a folder (or a file); never fails.
[[nodiscard]] BookmarkPathCheck checkPath(const QUrl &url, bool expectsDirectory);

// The verdict on something found at a path, by its kind and the kind wanted.
[[nodiscard]] BookmarkPathCheck checkFoundKind(bool isDirectory, bool expectsDirectory);

// The verdict when neither the path nor a link at it could be read, by errno.
[[nodiscard]] BookmarkPathCheck checkFailure(int errorCode);

} // namespace SecurityScopedBookmark
