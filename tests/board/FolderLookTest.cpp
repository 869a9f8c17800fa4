#include "FolderSandbox.h"

#include "FolderLook.h"
#include "SecurityScopedBookmark.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <functional>

using namespace Qt::StringLiterals;

namespace {

Card cardAt(const FolderSandbox &sandbox, const QString &relative, const QString &id)
{
    sandbox.makeFolder(relative);
    sandbox.makeFile(relative + u"/velto.md"_s);
    Card card;
    card.id = id;
    card.bookmark = SecurityScopedBookmark::create(sandbox.url(relative));
    card.displayPath = sandbox.path(relative);
    card.displayName = relative;
    return card;
}

// Dates the folder's last change a day back, as if nothing had touched it since.
void settle(const FolderSandbox &sandbox, const QString &relative)
{
    const timespec dayAgo{time(nullptr) - 86'400, 0};
    const timespec times[2]{dayAgo, dayAgo};
    ASSERT_EQ(utimensat(AT_FDCWD, QFile::encodeName(sandbox.path(relative)).constData(), times, 0), 0);
}

QStringList sortedKeys(const auto &table)
{
    QStringList keys = table.keys();
    keys.sort();
    return keys;
}

} // namespace

// A look begun at the rows a reload had, then completed with the rows the store gave, must tell
// what a look at the new rows alone would, having looked again only at the rows that changed.
TEST(FolderLook, aLookCompletedFromEarlierRowsTellsWhatAFreshLookWould)
{
    struct Case {
        const char *what;
        std::function<void(const FolderSandbox &, QList<Card> &)> change;
        qsizetype lookedAtAgain;
        // Done on disk before the early look.
        std::function<void(const FolderSandbox &)> before = [](const FolderSandbox &) {};
    };
    const auto moveB = [](const FolderSandbox &s) { s.move(u"b"_s, u"moved/b"_s); };
    const QList<Case> cases{
        {"nothing changed", [](const FolderSandbox &, QList<Card> &) {}, 0},
        {"the rows in another order", [](const FolderSandbox &, QList<Card> &rows) { std::ranges::reverse(rows); }, 0},
        {"a status changed", [](const FolderSandbox &, QList<Card> &rows) { rows[1].status = CardStatus::complete; },
         0},
        {"a row removed", [](const FolderSandbox &, QList<Card> &rows) { rows.removeAt(1); }, 0},
        {"a row added", [](const FolderSandbox &s, QList<Card> &rows) { rows.append(cardAt(s, u"d"_s, u"D"_s)); }, 1},
        {"a row pointed at another folder",
         [](const FolderSandbox &s, QList<Card> &rows) { rows[1] = cardAt(s, u"elsewhere"_s, u"B"_s); }, 1},
        {"a bookmark damaged", [](const FolderSandbox &, QList<Card> &rows) { rows[2].bookmark.chop(4); }, 1},
        {"a folder moved away", [](const FolderSandbox &, QList<Card> &) {}, 0, moveB},
        {"a moved folder's row removed", [](const FolderSandbox &, QList<Card> &rows) { rows.removeAt(1); }, 0, moveB},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.what);
        const FolderSandbox sandbox;
        const QList<Card> before{cardAt(sandbox, u"a"_s, u"A"_s), cardAt(sandbox, u"b"_s, u"B"_s),
                                 cardAt(sandbox, u"c"_s, u"C"_s)};
        c.before(sandbox);
        const FolderLook::Earlier none;
        const FolderLook early = FolderLook::of(before, none);
        const FolderLook::Earlier earlier{{}, early.verdicts.known, early.readsAtRows, early.withoutFile};
        QList<Card> rows = before;
        c.change(sandbox, rows);

        FolderLook::OfChanges changes = FolderLook::ofChanges(before, rows, earlier);
        EXPECT_EQ(changes.changedIDs.size(), c.lookedAtAgain);
        const FolderLook completed = FolderLook::completed(early, std::move(changes), rows);

        const FolderLook fresh = FolderLook::of(rows, none);
        EXPECT_EQ(sortedKeys(completed.verdicts.known), sortedKeys(fresh.verdicts.known));
        for (const Card &row : rows)
            EXPECT_EQ(completed.verdicts.known.value(row.id), fresh.verdicts.known.value(row.id)) << row.id.toStdString();
        EXPECT_EQ(completed.readsAtRows, fresh.readsAtRows);
        const auto ids = [](const QList<Card> &cards) {
            QStringList ids;
            for (const Card &card : cards)
                ids.append(card.id);
            return ids;
        };
        EXPECT_EQ(ids(completed.verdicts.needingSearch), ids(fresh.verdicts.needingSearch));
    }
}

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
    for (const Case &c : cases) {
        SCOPED_TRACE(c.what);
        const FolderSandbox sandbox;
        sandbox.makeFolder(u"a"_s);
        Card card;
        card.id = u"A"_s;
        card.bookmark = SecurityScopedBookmark::create(sandbox.url(u"a"_s));
        card.displayPath = sandbox.path(u"a"_s);
        card.displayName = u"a"_s;
        if (c.isSettled)
            settle(sandbox, u"a"_s);
        const FolderLook first = FolderLook::of({card}, {});
        EXPECT_EQ(first.withoutFile.contains(u"A"_s), c.isSettled);

        c.change(sandbox);
        const FolderLook second =
            FolderLook::of({card}, {{}, first.verdicts.known, first.readsAtRows, first.withoutFile});

        EXPECT_EQ(second.withoutFile.contains(u"A"_s), c.isKnownWithout);
        EXPECT_EQ(second.readsAtRows.contains(u"A"_s), c.isRead);
    }
}
