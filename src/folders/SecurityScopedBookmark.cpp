#include "SecurityScopedBookmark.h"

#include "BookmarkBlob.h"
#include "BookmarkError.h"
#include "FolderPaths.h"
#include "FreedesktopTrash.h"
#include "InodeSearch.h"

#include <QFile>

#include <sys/stat.h>

#include <cerrno>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

// Enough to reach a folder moved into any one of ten thousand sibling folders; a folder that is
// gone for good costs about a tenth of a second with the directories cached.
constexpr int searchBudget = 12'000;
constexpr int ancestorLevels = 3;
// The Trash's own entries and one level inside them: a folder thrown away with its parent.
constexpr int trashDepth = 1;

struct Located {
    QString path;
    bool isStale = false;
    std::optional<bool> isDirectory;
    std::optional<qint64> modified;
};

[[noreturn]] void refuseCreate(const QString &path, const QString &underlying)
{
    throw BookmarkError(BookmarkError::CouldNotCreate{path, underlying});
}

[[noreturn]] void refuseNotMounted(const MountTable::Mount &volume)
{
    const QString name = volume.mountPoint == u"/"_s ? volume.source : FolderPaths::lastComponent(volume.mountPoint);
    throw BookmarkError(BookmarkError::CouldNotResolve{u"The volume “%1” is not mounted."_s.arg(name)});
}

QString canonicalPath(const QString &path)
{
    char *real = realpath(QFile::encodeName(path).constData(), nullptr);
    if (real == nullptr)
        refuseCreate(path, qt_error_string(errno));
    const QString canonical = QFile::decodeName(real);
    std::free(real);
    return canonical;
}

// The recorded path as it lies under the volume's present mount, which may be another mount
// point, or a bind mount showing another part of the file system; absent when this mount does
// not show it.
std::optional<QString> presentPlace(const BookmarkBlob &blob, const MountTable::Mount &present)
{
    if (present.mountPoint == blob.volume.mountPoint && present.root == blob.volume.root)
        return blob.path;
    const auto belowMount = FolderPaths::relativeTo(blob.path, blob.volume.mountPoint);
    if (!belowMount)
        return std::nullopt;
    const QString inFileSystem = FolderPaths::joined(blob.volume.root, *belowMount);
    const auto belowPresentRoot = FolderPaths::relativeTo(inFileSystem, present.root);
    if (!belowPresentRoot)
        return std::nullopt;
    return FolderPaths::joined(present.mountPoint, *belowPresentRoot);
}

// A volume mounted again may carry another device number; the file's identity moves with it.
FileIdentity wantedIdentity(const BookmarkBlob &blob, const MountTable::Mount &present)
{
    FileIdentity wanted = blob.identity;
    if (wanted.device == blob.volume.device)
        wanted.device = present.device;
    return wanted;
}

// The search climbs towards the volume's top, but not out of the user's home, and not up to the
// root directory itself, whose other branches hold the system's files.
QString searchTop(const QString &place, const QString &mountPoint, const QString &home)
{
    if (!home.isEmpty() && FolderPaths::relativeTo(home, mountPoint) && FolderPaths::relativeTo(place, home))
        return home;
    if (mountPoint != u"/"_s)
        return mountPoint;
    return u"/"_s + place.section(u'/', 1, 1);
}

std::optional<InodeSearch::Found> searchTrash(InodeSearch &search, const ResolutionContext &context,
                                   const MountTable::Mount &present, const FileIdentity &wanted)
{
    QStringList directories = FreedesktopTrash::volumeFilesDirectories(present.mountPoint, context.userID);
    if (!context.homeTrashFiles.isEmpty()) {
        const auto home = FileIdentity::read(context.homeTrashFiles, FileIdentity::Detail::statOnly);
        if (home && home->device == wanted.device)
            directories.prepend(context.homeTrashFiles);
    }
    for (const QString &directory : std::as_const(directories)) {
        if (auto found = search.below(directory, trashDepth))
            return found;
    }
    return std::nullopt;
}

// With a birth time to compare, inode and birth time tell the file apart at one system call.
FileIdentity::Detail detailToConfirm(const FileIdentity &wanted)
{
    return wanted.birthTime ? FileIdentity::Detail::statOnly : FileIdentity::Detail::withHandle;
}

// Where the bookmark leads without a search: its recorded place when the same file is there, or,
// when an earlier search for it found nothing, whatever stands there now. Absent when only a
// search can tell.
std::optional<Located> locateWithoutSearch(const QByteArray &data, const BookmarkPlace &place,
                                           const ResolutionContext &context)
{
    const auto atPlace = FileIdentity::read(place.path, detailToConfirm(place.wanted));
    if (atPlace && atPlace->isSameFileAs(place.wanted))
        return Located{place.path, place.isElsewhere, atPlace->isDirectory, atPlace->modified};
    if (context.failedSearches && context.failedSearches->contains(data))
        return Located{place.path, atPlace.has_value() || place.isElsewhere, std::nullopt, std::nullopt};
    return std::nullopt;
}

