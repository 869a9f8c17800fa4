#include "FolderSandbox.h"

#include "Await.h"
#include "CardResolution.h"
#include "Offload.h"
#include "SecurityScopedBookmark.h"

#include <QThreadPool>

#include <gtest/gtest.h>

#include <functional>

using namespace Qt::StringLiterals;
using Availability = CardResolution::Availability;

namespace {

const QString origin = u"w/x/y/cards/Alpha"_s;

Card cardOf(const FolderSandbox &sandbox, const QString &relative, const QString &id = u"C1"_s)
{
    sandbox.makeFolder(relative);
    Card card;
    card.id = id;
    card.bookmark = SecurityScopedBookmark::create(sandbox.url(relative));
    card.displayPath = sandbox.path(relative);
    card.displayName = relative.section(u'/', -1);
    return card;
}

QStringList idsOf(const QList<Card> &cards)
{
    QStringList ids;
    for (const Card &card : cards)
        ids.append(card.id);
    return ids;
}

} // namespace

TEST(CardResolution, givesAVerdictOnEveryFateOfAFolder)
{
    const QString trashText = u"This folder is in the Trash."_s;
    struct Case {
        const char *what;
        QString start;
        std::function<void(const FolderSandbox &, Card &)> change;
        Availability availability;
        QString shown;
        bool hasLocation;
        std::optional<QString> failure;
        bool isRefreshed;
    };
    const auto none = [](const FolderSandbox &, Card &) {};
    const QList<Case> cases{
        {"left alone", origin, none, Availability::available, origin, true, {}, false},
        {"renamed", origin, [](const FolderSandbox &s, Card &) { s.move(origin, u"w/x/y/cards/Beta"_s); },
         Availability::available, u"w/x/y/cards/Beta"_s, true, {}, true},
        // Followed into the Trash, the card keeps the name and path it had.
        {"in the Trash", origin, [](const FolderSandbox &s, Card &) { s.move(origin, u"data/Trash/files/Alpha"_s); },
         Availability::missing, origin, false, trashText, true},
        {"under a live folder called .Trash", u"w/.Trash/Alpha"_s, none, Availability::missing, u"w/.Trash/Alpha"_s,
         false, trashText, false},
        {"deleted", origin, [](const FolderSandbox &s, Card &) { s.remove(origin); }, Availability::missing, origin,
         false, u"The folder is no longer at this location."_s, false},
        {"replaced by a file",
         origin,
         [](const FolderSandbox &s, Card &) {
             s.remove(origin);
             s.makeFile(origin);
         },
         Availability::unreachable, origin, true, u"A file is at this path, not a folder."_s, true},
        {"with a damaged bookmark", origin, [](const FolderSandbox &, Card &card) { card.bookmark.chop(4); },
         Availability::missing, origin, false, u"Could not resolve a bookmark: The bookmark is damaged."_s, false},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.what);
        const FolderSandbox sandbox;
        Card card = cardOf(sandbox, c.start);
        c.change(sandbox, card);

        const CardResolution resolution = CardResolution::resolve(card);

        EXPECT_EQ(resolution.cardID, card.id);
        EXPECT_EQ(resolution.availability, c.availability);
        EXPECT_EQ(resolution.displayPath, sandbox.path(c.shown));
        EXPECT_EQ(resolution.displayName, c.shown.section(u'/', -1));
        EXPECT_EQ(resolution.locationURL, c.hasLocation ? std::optional(sandbox.url(c.shown)) : std::nullopt);
        EXPECT_EQ(resolution.failure, c.failure);
        EXPECT_EQ(resolution.refreshedBookmark.has_value(), c.isRefreshed);
    }
}

