#include "WorkingFileCache.h"

#include "InShares.h"
#include "WorkingFileError.h"

#include <QFile>
#include <QList>

#include <algorithm>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <vector>

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
    // A file that has not changed keeps its slot empty and is taken from `earlier` afterwards.
    struct Slot {
        std::optional<WorkingFileRead> read;
        bool isUnchanged = false;
    };
    std::vector<Slot> fileSlots(size_t(ids.size()));
    InShares::run(ids.size(), [&](qsizetype i) {
        const QString path = folders.value(ids.at(i)) + u'/' + WorkingFile::fileName;
        const auto look = lookAt(path);
        if (!look)
            return;
        const auto known = earlier.constFind(ids.at(i));
        if (known != earlier.cend() && known->path == path && known->size == look->size
            && known->modified == look->modified)
            fileSlots[size_t(i)].isUnchanged = true;
        else
            fileSlots[size_t(i)].read = readNow(path, look->size, look->modified, read);
    });
    // Every earlier read still standing, and nothing new: the earlier reads themselves, so that
    // the board sees at no cost that nothing changed.
    const auto unchanged = std::ranges::count_if(fileSlots, [](const Slot &slot) { return slot.isUnchanged; });
    const bool anyNew = std::ranges::any_of(fileSlots, [](const Slot &slot) { return slot.read.has_value(); });
    if (unchanged == earlier.size() && !anyNew)
        return earlier;
    QHash<QString, WorkingFileRead> reads;
    for (qsizetype i = 0; i < ids.size(); ++i) {
        Slot &slot = fileSlots[size_t(i)];
        if (slot.isUnchanged)
            reads.insert(ids.at(i), earlier.value(ids.at(i)));
        else if (slot.read)
            reads.insert(ids.at(i), std::move(*slot.read));
    }
    return reads;
}

} // namespace WorkingFileCache
