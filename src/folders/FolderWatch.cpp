#include "FolderWatch.h"

#include <QDir>
#include <QFile>

#include <cerrno>
#include <cstddef>
#include <utility>
#include <linux/magic.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <sys/statfs.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr quint32 entryAddedOrRemoved = IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO;
constexpr quint32 noted = entryAddedOrRemoved | IN_ATTRIB | IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR;
// After these the watch no longer stands for what is at its path.
constexpr quint32 watchLost = IN_DELETE_SELF | IN_MOVE_SELF | IN_UNMOUNT | IN_IGNORED;

// File systems all of whose changes pass through this machine's kernel, which is what notes them;
// a network or user-space one may change from elsewhere, unnoted.
bool isChangedOnlyHere(const struct statfs &status)
{
    switch (quint32(status.f_type)) {
    case EXT4_SUPER_MAGIC:
    case XFS_SUPER_MAGIC:
    case BTRFS_SUPER_MAGIC:
    case F2FS_SUPER_MAGIC:
    case TMPFS_MAGIC:
    case RAMFS_MAGIC:
    case OVERLAYFS_SUPER_MAGIC:
    case MSDOS_SUPER_MAGIC:
    case EXFAT_SUPER_MAGIC:
    case UDF_SUPER_MAGIC:
    case ISOFS_SUPER_MAGIC:
    case SQUASHFS_MAGIC:
        return true;
    default:
        return false;
    }
}

// Whether nothing at all stands at `path`, just after a call on it failed. A link that leads
// nowhere is something: what it leads to may be made where no watch on this side of it sees.
bool isAbsent(const QByteArray &path)
{
    struct stat status {};
    return errno == ENOENT && lstat(path.constData(), &status) != 0 && errno == ENOENT;
}

// The share of the user's watches this watch may take: the rest are other programs', which a
// file manager or an editor needs more than a look needs to skip a system call.
qsizetype watchesAllowed()
{
    QFile limit(u"/proc/sys/fs/inotify/max_user_watches"_s);
    if (!limit.open(QIODevice::ReadOnly))
        return 0;
    return limit.readAll().trimmed().toLongLong() / 4;
}

QString joined(const QString &directory, const QString &name)
{
    return directory.endsWith(u'/') ? directory + name : directory + u'/' + name;
}

bool isAtOrUnder(const QString &path, const QString &top)
{
    if (!path.startsWith(top))
        return false;
    return path.size() == top.size() || top.endsWith(u'/') || path.at(top.size()) == u'/';
}

// The directories from the root down to `path`, `path` last.
QStringList pathTo(const QString &path)
{
    QStringList directories{u"/"_s};
    for (qsizetype slash = path.indexOf(u'/', 1); slash > 0; slash = path.indexOf(u'/', slash + 1))
        directories.append(path.left(slash));
    if (path != u"/")
        directories.append(path);
    return directories;
}

} // namespace

FolderWatch::FolderWatch() : m_watchesAllowed(watchesAllowed())
{
    open();
}

FolderWatch::~FolderWatch()
{
    if (m_notes >= 0)
        close(m_notes);
}

void FolderWatch::open()
{
    m_notes = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
}

// Everything is forgotten and watched anew: after notes were lost, no watch can be trusted to
// stand for what is at its path.
void FolderWatch::reset()
{
    if (m_notes >= 0)
        close(m_notes);
    m_watchByPath.clear();
    m_pathsByWatch.clear();
    m_armed.clear();
    m_above.clear();
    open();
}

void FolderWatch::takeNotes()
{
    const QMutexLocker lock(&m_mutex);
    alignas(inotify_event) char buffer[16 * 1024];
    while (m_notes >= 0) {
        const ssize_t length = read(m_notes, buffer, sizeof buffer);
        if (length <= 0)
            return;
        for (ssize_t at = 0; at < length;) {
            const auto *note = reinterpret_cast<const inotify_event *>(buffer + at);
            at += ssize_t(sizeof(inotify_event) + note->len);
            if (note->mask & IN_Q_OVERFLOW) {
                reset();
                return;
            }
            takeNote(note->wd, note->mask, note->len > 0 ? QFile::decodeName(note->name) : QString());
        }
    }
}

void FolderWatch::takeNote(int watch, quint32 mask, const QString &name)
{
    // A copy: forgetting may drop the watch's own entry.
    const QStringList directories = m_pathsByWatch.values(watch);
    for (const QString &directory : directories) {
        if (name.isEmpty()) {
            if (mask & watchLost)
                forgetFrom(directory);
            else
                disturbFrom(directory);
            continue;
        }
        if (mask & entryAddedOrRemoved)
            disturb(directory);
        const QString entry = joined(directory, name);
        // An entry added, removed or renamed may now be another directory than the one watched,
        // or the first step towards a folder armed while it was not there.
        if (!m_watchByPath.contains(entry)) {
            if (mask & entryAddedOrRemoved)
                disturbFrom(entry);
        } else if (mask & entryAddedOrRemoved) {
            forgetFrom(entry);
        } else {
            disturbFrom(entry);
        }
    }
}

