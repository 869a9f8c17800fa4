#include "BoardFixture.h"
#include "SQLiteConnection.h"

#include <QFile>
#include <QGuiApplication>
#include <QTimeZone>

#include <functional>

using namespace Qt::StringLiterals;

namespace {

class BoardLoadTest : public BoardFixture {};

TEST_F(BoardLoadTest, ReloadsRunOneAfterAnotherAndNoneIsMerged)
{
    addFolders({u"A"_s});
    QSignalSpy loading(&board(), &BoardModel::isLoadingChanged);
    Task<> first = board().reload();
    Task<> second = board().reload();
    EXPECT_TRUE(board().isLoading());
    await(std::move(second));
    EXPECT_TRUE(first.isReady()) << "the second reload ended before the first";
    EXPECT_EQ(loading.count(), 4) << "each load raises and lowers the flag once";
    EXPECT_FALSE(board().isLoading());
}

TEST_F(BoardLoadTest, FailedTagReadKeepsWhatWasPublishedAndReports)
{
    addFolders({u"A"_s});
    await(board().createProject(u"Work"_s, u"#2A78D6"_s));
    await(board().addTag(u"urgent"_s, *cardNamed(u"A"_s)));
    ASSERT_EQ(board().tags().size(), 1);

    // Another process adds a card and a project, and leaves the tags table unreadable.
    auto other = SQLiteConnection::open(database().path(), SQLiteConnection::Access::readWrite);
    other->execute(u"INSERT INTO projects (id, name, color) VALUES ('P2', 'Home', '#000000');"
                   u"ALTER TABLE tags RENAME TO tags_gone"_s);
    sandbox().makeFolder(u"B"_s);
    await(database().insertCard([&] {
        Card card = *cardNamed(u"A"_s);
        card.id = u"B-ID"_s;
        card.displayName = u"B"_s;
        return card;
    }()));

    await(board().reload());
    EXPECT_EQ(board().cards().size(), 2);
    EXPECT_EQ(board().projects().size(), 2);
    ASSERT_EQ(board().tags().size(), 1) << "the tags of the last good read stay";
    EXPECT_EQ(board().tags().first().name, u"urgent"_s);
    EXPECT_TRUE(board().errorMessage().has_value());
    EXPECT_FALSE(board().isLoading());
}

TEST_F(BoardLoadTest, CardDeletedElsewhereLeavesTheBoardAndTheSelection)
{
    const QList<Card> cards = addFolders({u"A"_s, u"B"_s});
    board().setSelectedCardID(cards.at(1).id);
    await(database().deleteCard(cards.at(1).id));
    await(board().reload());
    EXPECT_EQ(namesIn(board().cards()), QStringList{u"A"_s});
    EXPECT_FALSE(board().selectedCardID().has_value());
}

TEST_F(BoardLoadTest, RenamedAndTrashedFoldersShowOnTheNextLoad)
{
    addFolders({u"A"_s, u"B"_s});
    sandbox().move(u"A"_s, u"A renamed"_s);
    sandbox().move(u"B"_s, u"data/Trash/files/B"_s);
    await(board().reload());

    const auto renamed = cardNamed(u"A renamed"_s);
    ASSERT_TRUE(renamed);
    EXPECT_EQ(renamed->displayPath, sandbox().path(u"A renamed"_s));
    EXPECT_FALSE(renamed->isMissing);
    const auto trashed = cardNamed(u"B"_s);
    ASSERT_TRUE(trashed);
    EXPECT_TRUE(trashed->isMissing);
    EXPECT_TRUE(board().needsLocate(*trashed));
    EXPECT_FALSE(board().folderURL(*trashed));
}

// The working files are looked for where the rows say the folders are; a folder found elsewhere
// has its file read there, and one gone, or without the file, shows none.
TEST_F(BoardLoadTest, WorkingFilesAreReadWhereTheFoldersAreNow)
{
    const auto writeTasks = [&](const QString &folder, const QByteArray &tasks) {
        QFile file(sandbox().path(folder + u"/velto.md"_s));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(tasks);
    };
    addFolders({u"Moved"_s, u"Emptied"_s, u"Trashed"_s, u"Stayed"_s});
    for (const QString &name : {u"Moved"_s, u"Emptied"_s, u"Trashed"_s, u"Stayed"_s})
        writeTasks(name, "- [x] one\n- [ ] two\n");
    await(board().reload());
    ASSERT_EQ(board().workingFiles().size(), 4);

    sandbox().move(u"Moved"_s, u"elsewhere/Moved"_s);
    writeTasks(u"elsewhere/Moved"_s, "- [x] one\n- [x] two\n- [ ] three\n");
    QFile::remove(sandbox().path(u"Emptied/velto.md"_s));
    sandbox().move(u"Trashed"_s, u"data/Trash/files/Trashed"_s);
    await(board().reload());

    QHash<QString, qsizetype> tasksByName;
    for (const Card &card : board().cards()) {
        if (const auto read = board().workingFiles().constFind(card.id); read != board().workingFiles().cend())
            tasksByName.insert(card.displayName, read->file.tasks.size());
    }
    EXPECT_EQ(tasksByName, (QHash<QString, qsizetype>{{u"Moved"_s, 3}, {u"Stayed"_s, 2}}));
}

// A folder that vanished is searched for at one load; later loads take that answer until something
// could have changed it. The folder is hidden where no search looks, then put where one finds it.
TEST_F(BoardLoadTest, VanishedFolderIsSearchedForAgainOnlyWhenTheAnswerMayHaveChanged)
{
    struct Case {
        const char *name;
        std::function<void(BoardModel &)> afterPuttingBack;
        bool found;
    };
    const QList<Case> cases{
        {"an operation's reload keeps the answer", [](BoardModel &) {}, false},
        {"a reload the views ask for searches again", [](BoardModel &board) { board.requestReload(); }, true},
        {"coming back to the application searches again",
         // The platform's word that the application is in front again.
         [](BoardModel &) { Q_EMIT qGuiApp->applicationStateChanged(Qt::ApplicationActive); },
         true},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.name);
        const QString name = QString::fromUtf8(c.name);
        const QString back = name + u" back"_s;
        addFolders({name});
        sandbox().makeFolder(u".away"_s);
        sandbox().move(name, u".away/"_s + name);
        await(board().reload());
        const auto gone = cardNamed(name);
        ASSERT_TRUE(gone);
        EXPECT_TRUE(gone->isMissing);
        EXPECT_EQ(board().resolutions().value(gone->id).failure, u"The folder is no longer at this location."_s);

        sandbox().move(u".away/"_s + name, back);
        c.afterPuttingBack(board());
        await(board().reload());
        EXPECT_EQ(cardNamed(back).has_value(), c.found);
        EXPECT_EQ(cardNamed(name).has_value(), !c.found);
        const CardResolution verdict = board().resolutions().value(gone->id);
        EXPECT_EQ(verdict.availability,
                  c.found ? CardResolution::Availability::available : CardResolution::Availability::missing);
        EXPECT_EQ(verdict.failure.has_value(), !c.found);
    }
}

