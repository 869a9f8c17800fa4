#pragma once

#include <QHash>
#include <QMutex>
#include <QSet>
#include <QString>
#include <QStringList>

#include <functional>

// Tells which folders nothing has happened to since they were last looked at, from what the
// kernel notes of each folder and of every directory on the way to it, so that a look need not
// ask the file system about a folder the kernel has noted nothing of. A folder counts as quiet
// from the moment it is armed, which comes before the look that confirms it, until an entry is
// added to or removed from it, its attributes change, or anything on its path is renamed,
// replaced, removed or changes its attributes. Folders on file systems whose changes may come from
// elsewhere (network and user-space ones) are never quiet, nor are those past the share of the
// user's watches this one may take. Shared by the threads of one look.
class FolderWatch {
public:
    FolderWatch();
    ~FolderWatch();
    FolderWatch(const FolderWatch &) = delete;
    FolderWatch &operator=(const FolderWatch &) = delete;

    // Takes in what the kernel noted since the last call; a look calls it before it asks.
    void takeNotes();

    // Whether the folder at `path`, an absolute path, was armed and nothing was noted of it since.
    [[nodiscard]] bool isQuiet(const QString &path) const;

    // Watches the folder at `path` and each directory above it, and counts it quiet from now on.
    // Called before the folder is looked at, so that any change after that look is noted. A
    // folder that is not there is watched through the directories above it that are, so that it
    // stays quiet until something is made where it would be. False, and not quiet, where it
    // cannot be watched.
    bool arm(const QString &path);

    [[nodiscard]] bool hasMoreArmedThan(qsizetype count) const;

    // Stops watching folders other than `paths`, and the directories that lead only to them.
    void keepOnly(const QSet<QString> &paths);

private:
    void open();
    void reset();
    void takeNote(int watch, quint32 mask, const QString &name);
    enum class Watched { watched, absent, refused };
    [[nodiscard]] Watched watchDirectory(const QString &path);
    void forgetFrom(const QString &top);
    void unwatchWhere(const std::function<bool(const QString &)> &isDropped);
    void unwatchWhere(const QString &path);
    void dropPathOfWatch(const QString &path, int watch);
    void disturbFrom(const QString &top);
    void disturb(const QString &folder);

    mutable QMutex m_mutex;
    qsizetype m_watchesAllowed = 0;
    int m_notes = -1;
    QHash<QString, int> m_watchByPath;
    // A directory reached by two paths, through a link, has one watch.
    QMultiHash<int, QString> m_pathsByWatch;
    // The folders armed, each with whether it is quiet.
    QHash<QString, bool> m_armed;
    // The directories above armed folders, under which a note can reach more than one folder.
    QSet<QString> m_above;
};
