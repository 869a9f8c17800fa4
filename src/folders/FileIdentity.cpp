#include "FileIdentity.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

#include <array>

namespace {

QByteArray handleOf(int directory, const QByteArray &path)
{
    alignas(file_handle) std::array<char, sizeof(file_handle) + MAX_HANDLE_SZ> storage{};
    auto *header = reinterpret_cast<file_handle *>(storage.data());
    header->handle_bytes = MAX_HANDLE_SZ;
    int mountId = 0;
    if (name_to_handle_at(directory, path.constData(), header, &mountId, 0) != 0)
        return {};
    QByteArray handle(reinterpret_cast<const char *>(&header->handle_type), sizeof(header->handle_type));
    handle.append(storage.data() + sizeof(file_handle), header->handle_bytes);
    return handle;
}

} // namespace

std::optional<FileIdentity> FileIdentity::read(const QString &path, Detail detail)
{
    return readIn(AT_FDCWD, QFile::encodeName(path), detail);
}

std::optional<FileIdentity> FileIdentity::readIn(int directory, const QByteArray &path, Detail detail)
{
    struct statx status {};
    if (statx(directory, path.constData(), AT_SYMLINK_NOFOLLOW, STATX_TYPE | STATX_INO | STATX_BTIME | STATX_MTIME,
              &status) != 0)
        return std::nullopt;

    FileIdentity identity;
    identity.device = makedev(status.stx_dev_major, status.stx_dev_minor);
    identity.inode = status.stx_ino;
    identity.isDirectory = S_ISDIR(status.stx_mode);
    if (status.stx_mask & STATX_BTIME)
        identity.birthTime = qint64(status.stx_btime.tv_sec) * 1'000'000'000 + status.stx_btime.tv_nsec;
    identity.modified = qint64(status.stx_mtime.tv_sec) * 1'000'000'000 + status.stx_mtime.tv_nsec;
    if (detail == Detail::withHandle)
        identity.handle = handleOf(directory, path);
    return identity;
}

bool FileIdentity::isSameFileAs(const FileIdentity &other) const
{
    if (device != other.device || inode != other.inode || isDirectory != other.isDirectory)
        return false;
    if (birthTime && other.birthTime && *birthTime != *other.birthTime)
        return false;
    return handle.isEmpty() || other.handle.isEmpty() || handle == other.handle;
}
