#include "FreedesktopTrash.h"

#include "FolderPaths.h"

#include <QDir>

using namespace Qt::StringLiterals;

QString FreedesktopTrash::homeFilesDirectory()
{
    QString dataHome = qEnvironmentVariable("XDG_DATA_HOME");
    if (!QDir::isAbsolutePath(dataHome)) {
        const QString home = qEnvironmentVariable("HOME");
        if (home.isEmpty())
            return {};
        dataHome = home + u"/.local/share"_s;
    }
    return QDir::cleanPath(dataHome + u"/Trash/files"_s);
}

QStringList FreedesktopTrash::volumeFilesDirectories(const QString &topDirectory, uint userID)
{
    const QString uid = QString::number(userID);
    return {FolderPaths::joined(topDirectory, u".Trash/"_s + uid + u"/files"_s),
            FolderPaths::joined(topDirectory, u".Trash-"_s + uid + u"/files"_s)};
}

bool FreedesktopTrash::holds(const QString &path, const QString &homeFilesDirectory, uint userID)
{
    if (!homeFilesDirectory.isEmpty()) {
        if (const auto inside = FolderPaths::relativeTo(path, homeFilesDirectory); inside && !inside->isEmpty())
            return true;
    }
    // Every Trash component starts with "/.Trash"; what follows it tells which kind, if any. Most
    // paths have none, and are told so without building anything.
    qsizetype at = path.indexOf(u"/.Trash");
    if (at < 0)
        return false;
    const QString volumeFiles = u'-' + QString::number(userID) + u"/files/"_s;
    for (; at >= 0; at = path.indexOf(u"/.Trash", at + 1)) {
        const QStringView rest = QStringView(path).sliced(at + 7);
        if (rest.isEmpty() || rest.startsWith(u'/') || rest == u"es" || rest.startsWith(u"es/"))
            return true;
        if (rest.startsWith(volumeFiles) && rest.size() > volumeFiles.size())
            return true;
    }
    return false;
}
