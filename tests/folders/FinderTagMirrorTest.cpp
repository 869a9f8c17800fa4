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

    [[nodiscard]] VeltoServices services(const QString &containerPath) const
    {
        return {AppGroupContainer{identifier, containerPath, AppGroupContainer::Route::entitlement}, m_database,
                DatabaseChangeNotifier::forAppGroup(identifier), MigrationOutcome{}};
    }
    [[nodiscard]] VeltoServices services() const { return services(path(u"container"_s)); }

    [[nodiscard]] QString settingsFile() const { return path(u"container/"_s + identifier + u".ini"_s); }

    void writeSettings(const QByteArray &lines) const
    {
        QFile file(settingsFile());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("[General]\n" + lines);
    }

    [[nodiscard]] QByteArray settingsText() const
    {
        QFile file(settingsFile());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
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
        CardResolution resolution;
        resolution.cardID = card.id;
        resolution.availability = availability;
        if (hasLocation)
            resolution.locationURL = url(card.displayName);
        resolution.displayName = card.displayName;
        resolution.displayPath = card.displayPath;
        return resolution;
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
    const std::optional<QByteArray> noAttribute;
    const struct {
        const char *what;
        bool mirrorOn;
        std::optional<QByteArray> before;
        CardStatus status;
        std::optional<QString> recorded;
        std::optional<QByteArray> after;
        std::optional<QString> recordedAfter;
        std::optional<QString> failure;
    } cases[] = {
        {"the status tag goes after the user's tags", true, QByteArray("Red,Invoices"), CardStatus::waiting, none,
         QByteArray("Red,Invoices,Velto: Waiting"), waiting, none},
        {"a status change replaces the tag at the end", true, QByteArray("Red,Velto: Waiting,Invoices"),
         CardStatus::complete, waiting, QByteArray("Red,Invoices,Velto: Complete"), complete, none},
        {"the tag removed by hand: only the new one is added", true, QByteArray("Red"), CardStatus::complete, waiting,
         QByteArray("Red,Velto: Complete"), complete, none},
        {"the tag removed by hand, same status: nothing happens", true, QByteArray("Red"), CardStatus::waiting,
         waiting, QByteArray("Red"), waiting, none},
        {"a steady card never reads its folder", true, QByteArray("\xff\xfe"), CardStatus::waiting, waiting,
         QByteArray("\xff\xfe"), waiting, none},
        {"no attribute yet", true, noAttribute, CardStatus::inProgress, none, QByteArray("Velto: In Progress"),
         u"Velto: In Progress"_s, none},
        {"an unreadable attribute is left alone", true, QByteArray("Red,\xff"), CardStatus::notStarted, none,
         QByteArray("Red,\xff"), none, u"Alpha: "_s + unreadableText},
        {"off: the last tag goes, the attribute stays", false, QByteArray("Velto: Complete"), CardStatus::complete,
         complete, QByteArray(""), none, none},
        {"off: the tag already gone by hand, the folder is not written", false, QByteArray("Red , Invoices"),
         CardStatus::complete, complete, QByteArray("Red , Invoices"), none, none},
        {"off: a folder never tagged is not read", false, QByteArray("\xff"), CardStatus::complete, none,
         QByteArray("\xff"), none, none},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        writeSettings(c.mirrorOn ? "mirrorStatusToFinderTags=true\n" : "");
        FinderTagMirror mirror(services());
        ASSERT_EQ(mirror.isEnabled(), c.mirrorOn);
        const Card card = addCard(u"Alpha"_s, c.status, c.recorded);
        if (c.before)
            setRawTags(u"Alpha"_s, *c.before);

        // On, the board's ordinary pass; off, only the forced pass of turning it off runs.
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

TEST_F(FinderTagMirrorTest, LeavesFoldersOutOfReachAsTheyAre)
{
    writeSettings("mirrorStatusToFinderTags=true\n");
    FinderTagMirror mirror(services());
    const Card unresolved = addCard(u"Unresolved"_s, CardStatus::waiting);
    const Card missing = addCard(u"Missing"_s, CardStatus::waiting);
    const Card unreachable = addCard(u"Unreachable"_s, CardStatus::waiting, u"Velto: Complete"_s);
    const Card placeless = addCard(u"Placeless"_s, CardStatus::waiting);
    const QList<Card> cards{unresolved, missing, unreachable, placeless};
    for (const Card &card : cards)
        setRawTags(card.displayName, "Red");
    const QHash<QString, CardResolution> resolutions{
        {missing.id, resolution(missing, Availability::missing)},
        {unreachable.id, resolution(unreachable, Availability::unreachable)},
        {placeless.id, resolution(placeless, Availability::available, false)},
    };

    EXPECT_FALSE(await(mirror.sync(cards, resolutions, false)));

    for (const Card &card : cards) {
        SCOPED_TRACE(qPrintable(card.displayName));
        EXPECT_EQ(rawTags(card.displayName), QByteArray("Red"));
        EXPECT_EQ(recordedTag(card.id), card.finderTag);
    }
    EXPECT_EQ(mirror.lastError(), std::nullopt);
}

TEST_F(FinderTagMirrorTest, GathersEveryFailingFolderAndClearsThemOnceFixed)
{
    writeSettings("mirrorStatusToFinderTags=true\n");
    FinderTagMirror mirror(services());
    const QList<Card> cards{addCard(u"Alpha"_s, CardStatus::waiting), addCard(u"Beta"_s, CardStatus::complete),
                            addCard(u"Gamma"_s, CardStatus::inProgress)};
    setRawTags(u"Alpha"_s, "\xff");
    setRawTags(u"Gamma"_s, "\xfe");
    QSignalSpy errorChanges(&mirror, &FinderTagMirror::lastErrorChanged);

    EXPECT_TRUE(await(mirror.sync(cards, allAvailable(cards), false)));

    EXPECT_EQ(mirror.lastError(), u"Some folders could not be tagged:\nAlpha: "_s + unreadableText + u"\nGamma: "_s
                                      + unreadableText);
    EXPECT_EQ(rawTags(u"Beta"_s), QByteArray("Velto: Complete"));
    EXPECT_EQ(recordedTag(cards[0].id), std::nullopt);

    setRawTags(u"Alpha"_s, "");
    setRawTags(u"Gamma"_s, "");
    QList<Card> recorded = cards;
    recorded[1].finderTag = u"Velto: Complete"_s;
    EXPECT_TRUE(await(mirror.sync(recorded, allAvailable(recorded), false)));
    EXPECT_EQ(mirror.lastError(), std::nullopt);
    EXPECT_EQ(mirror.lastErrorText(), QString());
    EXPECT_EQ(errorChanges.count(), 2);
}

TEST_F(FinderTagMirrorTest, WhileOffOnlyAForcedPassRuns)
{
    FinderTagMirror mirror(services());
    const Card card = addCard(u"Alpha"_s, CardStatus::waiting, u"Velto: Waiting"_s);
    setRawTags(u"Alpha"_s, "\xff");
    EXPECT_FALSE(await(mirror.sync({card}, allAvailable({card}), true)));
    const auto failure = mirror.lastError();
    ASSERT_TRUE(failure.has_value());
    setRawTags(u"Alpha"_s, "Velto: Waiting");

    EXPECT_FALSE(await(mirror.sync({card}, allAvailable({card}), false)));

    EXPECT_EQ(rawTags(u"Alpha"_s), QByteArray("Velto: Waiting"));
    EXPECT_EQ(recordedTag(card.id), u"Velto: Waiting"_s);
    EXPECT_EQ(mirror.lastError(), failure);
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
    EXPECT_TRUE(settingsText().contains("mirrorStatusToFinderTags=true"));
    EXPECT_TRUE(FinderTagMirror(services()).isEnabled());

    Card tagged = card;
    tagged.finderTag = recordedTag(card.id);
    await(mirror.setEnabled(false, {tagged}, allAvailable({tagged})));

    EXPECT_FALSE(mirror.isEnabled());
    EXPECT_EQ(rawTags(u"Alpha"_s), QByteArray("Red"));
    EXPECT_EQ(recordedTag(card.id), std::nullopt);
    EXPECT_TRUE(settingsText().contains("mirrorStatusToFinderTags=false"));
    EXPECT_EQ(enabledChanges.count(), 2);
}

TEST_F(FinderTagMirrorTest, ReadsOnlyAStoredFalseAsBadgesOff)
{
    const struct {
        QByteArray lines;
        bool isEnabled;
        bool showsBadges;
    } cases[] = {
        {"", false, true},
        {"mirrorStatusToFinderTags=true\nshowBadgesInFinder=false\n", true, false},
        {"showBadgesInFinder=true\n", false, true},
        {"showBadgesInFinder=0\n", false, true},
        {"showBadgesInFinder=no\n", false, true},
        {"mirrorStatusToFinderTags=false\n", false, true},
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
    // The second mirror has nowhere to store the preference, yet it still tells the others.
    FinderTagMirror stored(services());
    FinderTagMirror unstored(services(QString()));
    QSignalSpy storedChanges(&stored, &FinderTagMirror::showsBadgesInFinderChanged);

    stored.setShowsBadgesInFinder(false);
    stored.setShowsBadgesInFinder(false);
    unstored.setShowsBadgesInFinder(false);

    EXPECT_TRUE(QTest::qWaitFor([&posts] { return posts >= 2; }, 5000));
    QTest::qWait(200);
    EXPECT_EQ(posts, 2);
    EXPECT_EQ(storedChanges.count(), 1);
    EXPECT_FALSE(stored.showsBadgesInFinder());
    EXPECT_FALSE(unstored.showsBadgesInFinder());
    EXPECT_TRUE(settingsText().contains("showBadgesInFinder=false"));
    EXPECT_FALSE(FinderTagMirror(services()).showsBadgesInFinder());
}
