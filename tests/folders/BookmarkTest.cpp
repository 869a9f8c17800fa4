#include "FolderSandbox.h"

#include "BookmarkBlob.h"
#include "BookmarkError.h"
#include "SecurityScopedBookmark.h"

#include <gtest/gtest.h>

#include <sys/sysmacros.h>

#include <cerrno>
#include <functional>

using namespace Qt::StringLiterals;

namespace {

const QString origin = u"w/x/y/cards/Alpha"_s;

QString failureOf(const std::function<void()> &action)
{
    try {
        action();
    } catch (const BookmarkError &error) {
        return error.text();
    }
    return u"(no failure)"_s;
}

} // namespace

TEST(SecurityScopedBookmark, followsTheFolderWhereverItWentOnItsVolume)
{
    struct Case {
        const char *what;
        std::function<void(const FolderSandbox &)> change;
        QString expected;
        bool isStale;
    };
    const QList<Case> cases{
        {"left alone", [](const FolderSandbox &) {}, origin, false},
        {"renamed in place", [](const FolderSandbox &s) { s.move(origin, u"w/x/y/cards/Alpha 2"_s); },
         u"w/x/y/cards/Alpha 2"_s, true},
        {"moved deep down", [](const FolderSandbox &s) { s.move(origin, u"w/x/y/cards/Beta/2024/Q1/Alpha"_s); },
         u"w/x/y/cards/Beta/2024/Q1/Alpha"_s, true},
        {"moved to a cousin", [](const FolderSandbox &s) { s.move(origin, u"w/x/done/Alpha"_s); },
         u"w/x/done/Alpha"_s, true},
        {"moved with its parent", [](const FolderSandbox &s) { s.move(u"w/x/y/cards"_s, u"w/x/y/old cards"_s); },
         u"w/x/y/old cards/Alpha"_s, true},
        {"thrown in the Trash", [](const FolderSandbox &s) { s.move(origin, u"data/Trash/files/Alpha"_s); },
         u"data/Trash/files/Alpha"_s, true},
        // Hidden folders are not searched: the bookmark stays at the old path.
        {"hidden away", [](const FolderSandbox &s) { s.move(origin, u"w/x/y/cards/.attic/Alpha"_s); }, origin,
         false},
        {"deleted", [](const FolderSandbox &s) { s.remove(origin); }, origin, false},
        {"replaced by a folder of the same name",
         [](const FolderSandbox &s) {
             s.remove(origin);
             s.makeFolder(origin);
         },
         origin, true},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.what);
        const FolderSandbox sandbox;
        sandbox.makeFolder(origin);
        sandbox.makeFolder(u"w/x/y/cards/Beta"_s);
        const QByteArray bookmark = SecurityScopedBookmark::create(sandbox.url(origin));

        c.change(sandbox);
        const ResolvedBookmark resolved = SecurityScopedBookmark::resolve(bookmark);

        EXPECT_EQ(resolved.url, sandbox.url(c.expected));
        ASSERT_EQ(resolved.refreshedData.has_value(), c.isStale);
        if (resolved.refreshedData) {
            const ResolvedBookmark renewed = SecurityScopedBookmark::resolve(*resolved.refreshedData);
            EXPECT_EQ(renewed.url, resolved.url);
            EXPECT_EQ(renewed.refreshedData, std::nullopt);
        }
    }
}

