#include "FolderSandbox.h"

#include "FolderLook.h"
#include "SecurityScopedBookmark.h"

#include <gtest/gtest.h>

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
        const FolderLook::Earlier earlier{{}, early.verdicts.known, early.readsAtRows};
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