// Columns, lanes and the due-soon list, as a filter and the flags shape them.
class BoardDerivedTest : public BoardFixture {
protected:
    void SetUp() override
    {
        BoardFixture::SetUp();
        addFolders({u"Alpha"_s, u"Beta"_s, u"Gamma"_s, u"Delta"_s});
        await(board().createProject(u"Work"_s, u"#2A78D6"_s));
        await(board().createProject(u"Home"_s, u"#EB6834"_s));
        work = board().projects().at(1).id; // ordered by name: Home, Work
        home = board().projects().at(0).id;
        await(board().setProject(work, cardNamed(u"Alpha"_s)->id));
        await(board().setProject(home, cardNamed(u"Beta"_s)->id));
        await(board().setPriority(Priority::now, *cardNamed(u"Gamma"_s)));
    }

    QString work;
    QString home;
};

TEST_F(BoardDerivedTest, ColumnOrderFollowsPriorityOnlyWhenAsked)
{
    EXPECT_EQ(column(CardStatus::notStarted), (QStringList{u"Alpha"_s, u"Beta"_s, u"Gamma"_s, u"Delta"_s}));
    board().setSortByPriority(true);
    // Gamma jumps ahead; the three "later" cards keep their stored order.
    EXPECT_EQ(column(CardStatus::notStarted), (QStringList{u"Gamma"_s, u"Alpha"_s, u"Beta"_s, u"Delta"_s}));
}

