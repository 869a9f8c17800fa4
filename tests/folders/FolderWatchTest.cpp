#include "FolderSandbox.h"

#include "FolderWatch.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <sys/stat.h>
#include <utime.h>

using namespace Qt::StringLiterals;

namespace {

void changeMode(const FolderSandbox &sandbox, const QString &relative, mode_t mode)
{
    ASSERT_EQ(chmod(QFile::encodeName(sandbox.path(relative)).constData(), mode), 0);
}

// Undoes what the cases close, so that the folders can be armed again and removed.
void openUp(const FolderSandbox &sandbox)
{
    for (const QString &relative : {u"work"_s, u"work/p"_s})
        (void)chmod(QFile::encodeName(sandbox.path(relative)).constData(), 0700);
}

// Armed afresh, the folder now at `relative` is the one watched: quiet until a file is made in it.
void expectWatchedAfresh(FolderWatch &watch, const FolderSandbox &sandbox, const QString &relative)
{
    const QString folder = sandbox.path(relative);
    ASSERT_TRUE(watch.arm(folder));
    watch.takeNotes();
    EXPECT_TRUE(watch.isQuiet(folder));
    sandbox.makeFile(relative + u"/later.txt"_s);
    watch.takeNotes();
    EXPECT_FALSE(watch.isQuiet(folder));
}

using Change = std::function<void(const FolderSandbox &)>;

// Whether `folder`, armed, is still quiet after `change`; nothing where it cannot be watched.
std::optional<bool> isQuietAfter(FolderWatch &watch, const FolderSandbox &sandbox, const QString &folder,
                                 const Change &change)
{
    if (!watch.arm(folder))
        return std::nullopt;
    watch.takeNotes();
    EXPECT_TRUE(watch.isQuiet(folder));
    change(sandbox);
    watch.takeNotes();
    return watch.isQuiet(folder);
}

} // namespace

// A folder counts as quiet only while nothing that a look at it could find has happened: to its
// entries, its attributes, or anything on its path. What only reads it, or writes inside its
// files, or happens beside it, leaves it quiet.
TEST(FolderWatch, aFolderStaysQuietUntilSomethingALookWouldSeeHappens)
{
    struct Case {
        const char *what;
        Change change;
        bool isQuiet;
    };
    const QList<Case> cases{
        {"nothing", [](const FolderSandbox &) {}, true},
        {"the folder listed and its file read",
         [](const FolderSandbox &s) {
             (void)QDir(s.path(u"work/p"_s)).entryList();
             QFile file(s.path(u"work/p/notes.txt"_s));
             ASSERT_TRUE(file.open(QIODevice::ReadOnly));
             (void)file.readAll();
         },
         true},
        {"its file written to",
         [](const FolderSandbox &s) {
             QFile file(s.path(u"work/p/notes.txt"_s));
             ASSERT_TRUE(file.open(QIODevice::Append));
             file.write("more");
         },
         true},
        {"a folder beside it made and a file beside its parent",
         [](const FolderSandbox &s) {
             s.makeFolder(u"work/r"_s);
             s.makeFile(u"elsewhere.txt"_s);
             s.remove(u"work/q"_s);
         },
         true},
        {"a file made in it", [](const FolderSandbox &s) { s.makeFile(u"work/p/velto.md"_s); }, false},
        {"its file removed", [](const FolderSandbox &s) { QFile::remove(s.path(u"work/p/notes.txt"_s)); }, false},
        {"its file renamed", [](const FolderSandbox &s) { s.move(u"work/p/notes.txt"_s, u"work/p/n.txt"_s); }, false},
        {"its permissions changed", [](const FolderSandbox &s) { changeMode(s, u"work/p"_s, 0500); }, false},
        {"its times set",
         [](const FolderSandbox &s) {
             ASSERT_EQ(utime(QFile::encodeName(s.path(u"work/p"_s)).constData(), nullptr), 0);
         },
         false},
        {"it renamed", [](const FolderSandbox &s) { s.move(u"work/p"_s, u"work/renamed"_s); }, false},
        {"it replaced by another of its name",
         [](const FolderSandbox &s) {
             s.remove(u"work/p"_s);
             s.makeFolder(u"work/p"_s);
         },
         false},
        {"its parent renamed", [](const FolderSandbox &s) { s.move(u"work"_s, u"play"_s); }, false},
        {"its parent renamed and another made with it inside",
         [](const FolderSandbox &s) {
             s.move(u"work"_s, u"play"_s);
             s.makeFolder(u"work/p"_s);
         },
         false},
        {"its parent's permissions changed", [](const FolderSandbox &s) { changeMode(s, u"work"_s, 0500); }, false},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.what);
        const FolderSandbox sandbox;
        sandbox.makeFolder(u"work/p"_s);
        sandbox.makeFolder(u"work/q"_s);
        sandbox.makeFile(u"work/p/notes.txt"_s);
        const QString folder = sandbox.path(u"work/p"_s);
        FolderWatch watch;
        const auto isQuiet = isQuietAfter(watch, sandbox, folder, c.change);
        if (!isQuiet)
            GTEST_SKIP() << "the kernel does not note changes on this file system";
        EXPECT_EQ(*isQuiet, c.isQuiet);

        openUp(sandbox);
        if (QFileInfo(folder).isDir()) {
            watch.takeNotes();
            expectWatchedAfresh(watch, sandbox, u"work/p"_s);
        }
    }
}

