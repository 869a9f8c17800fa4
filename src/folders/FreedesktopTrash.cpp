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
    const QString volumeTrash = u".Trash-"_s + QString::number(userID);
    const QStringList components = path.split(u'/', Qt::SkipEmptyParts);
    for (qsizetype i = 0; i < components.size(); ++i) {
        const QString &component = components.at(i);
        if (component == u".Trash"_s || component == u".Trashes"_s)
            return true;
        if (component == volumeTrash && i + 2 < components.size() && components.at(i + 1) == u"files"_s)
            return true;
    }
    return false;
}