TEST(SecurityScopedBookmark, refusesInWordsWhatItCannotBookmarkOrFollow)
{
    const FolderSandbox sandbox;
    sandbox.makeFolder(origin);
    EXPECT_EQ(failureOf([&] { (void)SecurityScopedBookmark::create(sandbox.url(u"nowhere"_s)); }),
              u"Could not bookmark %1: No such file or directory"_s.arg(sandbox.path(u"nowhere"_s)));

    const QByteArray valid = SecurityScopedBookmark::create(sandbox.url(origin));
    QByteArray future = valid;
    future[5] = 2;
    BookmarkBlob elsewhere = BookmarkBlob::decoded(valid);
    elsewhere.path = u"/media/velto-gone/Alpha"_s;
    elsewhere.volume = {1, u"/"_s, u"/media/velto-gone"_s, u"vfat"_s, u"/dev/velto-absent"_s, std::nullopt};
    BookmarkBlob offVolume = elsewhere;
    offVolume.path = u"/home/Alpha"_s;
    BookmarkBlob unknownUuid = elsewhere;
    unknownUuid.volume.uuid = u"0000-VELTO"_s;
    const struct {
        const char *what;
        QByteArray data;
        QString reason;
    } cases[] = {
        {"empty", {}, u"The bookmark is empty."_s},
        {"random bytes", QByteArray::fromHex("8f13c0ffee004242deadbeef"),
         u"The bookmark is not in a form Velto can read."_s},
        {"cut short", valid.left(valid.size() - 5), u"The bookmark is damaged."_s},
        {"with bytes after its end", valid + "!", u"The bookmark is damaged."_s},
        {"of a later version", future, u"The bookmark was made by a newer version of Velto."_s},
        {"on a volume that is not mounted", elsewhere.encoded(), u"The volume “velto-gone” is not mounted."_s},
        {"on a disk that is not connected", unknownUuid.encoded(), u"The volume “velto-gone” is not mounted."_s},
        {"off its own volume", offVolume.encoded(), u"The bookmark is damaged."_s},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(failureOf([&] { (void)SecurityScopedBookmark::resolve(c.data); }),
                  u"Could not resolve a bookmark: "_s + c.reason);
    }
}

TEST(SecurityScopedBookmark, findsAVolumeMountedAgainElsewhere)
{
    const FolderSandbox sandbox;
    sandbox.makeFolder(u"disk/projects/Alpha"_s);
    ResolutionContext context = ResolutionContext::current();
    const auto identity = FileIdentity::read(sandbox.path(u"disk/projects/Alpha"_s), FileIdentity::Detail::withHandle);
    ASSERT_TRUE(identity);
    const MountTable::Mount before{identity->device, u"/"_s,         u"/media/USB"_s,
                                   u"ext4"_s,        u"/dev/sdz1"_s, u"ABCD-1234"_s};
    const QString mountPoint = sandbox.path(u"disk"_s);
    const QByteArray numbers =
        QByteArray::number(major(identity->device)) + ':' + QByteArray::number(minor(identity->device));
    context.mounts =
        MountTable::parse("1 0 " + numbers + " / " + QFile::encodeName(mountPoint) + " rw - ext4 /dev/sdy1 rw\n");
    context.mounts.attachUuids({{u"ABCD-1234"_s, u"/dev/sdy1"_s, 0}});

    const QByteArray bookmark = BookmarkBlob{u"/media/USB/projects/Alpha"_s, *identity, before}.encoded();
    const ResolvedBookmark resolved = SecurityScopedBookmark::resolve(bookmark, context);

    EXPECT_EQ(resolved.url, sandbox.url(u"disk/projects/Alpha"_s));
    ASSERT_TRUE(resolved.refreshedData);
    EXPECT_EQ(BookmarkBlob::decoded(*resolved.refreshedData).volume.mountPoint, mountPoint);
}

TEST(SecurityScopedBookmark, checksWhatStandsAtAPath)
{
    const FolderSandbox sandbox;
    sandbox.makeFolder(u"folder"_s);
    sandbox.makeFile(u"file.txt"_s);
    ASSERT_TRUE(QFile::link(sandbox.path(u"vanished"_s), sandbox.path(u"dangling"_s)));
    const BookmarkPathCheck reachable{BookmarkPathCheck::Reachable{}};
    const BookmarkPathCheck gone{BookmarkPathCheck::Gone{}};
    const struct {
        QString path;
        BookmarkPathCheck check;
    } cases[] = {
        {u"folder"_s, reachable},
        {u"file.txt"_s, {BookmarkPathCheck::Problem{u"A file is at this path, not a folder."_s}}},
        {u"nothing"_s, gone},
        {u"file.txt/inside"_s, gone},
        {u"dangling"_s, reachable},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.path.toStdString());
        EXPECT_EQ(SecurityScopedBookmark::checkPath(sandbox.url(c.path), true), c.check);
    }
    // A folder shut to this user is no missing folder; tests may run as root, so only the mapping.
    const BookmarkPathCheck noPermission{
        BookmarkPathCheck::Problem{u"Velto does not currently have permission to read this folder."_s}};
    EXPECT_EQ(SecurityScopedBookmark::checkFailure(EACCES), noPermission);
    EXPECT_EQ(SecurityScopedBookmark::checkFailure(EPERM), noPermission);
}
