#include "FolderEntry.h"

#include "FolderListingError.h"
#include "FolderPaths.h"

#include <QCollator>
#include <QFile>
#include <QLocale>
#include <QSet>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

struct DirectoryCloser {
    void operator()(DIR *stream) const { closedir(stream); }
};
using DirectoryStream = std::unique_ptr<DIR, DirectoryCloser>;

// Names listed in the folder's ".hidden" file, which file managers honour like a leading dot.
QSet<QString> namesMarkedHidden(const QString &folder)
{
    QFile file(FolderPaths::joined(folder, u".hidden"_s));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QSet<QString> names;
    for (const QByteArray &line : file.readAll().split('\n')) {
        if (!line.isEmpty())
            names.insert(QFile::decodeName(line));
    }
    return names;
}

bool isDirectoryEntry(const DirectoryStream &stream, const dirent &entry)
{
    if (entry.d_type != DT_UNKNOWN)
        return entry.d_type == DT_DIR;
    struct stat status {};
    return fstatat(dirfd(stream.get()), entry.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISDIR(status.st_mode);
}

// Natural order needs a real collation; the C locale has none, so it borrows English's.
QCollator naturalCollator()
{
    QLocale locale = QLocale::system();
    if (locale.language() == QLocale::C)
        locale = QLocale(QLocale::English);
    QCollator collator(locale);
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    return collator;
}

} // namespace

QList<FolderEntry> FolderEntry::list(const QUrl &url)
{
    const QString folder = url.toLocalFile();
    const DirectoryStream stream(opendir(QFile::encodeName(folder).constData()));
    if (!stream)
        throw FolderListingError(folder, errno);

    const QSet<QString> hidden = namesMarkedHidden(folder);
    QList<FolderEntry> entries;
    while (const dirent *entry = readdir(stream.get())) {
        if (entry->d_name[0] == '.')
            continue;
        const QString name = QFile::decodeName(entry->d_name);
        if (hidden.contains(name))
            continue;
        const QUrl entryURL = QUrl::fromLocalFile(FolderPaths::joined(folder, name));
        entries.append({entryURL, name, isDirectoryEntry(stream, *entry)});
    }

    const QCollator collator = naturalCollator();
    std::stable_sort(entries.begin(), entries.end(), [&collator](const FolderEntry &a, const FolderEntry &b) {
        if (a.isDirectory != b.isDirectory)
            return a.isDirectory;
        return collator.compare(a.name, b.name) < 0;
    });
    return entries;
}

qsizetype FolderEntry::fileCount(const QList<FolderEntry> &entries)
{
    return std::count_if(entries.begin(), entries.end(), [](const FolderEntry &entry) { return !entry.isDirectory; });
}
