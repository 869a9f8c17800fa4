#include "BoardFixture.h"
#include "FolderTagAttribute.h"

using namespace Qt::StringLiterals;

namespace {

class BoardFoldersTest : public BoardFixture {
protected:
    [[nodiscard]] int cardRows() { return int(await(database().allCards()).size()); }
};

TEST_F(BoardFoldersTest, NewFoldersGoToTheBottomOfNotStartedAndTheFirstIsSelected)
{
    addFolders({u"Old"_s});
    await(board().setStatus(CardStatus::inProgress, *cardNamed(u"Old"_s)));
    addFolders({u"A"_s, u"B"_s});

    EXPECT_EQ(column(CardStatus::notStarted), (QStringList{u"A"_s, u"B"_s}));
    const Card a = *cardNamed(u"A"_s);
    EXPECT_EQ(a.priority, Priority::later);
    EXPECT_EQ(a.displayPath, sandbox().path(u"A"_s));
    EXPECT_EQ(board().selectedCardID(), a.id);
    EXPECT_FALSE(board().errorMessage());
}

TEST_F(BoardFoldersTest, KnownFoldersAreRecognisedRatherThanAddedAgain)
{
    addFolders({u"A"_s, u"B"_s});
    const Card a = *cardNamed(u"A"_s);

    // The same folder, also under the name it has since the last load, selects its card and
    // writes nothing.
    sandbox().move(u"A"_s, u"A2"_s);
    await(board().reload());
    board().setSelectedCardID(std::nullopt);
    await(board().addFolders({sandbox().url(u"B"_s), sandbox().url(u"A2"_s)}));
    EXPECT_EQ(cardRows(), 2);
    EXPECT_EQ(board().selectedCardID(), cardNamed(u"B"_s)->id);
    EXPECT_FALSE(board().errorMessage());
    await(board().addFolders({sandbox().url(u"A2"_s)}));
    EXPECT_EQ(board().selectedCardID(), a.id);

    // One folder twice in a batch makes two cards: the passes see the board as the last load left it.
    addFolders({u"C"_s, u"C"_s});
    EXPECT_EQ(cardRows(), 4);
}

TEST_F(BoardFoldersTest, MissingFolderBackAtItsPathRelinksTheSameCard)
{
    addFolders({u"A"_s});
    const Card a = *cardNamed(u"A"_s);
    sandbox().makeFile(u"A/notes.txt"_s);
    picker().answers.push_back({sandbox().url(u"A"_s)});
    await(board().addDropped({sandbox().url(u"A/notes.txt"_s)}));
    await(board().resolvePendingFileDrops());
    ASSERT_EQ(board().checklistProgress().value(a.id).total, 1);

    sandbox().remove(u"A"_s);
    await(board().reload());
    ASSERT_TRUE(cardNamed(u"A"_s)->isMissing);

    // Another folder at that path now: the card that lost it takes it, with its checklist.
    sandbox().makeFolder(u"A"_s);
    await(board().addFolders({sandbox().url(u"A"_s)}));
    EXPECT_EQ(cardRows(), 1);
    EXPECT_EQ(cardNamed(u"A"_s)->id, a.id);
    EXPECT_FALSE(cardNamed(u"A"_s)->isMissing);
    EXPECT_EQ(board().checklistProgress().value(a.id).total, 1);

    // A different folder at the path of a card that is still available makes a new card.
    sandbox().move(u"A"_s, u"Elsewhere"_s);
    await(board().reload());
    addFolders({u"A"_s});
    EXPECT_EQ(cardRows(), 2);
}

TEST_F(BoardFoldersTest, FailuresInABatchAreReportedTogetherAndTheRestIsAdded)
{
    struct Case {
        QStringList missing;
        QString message;
    };
    const std::vector<Case> cases{
        {{u"Gone1"_s}, u"Gone1: "_s},
        {{u"Gone2"_s, u"Gone3"_s}, u"2 folders could not be added:\nGone2: "_s},
    };
    for (const Case &entry : cases) {
        SCOPED_TRACE(entry.message.toStdString());
        QList<QUrl> urls;
        for (const QString &name : entry.missing)
            urls.append(sandbox().url(name));
        const QString good = entry.missing.first() + u"-good"_s;
        sandbox().makeFolder(good);
        urls.append(sandbox().url(good));
        await(board().addFolders(urls));
        ASSERT_TRUE(board().errorMessage());
        EXPECT_TRUE(board().errorMessage()->startsWith(entry.message)) << board().errorMessage()->toStdString();
        EXPECT_EQ(board().errorMessage()->count(u'\n'), entry.missing.size() == 1 ? 0 : entry.missing.size());
        EXPECT_TRUE(cardNamed(good));
        EXPECT_EQ(board().selectedCardID(), cardNamed(good)->id);
    }
}

TEST_F(BoardFoldersTest, DroppedFilesWaitForTheirFolderToBeChosen)
{
    sandbox().makeFolder(u"Two"_s);
    sandbox().makeFolder(u"One"_s);
    sandbox().makeFolder(u"Dir"_s);
    for (const QString &file : {u"Two/z.txt"_s, u"Two/a.txt"_s, u"One/m.md"_s})
        sandbox().makeFile(file);

    await(board().addDropped({sandbox().url(u"Two/z.txt"_s), sandbox().url(u"Dir"_s), sandbox().url(u"nothing"_s),
                              QUrl(u"https://example.org/"_s), sandbox().url(u"One/m.md"_s),
                              sandbox().url(u"Two/a.txt"_s)}));
    EXPECT_EQ(namesIn(board().cards()), QStringList{u"Dir"_s});
    const QList<PendingFileDrop> expected{{sandbox().url(u"One"_s), {u"m.md"_s}},
                                          {sandbox().url(u"Two"_s), {u"a.txt"_s, u"z.txt"_s}}};
    ASSERT_EQ(board().pendingFileDrops(), expected);

    // The first panel is cancelled; for the second the user picks the folder, and one file has
    // gone meanwhile.
    QFile::remove(sandbox().path(u"Two/z.txt"_s));
    picker().answers = {{}, {sandbox().url(u"Two"_s)}};
    await(board().resolvePendingFileDrops());
    EXPECT_TRUE(board().pendingFileDrops().isEmpty());
    ASSERT_EQ(picker().requests.size(), 2);
    EXPECT_EQ(picker().requests.at(1).message,
              u"Add “Two” to the board. 2 dropped file(s) will be added to its checklist."_s);
    EXPECT_EQ(picker().requests.at(1).directory, sandbox().url(u"Two"_s));
    EXPECT_FALSE(cardNamed(u"One"_s));
    const Card two = *cardNamed(u"Two"_s);
    const QList<ChecklistItem> items = await(database().checklistItems(two.id));
    ASSERT_EQ(items.size(), 1);
    EXPECT_EQ(items.first().displayName, u"a.txt"_s);
}

TEST_F(BoardFoldersTest, LocateAsksForTheNewPlaceAndRelinks)
{
    addFolders({u"A"_s});
    sandbox().remove(u"A"_s);
    await(board().reload());
    const Card lost = *cardNamed(u"A"_s);

    picker().answers.push_back({});
    await(board().locate(lost));
    ASSERT_EQ(picker().requests.size(), 1);
    EXPECT_EQ(picker().requests.first(),
              (FolderPickerRequest{u"Locate"_s, u"Choose the new location of “A”."_s, std::nullopt, false}));
    EXPECT_TRUE(cardNamed(u"A"_s)->isMissing) << "a cancelled panel changes nothing";

    sandbox().makeFolder(u"Found"_s);
    picker().answers.push_back({sandbox().url(u"Found"_s)});
    await(board().locate(lost));
    const auto found = cardNamed(u"Found"_s);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->id, lost.id);
    EXPECT_FALSE(board().needsLocate(*found));
}