// Folders that left the board are no longer watched, and those still on it stay quiet.
TEST(FolderWatch, keepsOnlyTheFoldersItIsTold)
{
    const FolderSandbox sandbox;
    sandbox.makeFolder(u"work/p"_s);
    sandbox.makeFolder(u"work/q"_s);
    const QString p = sandbox.path(u"work/p"_s);
    const QString q = sandbox.path(u"work/q"_s);
    FolderWatch watch;
    if (!watch.arm(p) || !watch.arm(q))
        GTEST_SKIP() << "the kernel does not note changes on this file system";
    EXPECT_TRUE(watch.hasMoreArmedThan(1));

    watch.keepOnly({q});
    watch.takeNotes();

    EXPECT_FALSE(watch.hasMoreArmedThan(1));
    EXPECT_FALSE(watch.isQuiet(p));
    EXPECT_TRUE(watch.isQuiet(q));
    sandbox.makeFile(u"work/q/velto.md"_s);
    watch.takeNotes();
    EXPECT_FALSE(watch.isQuiet(q));
}

// A link on the way to a folder that comes to lead elsewhere: the folder at the path is another
// one, and armed again, it is that one that is watched.
TEST(FolderWatch, aLinkOnTheWayThatLeadsElsewhereIsNoted)
{
    const FolderSandbox sandbox;
    sandbox.makeFolder(u"a/p"_s);
    sandbox.makeFolder(u"b/p"_s);
    ASSERT_TRUE(QFile::link(sandbox.path(u"a"_s), sandbox.path(u"work"_s)));
    const QString folder = sandbox.path(u"work/p"_s);
    FolderWatch watch;
    if (!watch.arm(folder))
        GTEST_SKIP() << "the kernel does not note changes on this file system";

    ASSERT_TRUE(QFile::remove(sandbox.path(u"work"_s)));
    ASSERT_TRUE(QFile::link(sandbox.path(u"b"_s), sandbox.path(u"work"_s)));
    watch.takeNotes();
    EXPECT_FALSE(watch.isQuiet(folder));
    expectWatchedAfresh(watch, sandbox, u"work/p"_s);
}

// A folder that is not there stays quiet until something is made where it, or a directory on the
// way to it, would be; what happens beside it leaves it quiet.
TEST(FolderWatch, aFolderThatIsNotThereStaysQuietUntilSomethingIsMadeOnItsWay)
{
    struct Case {
        const char *what;
        QString armed;
        Change change;
        bool isQuiet;
    };
    const QString gone = u"work/gone"_s;
    const QString deeper = u"work/gone/deeper"_s;
    const QList<Case> cases{
        {"nothing", gone, [](const FolderSandbox &) {}, true},
        {"a folder made beside it and a file in its neighbour",
         gone,
         [](const FolderSandbox &s) {
             s.makeFolder(u"work/other"_s);
             s.makeFile(u"work/q/velto.md"_s);
         },
         true},
        {"it made", gone, [](const FolderSandbox &s) { s.makeFolder(u"work/gone"_s); }, false},
        {"a file made at its name", gone, [](const FolderSandbox &s) { s.makeFile(u"work/gone"_s); }, false},
        {"a folder moved to its place", gone, [](const FolderSandbox &s) { s.move(u"work/q"_s, u"work/gone"_s); },
         false},
        {"its parent renamed", gone, [](const FolderSandbox &s) { s.move(u"work"_s, u"play"_s); }, false},
        {"nothing, two levels down", deeper, [](const FolderSandbox &) {}, true},
        {"the directory above it made", deeper, [](const FolderSandbox &s) { s.makeFolder(u"work/gone"_s); }, false},
        {"a folder with it inside moved in",
         deeper,
         [](const FolderSandbox &s) {
             s.makeFolder(u"elsewhere/deeper"_s);
             s.move(u"elsewhere"_s, u"work/gone"_s);
         },
         false},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.what);
        const FolderSandbox sandbox;
        sandbox.makeFolder(u"work/q"_s);
        const QString folder = sandbox.path(c.armed);
        FolderWatch watch;
        const auto isQuiet = isQuietAfter(watch, sandbox, folder, c.change);
        if (!isQuiet)
            GTEST_SKIP() << "the kernel does not note changes on this file system";
        EXPECT_EQ(*isQuiet, c.isQuiet);
    }
}

// Past a link that leads nowhere, a folder could be made where no watch on this side sees it.
TEST(FolderWatch, aFolderPastALinkThatLeadsNowhereIsNeverQuiet)
{
    const FolderSandbox sandbox;
    sandbox.makeFolder(u"work"_s);
    ASSERT_TRUE(QFile::link(sandbox.path(u"nowhere"_s), sandbox.path(u"work/link"_s)));
    const QString folder = sandbox.path(u"work/link/p"_s);
    FolderWatch watch;
    if (!watch.arm(sandbox.path(u"work"_s)))
        GTEST_SKIP() << "the kernel does not note changes on this file system";

    EXPECT_FALSE(watch.arm(folder));
    watch.takeNotes();
    EXPECT_FALSE(watch.isQuiet(folder));
}
