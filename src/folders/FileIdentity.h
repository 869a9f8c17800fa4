#pragma once

#include <QByteArray>
#include <QString>
#include <QtGlobal>

#include <optional>

// What makes a file the same file over time on Linux: its device and inode number, confirmed by
// its birth time and by its file handle, which carries the inode's generation and so tells a
// reused inode number apart.
struct FileIdentity {
    // How much to read: the handle costs a second system call, so it is read only where a
    // candidate must be confirmed.
    enum class Detail { statOnly, withHandle };

    quint64 device = 0;
    quint64 inode = 0;
    // A file never changes kind, so this is part of what it is, and tells a caller what it found.
    bool isDirectory = false;
    // Nanoseconds since 1970; absent where the file system keeps no birth time.
    std::optional<qint64> birthTime;
    // The handle type followed by the handle's bytes; empty where the file system gives none.
    QByteArray handle;
    // When the file last changed, in nanoseconds since 1970; for a folder, when an entry was last
    // added, removed or renamed in it. Read along with the rest, but not part of what the file is.
    qint64 modified = 0;

    // The identity of what stands at `path` itself (a final link is not followed). Absent on
    // failure, with errno telling why.
    static std::optional<FileIdentity> read(const QString &path, Detail detail);
    // The same for `path` taken from the directory open at `directory` (a descriptor, or
    // AT_FDCWD), in the file system's encoding.
    static std::optional<FileIdentity> readIn(int directory, const QByteArray &path, Detail detail);

    // Same device, inode and kind, and the same birth time and handle wherever both sides know them.
    [[nodiscard]] bool isSameFileAs(const FileIdentity &other) const;

    bool operator==(const FileIdentity &other) const
    {
        return device == other.device && inode == other.inode && isDirectory == other.isDirectory
            && birthTime == other.birthTime && handle == other.handle;
    }
};
