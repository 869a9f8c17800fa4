#include "TagAttributeFixture.h"

#include "Await.h"
#include "FinderTagMirror.h"
#include "SQLiteConnection.h"

#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using Availability = CardResolution::Availability;

namespace {

const QString identifier = u"io.quillmere.VeltoTagMirrorTest"_s;
const QString unreadableText =
    u"the folder's file manager tags could not be read, so they were left alone rather than overwritten"_s;

class FinderTagMirrorTest : public TagAttributeFixture {
protected:
    void SetUp() override
    {
        TagAttributeFixture::SetUp();
        if (IsSkipped())
            return;
        makeFolder(u"container"_s);
        m_database = Database::create(path(u"container/Velto.sqlite"_s));
        await(m_database->open());
    }

    // Without a container path the mirror has nowhere to store its preferences.
    [[nodiscard]] VeltoServices services(bool hasSettings = true) const
    {
        return {AppGroupContainer{identifier, hasSettings ? path(u"container"_s) : QString(),
                                  AppGroupContainer::Route::entitlement},
                m_database, DatabaseChangeNotifier::forAppGroup(identifier), MigrationOutcome{}};
    }

    void writeSettings(const QByteArray &lines) const
    {
        QFile file(path(u"container/"_s + identifier + u".ini"_s));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("[General]\n" + lines);
    }

    // A card on a new folder named `name`, stored, with the tag it is recorded to have put there.
    Card addCard(const QString &name, CardStatus status, const std::optional<QString> &recorded = std::nullopt)
    {
        makeFolder(name);
        Card card;
        card.id = u"card-"_s + name;
        card.bookmark = "bookmark";
        card.displayPath = path(name);
        card.displayName = name;
        card.status = status;
        card.finderTag = recorded;
        await(m_database->insertCard(card));
        return card;
    }

    [[nodiscard]] CardResolution resolution(const Card &card, Availability availability = Availability::available,
                                            bool hasLocation = true) const
    {
        return {card.id, hasLocation ? std::optional(url(card.displayName)) : std::nullopt, availability,
                card.displayName, card.displayPath, std::nullopt, std::nullopt};
    }

    [[nodiscard]] QHash<QString, CardResolution> allAvailable(const QList<Card> &cards) const
    {
        QHash<QString, CardResolution> resolutions;
        for (const Card &card : cards)
            resolutions.insert(card.id, resolution(card));
        return resolutions;
    }

    [[nodiscard]] std::optional<QString> recordedTag(const QString &cardID) const
    {
        return await(m_database->run([cardID](SQLiteConnection &connection) {
            return connection.queryText(u"SELECT finder_tag FROM cards WHERE id = ?"_s, {cardID});
        }));
    }

    std::shared_ptr<Database> m_database;
};

} // namespace

