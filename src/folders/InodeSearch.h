#pragma once

#include "FileIdentity.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

// Looks for a file by its inode number where it may have gone: it reads directories and compares
// the inode numbers they list, so an entry costs no stat of its own; a candidate is confirmed by
// its full identity. Every directory read spends one unit of a fixed budget, so a file that is
// gone for good costs a bounded time. Hidden directories and other volumes are not entered.
class InodeSearch {
public:
    struct Found {
        QString path;
        FileIdentity identity;
    };

    InodeSearch(FileIdentity wanted, int directoryBudget);

    // Below `root`, level by level, at most `depth` levels under it.
    [[nodiscard]] std::optional<Found> below(const QString &root, int depth);

    // Around the old place `oldPath`: from its parent (or the nearest ancestor that still exists)
    // and up to `levels` ancestors above that, never above `top`, in rings of equal distance from
    // the old place, so a rename in place is found by the first directory read.
    [[nodiscard]] std::optional<Found> around(const QString &oldPath, const QString &top, int levels);

    [[nodiscard]] int directoriesRead() const { return m_directoriesRead; }

private:
    // Reads one directory: returns the wanted file's path if it is listed there, and adds the
    // subdirectories worth entering (all but `skip`) to `children`.
    std::optional<Found> read(const QByteArray &directory, const QByteArray &skip, QList<QByteArray> &children);
    [[nodiscard]] bool hasBudget() const { return m_directoriesRead < m_budget; }

    FileIdentity m_wanted;
    int m_budget;
    int m_directoriesRead = 0;
};