bool FolderWatch::isQuiet(const QString &path) const
{
    const QMutexLocker lock(&m_mutex);
    return m_armed.value(path, false);
}

bool FolderWatch::arm(const QString &path)
{
    const QMutexLocker lock(&m_mutex);
    if (m_notes < 0)
        return false;
    // Every directory above a watched one is watched too, so a folder watched already needs no
    // more. Otherwise from the root down, so that a directory renamed while its children are
    // being watched is noted by the watch above it.
    if (!m_watchByPath.contains(path)) {
        if (!path.startsWith(u'/') || QDir::cleanPath(path) != path)
            return false;
        const QStringList directories = pathTo(path);
        for (const QString &directory : directories) {
            if (m_watchByPath.contains(directory))
                continue;
            const Watched watched = watchDirectory(directory);
            // Nothing below a directory that is not there can be: it has to be made first, in the
            // directory above, which is watched.
            if (watched == Watched::absent)
                break;
            if (watched == Watched::refused)
                return false;
        }
        for (qsizetype above = 0; above + 1 < directories.size(); ++above)
            m_above.insert(directories.at(above));
    }
    m_armed.insert(path, true);
    return true;
}

FolderWatch::Watched FolderWatch::watchDirectory(const QString &path)
{
    if (m_watchByPath.size() >= m_watchesAllowed)
        return Watched::refused;
    const QByteArray encoded = QFile::encodeName(path);
    struct statfs status {};
    if (statfs(encoded.constData(), &status) != 0)
        return isAbsent(encoded) ? Watched::absent : Watched::refused;
    if (!isChangedOnlyHere(status))
        return Watched::refused;
    const int watch = inotify_add_watch(m_notes, encoded.constData(), noted);
    if (watch < 0)
        return isAbsent(encoded) ? Watched::absent : Watched::refused;
    m_watchByPath.insert(path, watch);
    if (!m_pathsByWatch.contains(watch, path))
        m_pathsByWatch.insert(watch, path);
    return Watched::watched;
}

// Drops the watches at and under `top`, which may no longer stand for what is at their paths.
void FolderWatch::forgetFrom(const QString &top)
{
    // Most notes are of a folder with nothing watched under it: not worth a pass over them all.
    if (m_above.contains(top))
        unwatchWhere([&top](const QString &path) { return isAtOrUnder(path, top); });
    else
        unwatchWhere(top);
    disturbFrom(top);
}

void FolderWatch::unwatchWhere(const std::function<bool(const QString &)> &isDropped)
{
    for (auto watched = m_watchByPath.begin(); watched != m_watchByPath.end();) {
        if (isDropped(watched.key())) {
            dropPathOfWatch(watched.key(), watched.value());
            watched = m_watchByPath.erase(watched);
        } else {
            ++watched;
        }
    }
}

void FolderWatch::unwatchWhere(const QString &path)
{
    const auto watched = m_watchByPath.constFind(path);
    if (watched == m_watchByPath.cend())
        return;
    dropPathOfWatch(path, watched.value());
    m_watchByPath.erase(watched);
}

// The kernel's watch goes with the last path it stands for.
void FolderWatch::dropPathOfWatch(const QString &path, int watch)
{
    if (m_pathsByWatch.remove(watch, path) > 0 && !m_pathsByWatch.contains(watch))
        inotify_rm_watch(m_notes, watch);
}

void FolderWatch::disturbFrom(const QString &top)
{
    if (!m_above.contains(top)) {
        disturb(top);
        return;
    }
    for (auto folder = m_armed.begin(); folder != m_armed.end(); ++folder) {
        if (isAtOrUnder(folder.key(), top))
            folder.value() = false;
    }
}

void FolderWatch::disturb(const QString &folder)
{
    if (const auto armed = m_armed.find(folder); armed != m_armed.end())
        armed.value() = false;
}

bool FolderWatch::hasMoreArmedThan(qsizetype count) const
{
    const QMutexLocker lock(&m_mutex);
    return m_armed.size() > count;
}

void FolderWatch::keepOnly(const QSet<QString> &paths)
{
    const QMutexLocker lock(&m_mutex);
    QSet<QString> kept;
    m_armed.removeIf([&paths](const auto &folder) { return !paths.contains(folder.key()); });
    m_above.clear();
    for (auto folder = m_armed.cbegin(); folder != m_armed.cend(); ++folder) {
        const QString &path = folder.key();
        const QStringList directories = pathTo(path);
        for (qsizetype at = 0; at < directories.size(); ++at) {
            kept.insert(directories.at(at));
            if (at + 1 < directories.size())
                m_above.insert(directories.at(at));
        }
    }
    unwatchWhere([&kept](const QString &path) { return !kept.contains(path); });
}
