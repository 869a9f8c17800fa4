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
    for (const QString &component : {u"/.Trash"_s, u"/.Trashes"_s}) {
        if (path.endsWith(component) || path.contains(component + u'/'))
            return true;
    }
    const QString volumeFiles = u"/.Trash-%1/files/"_s.arg(userID);
    const qsizetype at = path.indexOf(volumeFiles);
    return at >= 0 && path.size() > at + volumeFiles.size();
}