TEST_F(FinderTagMirrorTest, MirrorsTheStatusAndKeepsTheUsersTags)
{
    const std::optional<QString> none;
    const std::optional<QString> waiting = u"Velto: Waiting"_s;
    const std::optional<QString> complete = u"Velto: Complete"_s;
    const struct {
        const char *what;
        bool mirrorOn;
        QByteArray before;
        CardStatus status;
        std::optional<QString> recorded;
        QByteArray after;
        std::optional<QString> recordedAfter;
        std::optional<QString> failure;
    } cases[] = {
        {"the status tag goes after the user's tags", true, "Red,Invoices", CardStatus::waiting, none,
         "Red,Invoices,Velto: Waiting", waiting, none},
        {"the recorded tag is the one replaced", true, "Red,Velto: Waiting,Invoices", CardStatus::complete, waiting,
         "Red,Invoices,Velto: Complete", complete, none},
        {"a steady card never reads its folder", true, "\xff\xfe", CardStatus::waiting, waiting, "\xff\xfe", waiting,
         none},
        {"an unreadable attribute is left alone", true, "Red,\xff", CardStatus::notStarted, none, "Red,\xff", none,
         u"Alpha: "_s + unreadableText},
        {"off: the last tag goes, the attribute stays", false, "Velto: Complete", CardStatus::complete, complete, "",
         none, none},
        {"a status tag standing twice goes whole", true, "Velto: Waiting,Red,Velto: Waiting", CardStatus::complete,
         waiting, "Red,Velto: Complete", complete, none},
        {"off: a folder never tagged is not read", false, "\xff", CardStatus::complete, none, "\xff", none, none},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        writeSettings(c.mirrorOn ? "mirrorStatusToFinderTags=true\n" : "");
        FinderTagMirror mirror(services());
        ASSERT_EQ(mirror.isEnabled(), c.mirrorOn);
        const Card card = addCard(u"Alpha"_s, c.status, c.recorded);
        setRawTags(u"Alpha"_s, c.before);
        // Off, the board's ordinary pass does nothing; only the forced pass of turning it off runs.
        if (!c.mirrorOn) {
            EXPECT_FALSE(await(mirror.sync({card}, allAvailable({card}), false)));
            EXPECT_EQ(rawTags(u"Alpha"_s), c.before);
        }

        const bool changed = await(mirror.sync({card}, allAvailable({card}), !c.mirrorOn));

        EXPECT_EQ(rawTags(u"Alpha"_s), c.after);
        EXPECT_EQ(recordedTag(card.id), c.recordedAfter);
        EXPECT_EQ(changed, c.recordedAfter != c.recorded);
        EXPECT_EQ(mirror.lastError(),
                  c.failure ? std::optional(u"Some folders could not be tagged:\n"_s + *c.failure) : std::nullopt);

        await(m_database->deleteCard(card.id));
        ASSERT_TRUE(QDir(path(u"Alpha"_s)).removeRecursively());
    }
}

// One pass over a whole board: folders out of reach keep their tags and records until a later pass
// finds them, and every folder that fails is listed until a pass gets through.
TEST_F(FinderTagMirrorTest, TagsTheFoldersInReachAndGathersEveryFailure)
{
    writeSettings("mirrorStatusToFinderTags=true\n");
    FinderTagMirror mirror(services());
    const QList<Card> inReach{addCard(u"Alpha"_s, CardStatus::waiting), addCard(u"Beta"_s, CardStatus::complete),
                              addCard(u"Gamma"_s, CardStatus::inProgress)};
    const Card missing = addCard(u"Missing"_s, CardStatus::waiting);
    const Card unreachable = addCard(u"Unreachable"_s, CardStatus::waiting, u"Velto: Complete"_s);
    const Card placeless = addCard(u"Placeless"_s, CardStatus::waiting);
    const QList<Card> outOfReach{addCard(u"Unresolved"_s, CardStatus::waiting), missing, unreachable, placeless};
    QHash<QString, CardResolution> resolutions = allAvailable(inReach);
    resolutions.insert(missing.id, resolution(missing, Availability::missing));
    resolutions.insert(unreachable.id, resolution(unreachable, Availability::unreachable));
    resolutions.insert(placeless.id, resolution(placeless, Availability::available, false));
    for (const Card &card : outOfReach)
        setRawTags(card.displayName, "Red");
    setRawTags(u"Alpha"_s, "\xff");
    setRawTags(u"Gamma"_s, "\xfe");
    QSignalSpy errorChanges(&mirror, &FinderTagMirror::lastErrorChanged);

    EXPECT_TRUE(await(mirror.sync(inReach + outOfReach, resolutions, false)));

    EXPECT_EQ(mirror.lastError(), u"Some folders could not be tagged:\nAlpha: "_s + unreadableText + u"\nGamma: "_s
                                      + unreadableText);
    EXPECT_EQ(rawTags(u"Beta"_s), QByteArray("Velto: Complete"));
    for (const Card &card : outOfReach) {
        SCOPED_TRACE(qPrintable(card.displayName));
        EXPECT_EQ(rawTags(card.displayName), QByteArray("Red"));
        EXPECT_EQ(recordedTag(card.id), card.finderTag);
    }

    setRawTags(u"Alpha"_s, "");
    setRawTags(u"Gamma"_s, "");
    QList<Card> recorded = inReach;
    recorded[1].finderTag = u"Velto: Complete"_s;
    EXPECT_TRUE(await(mirror.sync(recorded, resolutions, false)));
    EXPECT_EQ(mirror.lastError(), std::nullopt);
    EXPECT_EQ(errorChanges.count(), 2);
}

