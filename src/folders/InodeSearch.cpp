#include "InodeSearch.h"

#include "FolderPaths.h"

#include <QFile>

#include <dirent.h>
#include <sys/stat.h>

#include <cstring>

namespace {

QByteArray childPath(const QByteArray &directory, const char *name)
{
    QByteArray path = directory;
    if (!path.endsWith('/'))
        path.append('/');
    return path.append(name);
}

bool isDirectory(const QString &path)
{
    struct stat status {};
    return stat(QFile::encodeName(path).constData(), &status) == 0 && S_ISDIR(status.st_mode);
}

// The directories to search from: the nearest existing ancestor of `oldPath`, then its ancestors,
// `levels` of them at most, none above `top`.
QList<QByteArray> searchRoots(const QString &oldPath, const QString &top, int levels)
{
    QString directory = FolderPaths::parent(oldPath);
    while (directory != top && FolderPaths::relativeTo(directory, top) && !isDirectory(directory))
        directory = FolderPaths::parent(directory);
    if (!FolderPaths::relativeTo(directory, top))
        return {};

    QList<QByteArray> roots{QFile::encodeName(directory)};
    while (roots.size() <= levels && directory != top) {
        directory = FolderPaths::parent(directory);
        roots.append(QFile::encodeName(directory));
    }
    return roots;
}

} // namespace

InodeSearch::InodeSearch(FileIdentity wanted, int directoryBudget)
    : m_wanted(std::move(wanted)), m_budget(directoryBudget)
{
}

std::optional<InodeSearch::Found> InodeSearch::below(const QString &root, int depth)
{
    QList<QByteArray> level{QFile::encodeName(root)};
    for (int d = 0; d <= depth && !level.isEmpty(); ++d) {
        QList<QByteArray> next;
        for (const QByteArray &directory : level) {
            if (auto found = read(directory, {}, next))
                return found;
        }
        level = d < depth ? std::move(next) : QList<QByteArray>();
    }
    return std::nullopt;
}

std::optional<InodeSearch::Found> InodeSearch::around(const QString &oldPath, const QString &top, int levels)
{
    const QList<QByteArray> roots = searchRoots(oldPath, top, levels);
    // frontiers[i]: the directories of the current ring below roots[i].
    QList<QList<QByteArray>> frontiers(roots.size());
    for (qsizetype ring = 0; hasBudget(); ++ring) {
        bool anyLeft = false;
        // Nearer roots' deeper levels are larger, so the single new ancestor goes first.
        for (qsizetype i = std::min(ring, roots.size() - 1); i >= 0; --i) {
            if (i == ring)
                frontiers[i] = {roots.at(i)};
            const QByteArray skip = i > 0 ? roots.at(i - 1) : QByteArray();
            QList<QByteArray> next;
            for (const QByteArray &directory : std::as_const(frontiers[i])) {
                if (auto found = read(directory, skip, next))
                    return found;
            }
            frontiers[i] = std::move(next);
            anyLeft = anyLeft || !frontiers[i].isEmpty();
        }
        if (!anyLeft && ring + 1 >= roots.size())
            break;
    }
    return std::nullopt;
}

std::optional<InodeSearch::Found> InodeSearch::read(const QByteArray &directory, const QByteArray &skip,
                                            QList<QByteArray> &children)
{
    if (!hasBudget())
        return std::nullopt;
    ++m_directoriesRead;
    DIR *stream = opendir(directory.constData());
    if (stream == nullptr)
        return std::nullopt;
    struct stat status {};
    std::optional<Found> found;
    if (fstat(dirfd(stream), &status) == 0 && status.st_dev == m_wanted.device) {
        while (const dirent *entry = readdir(stream)) {
            if (std::strcmp(entry->d_name, ".") == 0 || std::strcmp(entry->d_name, "..") == 0)
                continue;
            if (entry->d_ino == m_wanted.inode) {
                const QString path = QFile::decodeName(childPath(directory, entry->d_name));
                const auto identity = FileIdentity::read(path, FileIdentity::Detail::withHandle);
                if (identity && identity->isSameFileAs(m_wanted)) {
                    found = Found{path, *identity};
                    break;
                }
            }
            const bool mayBeDirectory = entry->d_type == DT_DIR || entry->d_type == DT_UNKNOWN;
            if (mayBeDirectory && entry->d_name[0] != '.') {
                QByteArray path = childPath(directory, entry->d_name);
                if (path != skip)
                    children.append(std::move(path));
            }
        }
    }
    closedir(stream);
    return found;
}