// Only a change of missing, not every change of availability, is stored.
TEST(CardResolution, persistsOnlyWhatChanged)
{
    Card card;
    card.id = u"C1"_s;
    card.displayPath = u"/a/Alpha"_s;
    card.displayName = u"Alpha"_s;
    const struct {
        const char *what;
        bool wasMissing;
        Availability now;
        QString name;
        QString path;
        bool isRenewed;
        bool needsPersisting;
    } cases[] = {
        {"nothing", false, Availability::available, u"Alpha"_s, u"/a/Alpha"_s, false, false},
        {"now missing", false, Availability::missing, u"Alpha"_s, u"/a/Alpha"_s, false, true},
        {"back after being missing", true, Availability::available, u"Alpha"_s, u"/a/Alpha"_s, false, true},
        {"still missing", true, Availability::missing, u"Alpha"_s, u"/a/Alpha"_s, false, false},
        {"missing, now unreachable", true, Availability::unreachable, u"Alpha"_s, u"/a/Alpha"_s, false, true},
        {"unreachable, not missing", false, Availability::unreachable, u"Alpha"_s, u"/a/Alpha"_s, false, false},
        {"another name", false, Availability::available, u"Beta"_s, u"/a/Alpha"_s, false, true},
        {"another path", false, Availability::available, u"Alpha"_s, u"/b/Alpha"_s, false, true},
        {"a renewed bookmark", false, Availability::available, u"Alpha"_s, u"/a/Alpha"_s, true, true},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        card.isMissing = c.wasMissing;
        const CardResolution resolution{card.id, std::nullopt, c.now, c.name, c.path,
                                        c.isRenewed ? std::optional<QByteArray>("new") : std::nullopt, std::nullopt};
        EXPECT_EQ(resolution.needsPersisting(card), c.needsPersisting);
    }
}

// Run as the board runs it, from the thread pool, with the pool held to the one thread the
// work itself occupies: shares waiting on the pool would never start.
TEST(CardResolution, resolvesAllCardsByIDWithTheLaterOfTwoWinning)
{
    const FolderSandbox sandbox;
    QList<Card> cards;
    // Enough cards to be cut into shares for more than one thread.
    for (int i = 0; i < 450; ++i)
        cards.append(cardOf(sandbox, u"w/x/y/cards/%1"_s.arg(i), u"C%1"_s.arg(i)));
    sandbox.remove(u"w/x/y/cards/7"_s);
    cards.append(cardOf(sandbox, u"w/x/y/cards/other"_s, u"C3"_s));
    QThreadPool *pool = QThreadPool::globalInstance();
    const int threads = pool->maxThreadCount();
    pool->setMaxThreadCount(1);

    const QHash<QString, CardResolution> resolutions =
        await(onThreadPool([&cards] { return CardResolution::resolveAll(cards); }));

    pool->setMaxThreadCount(threads);
    ASSERT_EQ(resolutions.size(), 450);
    for (qsizetype i = 0; i < cards.size(); ++i) {
        if (i != 3) {
            EXPECT_EQ(resolutions.value(cards.at(i).id), CardResolution::resolve(cards.at(i))) << i;
        }
    }
    EXPECT_EQ(resolutions.value(u"C3"_s).displayName, u"other"_s);
    EXPECT_EQ(resolutions.value(u"C7"_s).availability, Availability::missing);
}