Located locate(const QByteArray &data, const BookmarkPlace &place, const MountTable::Mount &present,
               const ResolutionContext &context)
{
    if (auto located = locateWithoutSearch(data, place, context))
        return *located;
    InodeSearch search(place.wanted, searchBudget);
    auto found = searchTrash(search, context, present, place.wanted);
    if (!found)
        found = search.around(place.path, searchTop(place.path, present.mountPoint, context.homeDirectory),
                              ancestorLevels);
    if (found)
        return {found->path, true, found->identity.isDirectory, found->identity.modified};
    if (context.failedSearches)
        context.failedSearches->insert(data);
    // The original is nowhere near: whatever stands at its old path now takes its place.
    const bool somethingAtPlace = FileIdentity::read(place.path, FileIdentity::Detail::statOnly).has_value();
    return {place.path, somethingAtPlace || place.isElsewhere, std::nullopt, std::nullopt};
}

struct Placed {
    BookmarkPlace place;
    const MountTable::Mount *present;
};

// The bookmark read and its volume found mounted; throws BookmarkError otherwise.
Placed placed(const QByteArray &data, const ResolutionContext &context)
{
    const BookmarkBlob blob = BookmarkBlob::decoded(data);
    const MountTable::Mount *present = context.mounts.find(blob.volume);
    if (present == nullptr)
        refuseNotMounted(blob.volume);
    auto path = presentPlace(blob, *present);
    if (!path)
        refuseNotMounted(blob.volume);
    const bool isElsewhere = *path != blob.path;
    return {{std::move(*path), wantedIdentity(blob, *present), isElsewhere}, present};
}

ResolvedBookmark resolved(const Located &located, const ResolutionContext &context)
{
    const QUrl url = QUrl::fromLocalFile(located.path);
    if (!located.isStale)
        return {url, std::nullopt, located.isDirectory, located.modified};
    // A stale bookmark that cannot be renewed now is no failure: the next resolve tries again.
    const SecurityScopedBookmark::ScopedAccess access(url);
    try {
        return {url, SecurityScopedBookmark::create(url, context.mounts), located.isDirectory, located.modified};
    } catch (const BookmarkError &) {
        return {url, std::nullopt, located.isDirectory, located.modified};
    }
}

} // namespace

namespace SecurityScopedBookmark {

ScopedAccess::ScopedAccess(QUrl url) : m_url(std::move(url)), m_didStart(false) {}

QByteArray create(const QUrl &url)
{
    return create(url, MountTable::read());
}

QByteArray create(const QUrl &url, const MountTable &mounts)
{
    if (!url.isLocalFile())
        refuseCreate(url.toString(), u"Only files on this computer can be bookmarked."_s);
    const QString path = canonicalPath(url.toLocalFile());
    const auto identity = FileIdentity::read(path, FileIdentity::Detail::withHandle);
    if (!identity)
        refuseCreate(url.toLocalFile(), qt_error_string(errno));
    const auto volume = mounts.mountContaining(path);
    if (!volume)
        refuseCreate(url.toLocalFile(), u"No mounted volume holds this path."_s);
    return BookmarkBlob{path, *identity, *volume}.encoded();
}

ResolvedBookmark resolve(const QByteArray &data)
{
    return resolve(data, ResolutionContext::current());
}

ResolvedBookmark resolve(const QByteArray &data, const ResolutionContext &context)
{
    const Placed at = placed(data, context);
    return resolved(locate(data, at.place, *at.present, context), context);
}

BookmarkPlace placeOf(const QByteArray &data, const ResolutionContext &context)
{
    return placed(data, context).place;
}

std::optional<ResolvedBookmark> resolveWithoutSearch(const QByteArray &data, const BookmarkPlace &place,
                                                     const ResolutionContext &context)
{
    const auto located = locateWithoutSearch(data, place, context);
    if (!located)
        return std::nullopt;
    return resolved(*located, context);
}

std::optional<FileIdentity> foundAt(const BookmarkPlace &place, EntryReader &reader)
{
    auto atPlace = reader.read(place.path, detailToConfirm(place.wanted));
    if (atPlace && atPlace->isSameFileAs(place.wanted))
        return atPlace;
    return std::nullopt;
}

BookmarkPathCheck checkPath(const QUrl &url, bool expectsDirectory)
{
    const QByteArray path = QFile::encodeName(url.toLocalFile());
    struct stat status {};
    if (stat(path.constData(), &status) == 0)
        return checkFoundKind(S_ISDIR(status.st_mode), expectsDirectory);
    // A link that leads nowhere is still something at the path.
    if (lstat(path.constData(), &status) == 0)
        return {BookmarkPathCheck::Reachable{}};
    return checkFailure(errno);
}

BookmarkPathCheck checkFoundKind(bool isDirectory, bool expectsDirectory)
{
    if (isDirectory == expectsDirectory)
        return {BookmarkPathCheck::Reachable{}};
    return {BookmarkPathCheck::Problem{expectsDirectory ? u"A file is at this path, not a folder."_s
                                                        : u"A folder is at this path, not a file."_s}};
}

BookmarkPathCheck checkFailure(int errorCode)
{
    if (errorCode == EACCES || errorCode == EPERM)
        return {BookmarkPathCheck::Problem{u"Velto does not currently have permission to read this folder."_s}};
    return {BookmarkPathCheck::Gone{}};
}

} // namespace SecurityScopedBookmark
