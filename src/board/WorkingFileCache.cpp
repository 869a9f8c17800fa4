#include "WorkingFileCache.h"

#include "InShares.h"
#include "WorkingFileError.h"

#include <QFile>
#include <QList>

#include <fcntl.h>
#include <optional>
#include <sys/stat.h>

namespace WorkingFileCache {

namespace {

WorkingFileRead readNow(const QString &path, qint64 size, const QDateTime &modified, const Reader &read)
{
    WorkingFileRead result{path, size, modified, {}, std::nullopt};
    try {
        // The size the folder reports is enough to refuse a large file without opening it.
        if (size > WorkingFile::sizeLimit)
            throw WorkingFileError(WorkingFileError::Reason::tooLarge);
        result.file = WorkingFile::parse(read(path));
    } catch (const WorkingFileError &error) {
        result.failure = error.text();
    }
    return result;
}

struct Look {
    qint64 size = 0;
    QDateTime modified;
};

// The size and modification time of a regular file at `path`, at one system call; nothing when
// there is none. Links are followed, as opening the file would.
std::optional<Look> lookAt(const QString &path)
{
    struct statx status {};
    if (statx(AT_FDCWD, QFile::encodeName(path).constData(), 0, STATX_TYPE | STATX_SIZE | STATX_MTIME, &status) != 0
        || !S_ISREG(status.stx_mode))
        return std::nullopt;
    const qint64 milliseconds = qint64(status.stx_mtime.tv_sec) * 1000 + status.stx_mtime.tv_nsec / 1'000'000;
    return Look{qint64(status.stx_size), QDateTime::fromMSecsSinceEpoch(milliseconds)};
}

} // namespace

QByteArray readFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw WorkingFileError(WorkingFileError::Reason::unreadable, file.errorString());
    return file.read(WorkingFile::sizeLimit + 1);
}

QHash<QString, WorkingFileRead> refreshed(const QHash<QString, WorkingFileRead> &earlier,
                                          const QHash<QString, QString> &folders, const Reader &read)
{
    const QList<QString> ids = folders.keys();
    // Each card's folder is looked at, and its file read when it changed, into a slot of its own.
    QList<std::optional<WorkingFileRead>> found(ids.size());
    std::optional<WorkingFileRead> *results = found.data();
    InShares::run(ids.size(), [&](qsizetype i) {
        const QString path = folders.value(ids.at(i)) + u'/' + WorkingFile::fileName;
        const auto look = lookAt(path);
        if (!look)
            return;
        const auto known = earlier.constFind(ids.at(i));
        if (known != earlier.cend() && known->path == path && known->size == look->size
            && known->modified == look->modified)
            results[i] = *known;
        else
            results[i] = readNow(path, look->size, look->modified, read);
    });
    QHash<QString, WorkingFileRead> reads;
    for (qsizetype i = 0; i < ids.size(); ++i) {
        if (found.at(i))
            reads.insert(ids.at(i), std::move(*found[i]));
    }
    return reads;
}

} // namespace WorkingFileCache