TEST_F(BoardFoldersTest, OpenInFileManagerRevealsOrExplains)
{
    addFolders({u"A"_s, u"B"_s});
    await(board().openInFinder(*cardNamed(u"A"_s)));
    EXPECT_EQ(revealed(), QList<QUrl>{sandbox().url(u"A"_s)});
    EXPECT_FALSE(board().errorMessage());

    // Nothing on the desktop would show it: the banner says so rather than nothing happening.
    setFileManagerAnswers(false);
    await(board().openInFinder(*cardNamed(u"A"_s)));
    EXPECT_EQ(board().errorMessage(), u"No file manager answered, so the folder could not be shown."_s);
    board().dismissError();

    // Gone since the last load: nothing to show, the banner says so, and the row learns it at once.
    const Card b = *cardNamed(u"B"_s);
    sandbox().remove(u"B"_s);
    await(board().openInFinder(b));
    EXPECT_EQ(revealed().size(), 2);
    ASSERT_TRUE(board().errorMessage());
    EXPECT_TRUE(board().errorMessage()->startsWith(u"“B” could not be opened. "_s));
    EXPECT_TRUE(cardNamed(u"B"_s)->isMissing);
    EXPECT_TRUE(board().needsLocate(*cardNamed(u"B"_s)));
}

TEST_F(BoardFoldersTest, RemovingACardStopsItsTimerAndLeavesTheFolderAlone)
{
    addFolders({u"A"_s, u"B"_s});
    const Card a = *cardNamed(u"A"_s);
    await(timer().start(a));
    board().setSelectedCardID(a.id);
    FolderTagAttribute::writeTags(QFile::encodeName(sandbox().path(u"A"_s)), {u"Mine"_s});

    await(board().removeCard(a));
    EXPECT_FALSE(timer().hasRunningSession());
    EXPECT_FALSE(await(database().runningSession()));
    EXPECT_EQ(namesIn(board().cards()), QStringList{u"B"_s});
    EXPECT_FALSE(board().selectedCardID());
    EXPECT_TRUE(QFileInfo(sandbox().path(u"A"_s)).isDir());
    EXPECT_EQ(FolderTagAttribute::readTags(QFile::encodeName(sandbox().path(u"A"_s))), QStringList{u"Mine"_s})
        << "a card without a status tag must not touch the folder's tags";
}

} // namespace