TEST_F(FinderTagMirrorTest, TurningTheMirrorOnAndOffStoresThePreference)
{
    const Card card = addCard(u"Alpha"_s, CardStatus::waiting);
    setRawTags(u"Alpha"_s, "Red");
    FinderTagMirror mirror(services());
    QSignalSpy enabledChanges(&mirror, &FinderTagMirror::isEnabledChanged);

    await(mirror.setEnabled(true, {card}, allAvailable({card})));

    EXPECT_TRUE(mirror.isEnabled());
    EXPECT_EQ(rawTags(u"Alpha"_s), QByteArray("Red,Velto: Waiting"));
    EXPECT_TRUE(FinderTagMirror(services()).isEnabled());

    Card tagged = card;
    tagged.finderTag = recordedTag(card.id);
    await(mirror.setEnabled(false, {tagged}, allAvailable({tagged})));

    EXPECT_FALSE(mirror.isEnabled());
    EXPECT_EQ(rawTags(u"Alpha"_s), QByteArray("Red"));
    EXPECT_EQ(recordedTag(card.id), std::nullopt);
    EXPECT_FALSE(FinderTagMirror(services()).isEnabled());
    EXPECT_EQ(enabledChanges.count(), 2);
}

// Only a stored false turns badges off: the file manager's side may have written other forms.
TEST_F(FinderTagMirrorTest, ReadsOnlyAStoredFalseAsBadgesOff)
{
    const struct {
        QByteArray lines;
        bool isEnabled;
        bool showsBadges;
    } cases[] = {
        {"", false, true},
        {"mirrorStatusToFinderTags=true\nshowBadgesInFinder=false\n", true, false},
        {"showBadgesInFinder=0\n", false, true},
        {"showBadgesInFinder=no\n", false, true},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.lines.constData());
        writeSettings(c.lines);
        const FinderTagMirror mirror(services());
        EXPECT_EQ(mirror.isEnabled(), c.isEnabled);
        EXPECT_EQ(mirror.showsBadgesInFinder(), c.showsBadges);
    }
}

TEST_F(FinderTagMirrorTest, ChangingBadgesStoresThemAndTellsTheOtherProcesses)
{
    int posts = 0;
    const auto observation = DatabaseChangeNotifier::forAppGroup(identifier).observe([&posts] { ++posts; });
    if (!observation)
        GTEST_SKIP() << "no session bus to carry the change signal";
    // The second mirror has nowhere to store the preference, yet it still tells the others; a
    // repeat of the same value tells them too, since the badges redraw on the signal alone.
    FinderTagMirror stored(services());
    FinderTagMirror unstored(services(false));
    QSignalSpy storedChanges(&stored, &FinderTagMirror::showsBadgesInFinderChanged);

    stored.setShowsBadgesInFinder(false);
    stored.setShowsBadgesInFinder(false);
    unstored.setShowsBadgesInFinder(false);

    EXPECT_TRUE(QTest::qWaitFor([&posts] { return posts >= 3; }, 5000));
    QTest::qWait(200);
    EXPECT_EQ(posts, 3);
    EXPECT_EQ(storedChanges.count(), 1);
    EXPECT_FALSE(unstored.showsBadgesInFinder());
    EXPECT_FALSE(FinderTagMirror(services()).showsBadgesInFinder());
}
