#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QtGlobal>

#include <optional>

// The mounts this process sees, read once so that a whole batch of resolutions shares one
// reading, each with the filesystem UUID of its device when the system publishes one.
class MountTable {
public:
    struct Mount {
        quint64 device = 0;
        // The directory of its filesystem that the mount shows ("/" unless it is a bind mount).
        QString root;
        QString mountPoint;
        QString fileSystemType;
        QString source;
        std::optional<QString> uuid;

        bool operator==(const Mount &) const = default;
    };

    // One link of /dev/disk/by-uuid: the UUID, the device node it leads to and that node's number.
    struct DiskLink {
        QString uuid;
        QString devicePath;
        quint64 device = 0;
    };

    MountTable() = default;

    // /proc/self/mountinfo with the UUIDs of /dev/disk/by-uuid; empty where neither can be read.
    static MountTable read();
    // The lines of a mountinfo file, without UUIDs.
    static MountTable parse(const QByteArray &mountInfo);

    // Gives a mount the UUID of the link whose device number or device node is the mount's own.
    void attachUuids(const QList<DiskLink> &links);

    [[nodiscard]] const QList<Mount> &mounts() const { return m_mounts; }

    // The mount that holds `path`: the deepest mount point above it, the later one where a mount
    // was stacked on another.
    [[nodiscard]] std::optional<Mount> mountContaining(const QString &path) const;

    // Where the volume of a mount recorded earlier is mounted now. A volume with a UUID is found by
    // it wherever it is mounted (preferring its old mount point); one without must be at its old
    // mount point from the same source. Null when it is not mounted. The mount is lent, not
    // copied, because threads resolving side by side share the table.
    [[nodiscard]] const Mount *find(const Mount &recorded) const;

private:
    explicit MountTable(QList<Mount> mounts) : m_mounts(std::move(mounts)) {}

    QList<Mount> m_mounts;
};
