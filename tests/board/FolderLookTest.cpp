#include "FolderSandbox.h"

#include "FolderLook.h"
#include "SecurityScopedBookmark.h"
#include "SettledFolder.h"

#include <gtest/gtest.h>

#include <functional>

using namespace Qt::StringLiterals;

namespace {

Card cardOf(const FolderSandbox &sandbox, const QString &relative)
{
    Card card;
    card.id = u"A"_s;
    card.bookmark = SecurityScopedBookmark::create(sandbox.url(relative));
    card.displayPath = sandbox.path(relative);
    card.displayName = relative;
    return card;
}

} // namespace

// Most folders hold no working file, and are not looked into on every reload; one that gains a
// file must show it on the next.
TEST(FolderLook, aFolderWithoutAWorkingFileIsLookedIntoAgainOnceItChanges)
{
    struct Case {
        const char *what;
        bool isSettled;
        std::function<void(const FolderSandbox &)> change;
        bool isKnownWithout;
        bool isRead;
    };
    const auto none = [](const FolderSandbox &) {};
    const auto writeFile = [](const FolderSandbox &s, const QString &relative) {
        QFile file(s.path(relative));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("- [ ] Draft\n");
    };
    const QList<Case> cases{
        {"left alone", true, none, true, false},
        {"a file written into it", true, [&](const FolderSandbox &s) { writeFile(s, u"a/velto.md"_s); }, false, true},
        {"a file moved into it",
         true,
         [&](const FolderSandbox &s) {
             writeFile(s, u"elsewhere.md"_s);
             s.move(u"elsewhere.md"_s, u"a/velto.md"_s);
         },
         false, true},
        // Changed too lately to be sure a file added in the same tick of its clock would show.
        {"changed a moment ago", false, none, false, false},
    };
    // With and without a watch on the folders: what the watch notes must send the look into the
    // folder just as its changed time does.
    for (const bool isWatched : {false, true}) {
        for (const Case &c : cases) {
            SCOPED_TRACE(c.what);
            SCOPED_TRACE(isWatched ? "watched" : "not watched");
            const FolderSandbox sandbox;
            sandbox.makeFolder(u"a"_s);
            const Card card = cardOf(sandbox, u"a"_s);
            if (c.isSettled) {
                ASSERT_TRUE(settleFolder(sandbox.path(u"a"_s)));
            }
            // Through a watch of the mounts, as the board looks, so that the second look confirms
            // the folder at one system call, or at none.
            const auto mounts = std::make_shared<MountWatch>();
            const auto folders = isWatched ? std::make_shared<FolderWatch>() : nullptr;
            const FolderLook first = FolderLook::of({card}, {{}, mounts, folders, {}, {}, {}, {}});
            EXPECT_EQ(first.withoutFile.contains(u"A"_s), c.isSettled);

            c.change(sandbox);
            const FolderLook second =
                FolderLook::of({card}, {{}, mounts, folders, first.verdicts.known, first.verdicts.confirmed,
                                        first.readsAtRows, first.withoutFile});

            EXPECT_EQ(second.withoutFile.contains(u"A"_s), c.isKnownWithout);
            EXPECT_EQ(second.readsAtRows.contains(u"A"_s), c.isRead);
        }
    }
}

// A folder gone for good is not looked into; brought back holding a working file, it shows it.
TEST(FolderLook, aFolderGoneForGoodShowsItsWorkingFileWhenBroughtBack)
{
    for (const bool isWatched : {false, true}) {
        SCOPED_TRACE(isWatched ? "watched" : "not watched");
        const FolderSandbox sandbox;
        sandbox.makeFolder(u"a"_s);
        sandbox.makeFile(u"a/velto.md"_s);
        const Card card = cardOf(sandbox, u"a"_s);
        sandbox.makeFolder(u"held"_s);
        sandbox.move(u"a"_s, u"held/a"_s);
        // As after a search that found nothing.
        const auto failed = std::make_shared<FailedSearches>();
        failed->insert(card.bookmark);
        const auto mounts = std::make_shared<MountWatch>();
        const auto folders = isWatched ? std::make_shared<FolderWatch>() : nullptr;
        const FolderLook gone = FolderLook::of({card}, {failed, mounts, folders, {}, {}, {}, {}});
        ASSERT_FALSE(gone.readsAtRows.contains(u"A"_s));

        sandbox.move(u"held/a"_s, u"a"_s);
        const FolderLook back = FolderLook::of({card}, {failed, mounts, folders, gone.verdicts.known,
                                                        gone.verdicts.confirmed, gone.readsAtRows, gone.withoutFile});

        EXPECT_EQ(back.verdicts.known.value(u"A"_s).availability, CardResolution::Availability::available);
        EXPECT_TRUE(back.readsAtRows.contains(u"A"_s));
    }
}