TEST_F(BoardDerivedTest, LanesFollowTheFilterAndTheUnassignedLaneComesLast)
{
    board().setGroupByProject(true);
    QStringList lanes;
    for (const Swimlane &lane : board().swimlanes())
        lanes.append(lane.identity());
    EXPECT_EQ(lanes, (QStringList{home, work, u"__unassigned__"_s}));

    BoardFilter filter;
    filter.searchText = u"  alp "_s;
    board().setFilter(filter);
    ASSERT_EQ(board().swimlanes().size(), 1);
    EXPECT_EQ(board().swimlanes().first().project->name, u"Work"_s);
    EXPECT_EQ(column(CardStatus::notStarted, {ProjectFilter::Project{work}}), QStringList{u"Alpha"_s});
    EXPECT_TRUE(column(CardStatus::notStarted, {ProjectFilter::Unassigned{}}).isEmpty());

    filter = {};
    filter.visibleStatuses.erase(CardStatus::notStarted);
    board().setFilter(filter);
    EXPECT_TRUE(board().swimlanes().isEmpty());
    EXPECT_TRUE(column(CardStatus::notStarted).isEmpty());
}

TEST_F(BoardDerivedTest, DueSoonCountsCalendarDaysAndIgnoresHiddenColumns)
{
    const QTimeZone zone("Europe/Berlin");
    const QDateTime now(QDate(2026, 3, 25), QTime(23, 59), zone);
    const auto at = [&](int days, QTime time) {
        return VeltoDate(double(QDateTime(now.date().addDays(days), time, zone).toSecsSinceEpoch()) - 978307200.0);
    };
    struct Case {
        QString card;
        std::optional<VeltoDate> deadline;
        CardStatus status;
    };
    // Alpha: 7 calendar days ahead, across the change to summer time, at the very end of the day.
    // Beta: 8 days ahead at midnight. Gamma: overdue but complete. Delta: overdue and waiting.
    const std::vector<Case> cases{{u"Alpha"_s, at(7, QTime(23, 59)), CardStatus::inProgress},
                                  {u"Beta"_s, at(8, QTime(0, 0)), CardStatus::notStarted},
                                  {u"Gamma"_s, at(-3, QTime(9, 0)), CardStatus::complete},
                                  {u"Delta"_s, at(-40, QTime(9, 0)), CardStatus::waiting}};
    for (const Case &entry : cases) {
        await(board().setDeadline(entry.deadline, *cardNamed(entry.card)));
        await(board().setStatus(entry.status, *cardNamed(entry.card)));
    }

    BoardFilter filter;
    filter.visibleStatuses = {CardStatus::notStarted};
    board().setFilter(filter);
    EXPECT_EQ(namesIn(board().dueSoonCards(at(0, QTime(23, 59)), zone)), (QStringList{u"Delta"_s, u"Alpha"_s}));

    await(board().addTag(u"focus"_s, *cardNamed(u"Alpha"_s)));
    filter.tagIDs = {board().tags().first().id};
    board().setFilter(filter);
    EXPECT_EQ(namesIn(board().dueSoonCards(at(0, QTime(23, 59)), zone)), QStringList{u"Alpha"_s});
}

} // namespace
