#pragma once

#include "MountTable.h"

#include <QMutex>
#include <QtGlobal>

#include <optional>

// The mount table, read again only once something was mounted, unmounted or moved: the kernel
// flags /proc/self/mountinfo at each such change, and a disk that comes with a UUID changes
// /dev/disk/by-uuid. Each reading has a number that stays the same while the table does, so that
// what was worked out from one reading can be known to still hold. Shared between the board and
// the threads that resolve for it.
class MountWatch {
public:
    MountWatch();
    ~MountWatch();
    MountWatch(const MountWatch &) = delete;
    MountWatch &operator=(const MountWatch &) = delete;

    struct Reading {
        MountTable table;
        // Never 0. Where the kernel's flag cannot be watched, every reading has a new number.
        quint64 generation = 0;
    };

    [[nodiscard]] Reading current();

private:
    [[nodiscard]] bool hasChanged();

    QMutex m_mutex;
    int m_mountInfo = -1;
    qint64 m_diskLinksModified = -1;
    std::optional<Reading> m_reading;
};
