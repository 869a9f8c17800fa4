#include "FolderSandbox.h"

#include "FreedesktopTrash.h"
#include "InodeSearch.h"
#include "MountTable.h"

#include <gtest/gtest.h>

#include <sys/sysmacros.h>

using namespace Qt::StringLiterals;

namespace {

const QByteArray mountInfo =
    "27 1 254:0 / / rw,relatime shared:1 - ext4 /dev/vda rw\n"
    "40 27 8:17 / /media/alice/My\\040Disk rw,nosuid shared:7 master:2 - exfat /dev/sdb1 rw\n"
    "41 27 0:45 / /media/alice/My\\040Disk/inner rw - tmpfs tmpfs rw\n"
    "42 27 8:18 /photos /srv/photos rw - ext4 /dev/sdb2 rw\n"
    "43 27 0:46 / /tmp rw - tmpfs tmpfs rw\n"
    "44 27 0:47 / /tmp rw - tmpfs tmpfs rw\n"
    "garbage line\n";

} // namespace

TEST(MountTable, findsARecordedVolumeOnlyWhereItIsMounted)
{
    MountTable table = MountTable::parse(mountInfo);
    table.attachUuids({{u"1111-AAAA"_s, u"/dev/sdb1"_s, 0}, {u"beef-22"_s, u"/dev/other"_s, makedev(8, 18)}});
    const MountTable::Mount disk{makedev(8, 1), u"/"_s,         u"/media/bob/Disk"_s,
                                 u"exfat"_s,    u"/dev/sdc1"_s, u"1111-AAAA"_s};
    MountTable::Mount plain{makedev(0, 9), u"/"_s, u"/media/alice/My Disk/inner"_s, u"tmpfs"_s, u"tmpfs"_s, {}};
    MountTable::Mount elsewhere = plain;
    elsewhere.mountPoint = u"/mnt/inner"_s;
    MountTable::Mount photos = disk;
    photos.uuid = u"beef-22"_s;
    const struct {
        const char *what;
        MountTable::Mount recorded;
        std::optional<QString> mountPoint;
    } cases[] = {
        {"a UUID at another mount point", disk, u"/media/alice/My Disk"_s},
        {"a UUID matched by device number", photos, u"/srv/photos"_s},
        {"no UUID, same place and source", plain, u"/media/alice/My Disk/inner"_s},
        {"no UUID, another place", elsewhere, std::nullopt},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        const MountTable::Mount *found = table.find(c.recorded);
        EXPECT_EQ(found ? std::optional(found->mountPoint) : std::nullopt, c.mountPoint);
    }
}

TEST(FreedesktopTrash, tellsATrashFromItsPathAlone)
{
    const QString home = u"/home/alice/.local/share/Trash/files"_s;
    const struct {
        QString path;
        bool inTrash;
    } cases[] = {
        {u"/home/alice/.local/share/Trash/files/Report"_s, true},
        {u"/home/alice/.local/share/Trash/files"_s, false},
        {u"/home/alice/.local/share/Trash/filesystem/Report"_s, false},
        {u"/Volumes/Disk/.Trashes/501/Report"_s, true},
        {u"/home/alice/.Trash/Report"_s, true},
        {u"/media/disk/.Trash-1000/files/Report"_s, true},
        {u"/media/disk/.Trash-1000/info/Report.trashinfo"_s, false},
        {u"/media/disk/.Trash-1001/files/Report"_s, false},
        {u"/home/alice/.Trash old/Report"_s, false},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.path.toStdString());
        EXPECT_EQ(FreedesktopTrash::holds(c.path, home, 1000), c.inTrash);
    }
    EXPECT_FALSE(FreedesktopTrash::holds(u"/anything/Report"_s, QString(), 1000));
}

TEST(InodeSearch, readsNoMoreDirectoriesThanItsBudget)
{
    const FolderSandbox sandbox;
    for (int i = 0; i < 30; ++i)
        sandbox.makeFolder(u"root/cards/%1/inner"_s.arg(i));
    sandbox.makeFolder(u"root/cards/Alpha"_s);
    const auto alpha = FileIdentity::read(sandbox.path(u"root/cards/Alpha"_s), FileIdentity::Detail::withHandle);
    ASSERT_TRUE(alpha);
    FileIdentity absent = *alpha;
    absent.inode += 1'000'000;

    const struct {
        const char *what;
        FileIdentity wanted;
        int budget;
        std::optional<QString> found;
        int directoriesRead;
    } cases[] = {
        {"found by the first read", *alpha, 5, sandbox.path(u"root/cards/Alpha"_s), 1},
        {"not found, budget spent", absent, 10, std::nullopt, 10},
        {"not found, tree exhausted", absent, 1000, std::nullopt, 63},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        InodeSearch search(c.wanted, c.budget);
        const auto found = search.around(sandbox.path(u"root/cards/Gone"_s), sandbox.path(u"root"_s), 3);
        EXPECT_EQ(found ? std::optional(found->path) : std::nullopt, c.found);
        EXPECT_EQ(search.directoriesRead(), c.directoriesRead);
    }
}
