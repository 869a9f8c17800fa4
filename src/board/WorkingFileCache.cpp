#include "WorkingFileCache.h"

#include "WorkingFileError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

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
    QHash<QString, WorkingFileRead> reads;
    for (auto folder = folders.cbegin(); folder != folders.cend(); ++folder) {
        const QString path = QDir(folder.value()).filePath(WorkingFile::fileName);
        // One look at the folder: the first question fills in the size and the time as well.
        const QFileInfo info(path);
        if (!info.isFile())
            continue;
        const qint64 size = info.size();
        const QDateTime modified = info.lastModified();
        const auto known = earlier.constFind(folder.key());
        if (known != earlier.cend() && known->path == path && known->size == size && known->modified == modified)
            reads.insert(folder.key(), *known);
        else
            reads.insert(folder.key(), readNow(path, size, modified, read));
    }
    return reads;
}

} // namespace WorkingFileCache
