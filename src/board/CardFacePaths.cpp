#include "CardFacePaths.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace {

// The home directory counts only as whole pieces, so "/home/ada" is not cut off "/home/adam/x".
bool isUnderHome(const QString &path, const QString &homePath)
{
    if (homePath.isEmpty() || !path.startsWith(homePath))
        return false;
    return path.size() == homePath.size() || homePath.endsWith(u'/') || path.at(homePath.size()) == u'/';
}

} // namespace

QString CardFacePaths::shortPath(const QString &displayPath, const QString &homePath)
{
    const QString relative = isUnderHome(displayPath, homePath) ? displayPath.mid(homePath.size()) : displayPath;
    QStringList pieces = relative.split(u'/', Qt::SkipEmptyParts);
    if (pieces.size() <= 1)
        return relative;
    pieces.removeLast();
    return pieces.join(u'/');
}
