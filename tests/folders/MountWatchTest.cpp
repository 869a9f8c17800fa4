#include "MountWatch.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/mount.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace {

bool lists(const MountTable &table, const QString &mountPoint)
{
    return std::ranges::any_of(table.mounts(), [&](const MountTable::Mount &mount) { return mount.mountPoint == mountPoint; });
}

} // namespace

// What was worked out from one reading is kept while its number stands, so the number must change
// with every mount and unmount, and only then.
TEST(MountWatch, numbersAReadingAnewOnlyWhenSomethingIsMountedOrUnmounted)
{
    MountWatch watch;
    const MountWatch::Reading first = watch.current();
    EXPECT_NE(first.generation, 0U);
    EXPECT_EQ(watch.current().generation, first.generation);

    const QTemporaryDir dir;
    const QString point = QFileInfo(dir.path()).canonicalFilePath();
    const QByteArray encoded = QFile::encodeName(point);
    if (mount("velto-test", encoded.constData(), "tmpfs", 0, nullptr) != 0)
        GTEST_SKIP() << "no mounting here: " << std::strerror(errno);
    const MountWatch::Reading mounted = watch.current();
    const MountWatch::Reading again = watch.current();
    ASSERT_EQ(umount(encoded.constData()), 0) << std::strerror(errno);
    const MountWatch::Reading unmounted = watch.current();

    EXPECT_NE(mounted.generation, first.generation);
    EXPECT_TRUE(lists(mounted.table, point));
    EXPECT_EQ(again.generation, mounted.generation);
    EXPECT_NE(unmounted.generation, mounted.generation);
    EXPECT_FALSE(lists(unmounted.table, point));
}
