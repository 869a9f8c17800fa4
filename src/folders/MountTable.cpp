#include "MountTable.h"

#include "FolderPaths.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>
#include <sys/sysmacros.h>

using namespace Qt::StringLiterals;

namespace {

// Mount points and roots in mountinfo write a blank, a tab, a line feed and a backslash as octal.
QString unescaped(const QByteArray &field)
{
    QByteArray bytes;
    bytes.reserve(field.size());
    for (qsizetype i = 0; i < field.size(); ++i) {
        if (field.at(i) == '\\' && i + 3 < field.size()) {
            bool ok = false;
            const int code = field.mid(i + 1, 3).toInt(&ok, 8);
            if (ok) {
                bytes.append(char(code));
                i += 3;
                continue;
            }
        }
        bytes.append(field.at(i));
    }
    return QFile::decodeName(bytes);
}

std::optional<MountTable::Mount> parseLine(const QByteArray &line)
{
    const QList<QByteArray> fields = line.split(' ');
    const qsizetype separator = fields.indexOf("-");
    if (fields.size() < 6 || separator < 6 || separator + 2 >= fields.size())
        return std::nullopt;
    const QList<QByteArray> numbers = fields.at(2).split(':');
    if (numbers.size() != 2)
        return std::nullopt;
    MountTable::Mount mount;
    mount.device = makedev(numbers.at(0).toUInt(), numbers.at(1).toUInt());
    mount.root = unescaped(fields.at(3));
    mount.mountPoint = unescaped(fields.at(4));
    mount.fileSystemType = unescaped(fields.at(separator + 1));
    mount.source = unescaped(fields.at(separator + 2));
    return mount;
}

QList<MountTable::DiskLink> readDiskLinks()
{
    QList<MountTable::DiskLink> links;
    const QDir directory(u"/dev/disk/by-uuid"_s);
    for (const QString &uuid : directory.entryList(QDir::System | QDir::Files | QDir::NoDotAndDotDot)) {
        const QString devicePath = QFileInfo(directory.filePath(uuid)).canonicalFilePath();
        struct stat status {};
        if (devicePath.isEmpty() || stat(QFile::encodeName(devicePath).constData(), &status) != 0)
            continue;
        links.append({uuid, devicePath, S_ISBLK(status.st_mode) ? quint64(status.st_rdev) : 0});
    }
    return links;
}

} // namespace

MountTable MountTable::read()
{
    QFile file(u"/proc/self/mountinfo"_s);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    MountTable table = parse(file.readAll());
    for (Mount &mount : table.m_mounts) {
        if (mount.source.startsWith(u"/dev/"_s)) {
            if (const QString canonical = QFileInfo(mount.source).canonicalFilePath(); !canonical.isEmpty())
                mount.source = canonical;
        }
    }
    table.attachUuids(readDiskLinks());
    return table;
}

MountTable MountTable::parse(const QByteArray &mountInfo)
{
    QList<Mount> mounts;
    for (const QByteArray &line : mountInfo.split('\n')) {
        if (auto mount = parseLine(line))
            mounts.append(*mount);
    }
    return MountTable(std::move(mounts));
}

void MountTable::attachUuids(const QList<DiskLink> &links)
{
    for (Mount &mount : m_mounts) {
        for (const DiskLink &link : links) {
            const bool sameNumber = link.device != 0 && link.device == mount.device;
            if (sameNumber || link.devicePath == mount.source) {
                mount.uuid = link.uuid;
                break;
            }
        }
    }
}

std::optional<MountTable::Mount> MountTable::mountContaining(const QString &path) const
{
    std::optional<Mount> best;
    for (const Mount &mount : m_mounts) {
        if (!FolderPaths::relativeTo(path, mount.mountPoint))
            continue;
        if (!best || mount.mountPoint.size() >= best->mountPoint.size())
            best = mount;
    }
    return best;
}

const MountTable::Mount *MountTable::find(const Mount &recorded) const
{
    const Mount *found = nullptr;
    for (const Mount &mount : m_mounts) {
        const bool sameVolume = recorded.uuid
            ? mount.uuid == recorded.uuid
            : mount.source == recorded.source && mount.fileSystemType == recorded.fileSystemType;
        if (!sameVolume)
            continue;
        if (mount.mountPoint == recorded.mountPoint)
            found = &mount;
        else if (recorded.uuid && found == nullptr)
            found = &mount;
    }
    return found;
}