// A reload hands in the verdicts and confirmations it had; what it gets back must be this board's
// verdicts all the same, whichever of them it could keep or confirm at one look.
TEST(CardResolution, keepsEarlierVerdictsOnlyWhereTheyStillHold)
{
    const QStringList all{u"C1"_s, u"C2"_s, u"C3"_s};
    using Change = std::function<void(const FolderSandbox &, QList<Card> &)>;
    const Change none = [](const FolderSandbox &, QList<Card> &) {};
    struct Case {
        const char *what;
        Change change;
        bool isRemounted;
        QStringList known;
        QStringList searched;
        bool isEarlierItself;
        bool isConfirmedItself;
    };
    const QList<Case> cases{
        {"nothing changed", none, false, all, {}, true, true},
        {"the mounts read anew", none, true, all, {}, true, false},
        {"a card removed from the board", [](const FolderSandbox &, QList<Card> &cards) { cards.removeLast(); },
         false, {u"C1"_s, u"C2"_s}, {}, false, false},
        {"a card added", [](const FolderSandbox &s, QList<Card> &cards) { cards.append(cardOf(s, u"d"_s, u"C4"_s)); },
         false, all + QStringList{u"C4"_s}, {}, false, false},
        {"a bookmark damaged", [](const FolderSandbox &, QList<Card> &cards) { cards[1].bookmark.chop(4); }, false,
         all, {}, false, false},
        {"a bookmark that now leads to another folder",
         [](const FolderSandbox &, QList<Card> &cards) { cards[1].bookmark = cards[2].bookmark; }, false, all, {},
         false, false},
        {"a folder renamed", [](const FolderSandbox &s, QList<Card> &) { s.move(u"b"_s, u"renamed"_s); }, false,
         {u"C1"_s, u"C3"_s}, {u"C2"_s}, false, false},
        {"a folder replaced by another of its name",
         [](const FolderSandbox &s, QList<Card> &) {
             s.remove(u"b"_s);
             s.makeFolder(u"b"_s);
         },
         false, {u"C1"_s, u"C3"_s}, {u"C2"_s}, false, false},
    };
    MountWatch mounts;
    // With and without a watch on the folders, which spares the look at a folder it noted nothing of.
    for (const bool isWatched : {false, true}) {
        for (const Case &c : cases) {
            SCOPED_TRACE(c.what);
            SCOPED_TRACE(isWatched ? "watched" : "not watched");
            const FolderSandbox sandbox;
            QList<Card> cards{cardOf(sandbox, u"a"_s, u"C1"_s), cardOf(sandbox, u"b"_s, u"C2"_s),
                              cardOf(sandbox, u"c"_s, u"C3"_s)};
            FolderWatch folders;
            FolderWatch *watch = isWatched ? &folders : nullptr;
            // Through a watch, as the board reads the mounts, so that a confirmation can hold.
            auto context = ResolutionContext::current(mounts);
            const auto earlier = CardResolution::resolveWithoutSearch(cards, context, {}, {}, watch);
            c.change(sandbox, cards);
            if (c.isRemounted)
                ++context.mountGeneration;

            const auto now = CardResolution::resolveWithoutSearch(cards, context, earlier.known, earlier.confirmed, watch);

            auto known = now.known.keys();
            known.sort();
            EXPECT_EQ(known, c.known);
            EXPECT_EQ(idsOf(now.needingSearch), c.searched);
            for (const Card &card : cards) {
                if (now.known.contains(card.id)) {
                    EXPECT_EQ(now.known.value(card.id), CardResolution::resolve(card)) << card.id.toStdString();
                }
            }
            EXPECT_EQ(now.known.isSharedWith(earlier.known), c.isEarlierItself);
            EXPECT_EQ(now.confirmed.isSharedWith(earlier.confirmed), c.isConfirmedItself);
        }
    }
}

// A folder gone for good, whose search found nothing, is told missing again at every reload
// without a search, and leaves the other cards' verdicts and confirmations as they were.
TEST(CardResolution, aFolderThatStaysMissingLeavesTheEarlierTablesAsTheyWere)
{
    for (const bool isWatched : {false, true}) {
        SCOPED_TRACE(isWatched ? "watched" : "not watched");
        const FolderSandbox sandbox;
        const QList<Card> cards{cardOf(sandbox, u"a"_s, u"C1"_s), cardOf(sandbox, u"b"_s, u"C2"_s),
                                cardOf(sandbox, u"c"_s, u"C3"_s)};
        sandbox.remove(u"b"_s);
        MountWatch mounts;
        FolderWatch folders;
        FolderWatch *watch = isWatched ? &folders : nullptr;
        const auto context = ResolutionContext::current(mounts, std::make_shared<FailedSearches>());
        auto first = CardResolution::resolveWithoutSearch(cards, context, {}, {}, watch);
        ASSERT_EQ(first.needingSearch.size(), 1);
        first.known.insert(CardResolution::resolveAll(first.needingSearch, context));

        const auto again = CardResolution::resolveWithoutSearch(cards, context, first.known, first.confirmed, watch);
        const auto third = CardResolution::resolveWithoutSearch(cards, context, again.known, again.confirmed, watch);

        EXPECT_TRUE(again.needingSearch.isEmpty());
        EXPECT_EQ(again.known.value(u"C2"_s).availability, CardResolution::Availability::missing);
        EXPECT_TRUE(again.known.isSharedWith(first.known));
        EXPECT_TRUE(third.needingSearch.isEmpty());
        EXPECT_TRUE(third.known.isSharedWith(first.known));
        EXPECT_TRUE(third.confirmed.isSharedWith(again.confirmed));
    }
}

