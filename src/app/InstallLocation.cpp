#include "InstallLocation.h"

#include <QDir>
#include <QFileInfo>

#include <sys/statvfs.h>

using namespace Qt::StringLiterals;

InstallLocation::Verdict InstallLocation::verdict(const QString &path, bool onReadOnlyVolume)
{
    if (path.contains(u"/AppTranslocation/"_s))
        return Verdict::Translocated;
    return onReadOnlyVolume ? Verdict::ReadOnlyVolume : Verdict::Ok;
}

bool InstallLocation::isOnReadOnlyVolume(const QString &path)
{
    if (path.isEmpty())
        return false;
    // The data folder is made at start-up, so on a first launch only a folder above it exists.
    QString existing = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
    while (!QFileInfo::exists(existing)) {
        const QString parent = QFileInfo(existing).path();
        if (parent == existing)
            return false;
        existing = parent;
    }
    struct statvfs volume {};
    if (::statvfs(QFile::encodeName(existing).constData(), &volume) != 0)
        return false;
    return (volume.f_flag & ST_RDONLY) != 0;
}
