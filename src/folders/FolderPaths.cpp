#include "FolderPaths.h"

using namespace Qt::StringLiterals;

QString FolderPaths::lastComponent(const QString &path)
{
    if (path == u"/"_s)
        return path;
    return path.mid(path.lastIndexOf(u'/') + 1);
}

QString FolderPaths::parent(const QString &path)
{
    const qsizetype slash = path.lastIndexOf(u'/');
    return slash <= 0 ? u"/"_s : path.left(slash);
}

std::optional<QString> FolderPaths::relativeTo(const QString &path, const QString &ancestor)
{
    if (path == ancestor)
        return QString();
    if (ancestor == u"/"_s)
        return path.startsWith(u'/') ? std::optional(path.mid(1)) : std::nullopt;
    if (path.startsWith(ancestor) && path.size() > ancestor.size() && path.at(ancestor.size()) == u'/')
        return path.mid(ancestor.size() + 1);
    return std::nullopt;
}

QString FolderPaths::joined(const QString &directory, const QString &relative)
{
    if (relative.isEmpty())
        return directory;
    if (directory.endsWith(u'/'))
        return directory + relative;
    return directory + u'/' + relative;
}