// A folder gone for good keeps its verdict while nothing could have changed it, and is looked at
// afresh as soon as something could: the folder coming back, another taking its place, or the
// user asking for the search again.
TEST(CardResolution, aFolderGoneForGoodIsLookedAtAgainOnlyWhenItsVerdictCouldChange)
{
    using Change = std::function<void(const FolderSandbox &, FailedSearches &)>;
    struct Case {
        const char *what;
        Change change;
        bool isSearched;
        bool isEarlierItself;
    };
    const QList<Case> cases{
        {"nothing", [](const FolderSandbox &, FailedSearches &) {}, false, true},
        {"a folder made beside it", [](const FolderSandbox &s, FailedSearches &) { s.makeFolder(u"other"_s); },
         false, true},
        {"the folder brought back", [](const FolderSandbox &s, FailedSearches &) { s.move(u"held/b"_s, u"b"_s); },
         false, false},
        {"another folder made in its place", [](const FolderSandbox &s, FailedSearches &) { s.makeFolder(u"b"_s); },
         false, false},
        {"its search asked for again", [](const FolderSandbox &, FailedSearches &failed) { failed.clear(); }, true,
         false},
    };
    MountWatch mounts;
    for (const bool isWatched : {false, true}) {
        for (const Case &c : cases) {
            SCOPED_TRACE(c.what);
            SCOPED_TRACE(isWatched ? "watched" : "not watched");
            const FolderSandbox sandbox;
            const QList<Card> cards{cardOf(sandbox, u"a"_s, u"C1"_s), cardOf(sandbox, u"b"_s, u"C2"_s),
                                    cardOf(sandbox, u"c"_s, u"C3"_s)};
            sandbox.makeFolder(u"held"_s);
            sandbox.move(u"b"_s, u"held/b"_s);
            // As after a search that found nothing.
            const auto failed = std::make_shared<FailedSearches>();
            failed->insert(cards.at(1).bookmark);
            FolderWatch folders;
            FolderWatch *watch = isWatched ? &folders : nullptr;
            const auto context = ResolutionContext::current(mounts, failed);
            const auto first = CardResolution::resolveWithoutSearch(cards, context, {}, {}, watch);
            const auto settled = CardResolution::resolveWithoutSearch(cards, context, first.known, first.confirmed, watch);
            ASSERT_EQ(settled.known.value(u"C2"_s).availability, Availability::missing);
            ASSERT_TRUE(settled.confirmed.isSharedWith(first.confirmed));

            c.change(sandbox, *failed);
            const auto now = CardResolution::resolveWithoutSearch(cards, context, settled.known, settled.confirmed, watch);

            EXPECT_EQ(idsOf(now.needingSearch), c.isSearched ? QStringList{u"C2"_s} : QStringList{});
            if (!c.isSearched) {
                EXPECT_EQ(now.known.value(u"C2"_s), CardResolution::resolve(cards.at(1), context));
            }
            EXPECT_EQ(now.known.isSharedWith(settled.known), c.isEarlierItself);
        }
    }
}
