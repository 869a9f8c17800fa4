#include "Await.h"
#include "FolderSandbox.h"

#include "CardDetailModel.h"
#include "FolderListingError.h"
#include "Identifier.h"
#include "SecurityScopedBookmark.h"
#include "StoreQueries.h"

#include <QAbstractItemModelTester>
#include <QMap>
#include <QSignalSpy>

#include <gtest/gtest.h>

#include <cerrno>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

const QString mustEndAfterStart = u"A session has to end after it starts."_s;

// A detail model over a real database in a folder sandbox; its three lists are checked by a
// model tester throughout.
class CardDetailModelTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        m_database = Database::create(m_sandbox.path(u"Velto.sqlite"_s));
        await(m_database->open());
        m_model = std::make_unique<CardDetailModel>(
            VeltoServices{AppGroupContainer{}, m_database, DatabaseChangeNotifier{}, MigrationOutcome{}});
        for (QAbstractItemModel *list : {static_cast<QAbstractItemModel *>(m_model->entryList()),
                                         static_cast<QAbstractItemModel *>(m_model->itemList()),
                                         static_cast<QAbstractItemModel *>(m_model->sessionList())})
            m_testers.push_back(std::make_unique<QAbstractItemModelTester>(
                list, QAbstractItemModelTester::FailureReportingMode::Fatal));
    }

    CardDetailModel &model() { return *m_model; }
    Database &database() { return *m_database; }
    const FolderSandbox &sandbox() const { return m_sandbox; }

    // A card on the folder `name`, made with the files given, as the board would have stored it.
    Card addCard(const QString &name, const QStringList &files = {}, std::optional<qint64> lastSeenFileCount = {})
    {
        sandbox().makeFolder(name);
        for (const QString &file : files)
            sandbox().makeFile(name + u'/' + file);
        Card card;
        card.id = newIdentifier();
        card.bookmark = SecurityScopedBookmark::create(sandbox().url(name));
        card.displayName = name;
        card.displayPath = sandbox().path(name);
        card.lastSeenFileCount = lastSeenFileCount;
        await(m_database->insertCard(card));
        return card;
    }

    ChecklistItem addItem(const Card &card, const QString &file)
    {
        ChecklistItem item;
        item.id = newIdentifier();
        item.cardID = card.id;
        item.bookmark = SecurityScopedBookmark::create(sandbox().url(card.displayName + u'/' + file));
        item.displayName = file;
        return await(m_database->appendChecklistItem(item));
    }

    TimeSession addSession(const Card &card, double start, std::optional<double> end)
    {
        TimeSession session;
        session.id = newIdentifier();
        session.cardID = card.id;
        session.startedAt = VeltoDate(start);
        if (end)
            session.endedAt = VeltoDate(*end);
        await(m_database->insertSession(session));
        return session;
    }

    void load(const Card &card)
    {
        await(m_model->load(card));
        EXPECT_FALSE(m_model->isLoading());
    }

    std::optional<qint64> storedFileCount(const Card &card) { return await(m_database->card(card.id))->lastSeenFileCount; }

    QStringList entryNames() const
    {
        QStringList names;
        for (const FolderEntry &entry : m_model->entries())
            names.append(entry.name);
        return names;
    }

    FolderEntry entryNamed(const QString &name) const
    {
        for (const FolderEntry &entry : m_model->entries())
            if (entry.name == name)
                return entry;
        ADD_FAILURE() << "no entry " << name.toStdString();
        return {};
    }

    // Whether each stored item is flagged missing, by name.
    QMap<QString, bool> storedMissingFlags(const Card &card)
    {
        QMap<QString, bool> flags;
        for (const ChecklistItem &item : await(m_database->checklistItems(card.id)))
            flags.insert(item.displayName, item.isMissing);
        return flags;
    }

    QMap<QString, bool> shownMissingFlags() const
    {
        QMap<QString, bool> flags;
        for (const ChecklistItem &item : m_model->items())
            flags.insert(item.displayName, item.isMissing);
        return flags;
    }

private:
    FolderSandbox m_sandbox;
    std::shared_ptr<Database> m_database;
    std::unique_ptr<CardDetailModel> m_model;
    std::vector<std::unique_ptr<QAbstractItemModelTester>> m_testers;
};

} // namespace

TEST_F(CardDetailModelTest, aFolderThatCannotBeUsedShowsItsSentenceAndKeepsTheChecklistAsStored)
{
    const struct {
        const char *what;
        bool leavesAFile; // a file takes the folder's place
        QString message;
    } cases[] = {
        {"vanished", false, u"The folder is no longer at this location."_s},
        {"replaced by a file", true, u"A file is at this path, not a folder."_s},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        const QString name = QString::fromUtf8(c.what);
        const Card card = addCard(name, {u"draft.txt"_s});
        addItem(card, u"draft.txt"_s);
        sandbox().remove(name);
        if (c.leavesAFile)
            sandbox().makeFile(name);

        load(card);

        EXPECT_TRUE(model().entries().isEmpty());
        EXPECT_FALSE(model().folderURL());
        EXPECT_TRUE(model().didFindFolderUnreadable());
        EXPECT_EQ(model().errorMessage(), c.message);
        EXPECT_EQ(model().newFileCount(), 0);
        EXPECT_EQ(storedFileCount(card), std::nullopt);
        // Listed as stored, and not scanned: its file is gone with the folder, yet not marked.
        EXPECT_EQ(shownMissingFlags(), (QMap<QString, bool>{{u"draft.txt"_s, false}}));
        EXPECT_EQ(storedMissingFlags(card), (QMap<QString, bool>{{u"draft.txt"_s, false}}));
    }
}

TEST_F(CardDetailModelTest, newFilesAreThoseBeyondTheStoredCountAndShowOnlyOnce)
{
    const struct {
        const char *what;
        std::optional<qint64> stored;
        int files;
        QStringList subfolders;
        qint64 expectedNew;
    } cases[] = {
        {"first opening", std::nullopt, 2, {}, 0},
        {"fewer than before", 5, 3, {}, 0},
        {"more than before", 5, 7, {}, 2},
        {"folders do not count", 5, 5, {u"a"_s, u"b"_s}, 0},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        QStringList files;
        for (int file = 0; file < c.files; ++file)
            files.append(u"file %1.txt"_s.arg(file));
        const Card card = addCard(QString::fromUtf8(c.what), files, c.stored);
        for (const QString &subfolder : c.subfolders)
            sandbox().makeFolder(card.displayName + u'/' + subfolder);

        load(card);
        EXPECT_EQ(model().newFileCount(), c.expectedNew);
        EXPECT_EQ(storedFileCount(card), c.files);
        EXPECT_EQ(model().entries().size(), c.files + c.subfolders.size());
        EXPECT_FALSE(model().didFindFolderUnreadable());
        EXPECT_FALSE(model().errorMessage());
        EXPECT_EQ(model().folderURL(), sandbox().url(card.displayName));

        // The board still holds the card as it was before this opening.
        load(card);
        EXPECT_EQ(model().newFileCount(), 0);
        EXPECT_EQ(storedFileCount(card), c.files);
    }
}

TEST_F(CardDetailModelTest, reloadingUnchangedStateNotifiesNobody)
{
    const Card card = addCard(u"Same"_s, {u"a.txt"_s});
    addItem(card, u"a.txt"_s);
    addSession(card, 1000, 1100);
    load(card);

    QSignalSpy entries(&model(), &CardDetailModel::entriesChanged);
    QSignalSpy items(&model(), &CardDetailModel::itemsChanged);
    QSignalSpy sessions(&model(), &CardDetailModel::sessionsChanged);
    QSignalSpy resets(model().itemList(), &QAbstractItemModel::modelReset);
    load(card);
    EXPECT_EQ(entries.count() + items.count() + sessions.count() + resets.count(), 0);
}

TEST_F(CardDetailModelTest, aChecklistItemIsMissingOnlyWhileNothingIsAtItsPlace)
{
    const Card card = addCard(u"Work"_s, {u"kept.txt"_s, u"became folder.txt"_s, u"deleted.txt"_s});
    for (const QString &file : {u"kept.txt"_s, u"became folder.txt"_s, u"deleted.txt"_s})
        addItem(card, file);
    ASSERT_TRUE(QFile::remove(sandbox().path(u"Work/became folder.txt"_s)));
    sandbox().makeFolder(u"Work/became folder.txt"_s);
    ASSERT_TRUE(QFile::remove(sandbox().path(u"Work/deleted.txt"_s)));

    load(card);
    const QMap<QString, bool> oneGone{{u"kept.txt"_s, false}, {u"became folder.txt"_s, false}, {u"deleted.txt"_s, true}};
    EXPECT_EQ(shownMissingFlags(), oneGone);
    EXPECT_EQ(storedMissingFlags(card), oneGone);

    sandbox().makeFile(u"Work/deleted.txt"_s);
    load(card);
    const QMap<QString, bool> noneGone{{u"kept.txt"_s, false}, {u"became folder.txt"_s, false}, {u"deleted.txt"_s, false}};
    EXPECT_EQ(shownMissingFlags(), noneGone);
    EXPECT_EQ(storedMissingFlags(card), noneGone);
}

TEST_F(CardDetailModelTest, promotingAddsAFileOnceAndNeverAFolder)
{
    const Card card = addCard(u"Promote"_s, {u"notes.md"_s});
    sandbox().makeFolder(u"Promote/assets"_s);
    load(card);

    await(model().promote(entryNamed(u"assets"_s)));
    EXPECT_TRUE(model().items().isEmpty());
    EXPECT_FALSE(model().errorMessage());

    // Two clicks before the first is stored, and one after.
    const FolderEntry notes = entryNamed(u"notes.md"_s);
    Task<> first = model().promote(notes);
    Task<> second = model().promote(notes);
    await(std::move(first));
    await(std::move(second));
    await(model().promote(notes));

    EXPECT_FALSE(model().errorMessage());
    ASSERT_EQ(await(database().checklistItems(card.id)).size(), 1);
    ASSERT_EQ(model().items().size(), 1);
    EXPECT_EQ(model().items().first().displayName, u"notes.md"_s);
    EXPECT_TRUE(model().hasChecklistItem(notes));
    const QModelIndex notesRow = model().entryList()->index(int(model().entries().indexOf(notes)));
    EXPECT_TRUE(notesRow.data(FolderEntryListModel::IsOnChecklistRole).toBool());
}

TEST_F(CardDetailModelTest, tickingRemovingAndPreviewingWorkOnTheStoredChecklist)
{
    const Card card = addCard(u"Edit"_s, {u"a.txt"_s, u"b.txt"_s});
    const ChecklistItem a = addItem(card, u"a.txt"_s);
    const ChecklistItem b = addItem(card, u"b.txt"_s);
    load(card);

    model().setSelectedItemID(b.id);
    EXPECT_TRUE(model().itemList()->index(1).data(ChecklistListModel::IsSelectedRole).toBool());
    model().previewSelectedItem();
    EXPECT_EQ(model().previewURL(), sandbox().url(u"Edit/b.txt"_s));

    await(model().toggleItem(model().items().first()));
    EXPECT_TRUE(await(database().checklistItems(card.id)).first().isDone);
    EXPECT_EQ(model().doneItemCount(), 1);
    await(model().removeItem(a));
    EXPECT_EQ(model().items(), await(database().checklistItems(card.id)));
    ASSERT_EQ(model().items().size(), 1);

    // A new load forgets the selection, so previewing does nothing until a row is picked again.
    load(card);
    model().setPreviewURL(std::nullopt);
    model().previewSelectedItem();
    EXPECT_FALSE(model().selectedItemID());
    EXPECT_FALSE(model().previewURL());
}

TEST_F(CardDetailModelTest, aSessionThatDoesNotEndAfterItStartsIsRefused)
{
    const Card card = addCard(u"Time"_s);
    const TimeSession stored = addSession(card, 5000, 5600);
    load(card);

    const struct {
        const char *what;
        std::optional<double> end;
    } cases[] = {{"ends as it starts", 5000}, {"ends before", 4000}, {"no end", std::nullopt}};
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        model().clearError();
        TimeSession edited = stored;
        edited.endedAt = c.end ? std::optional(VeltoDate(*c.end)) : std::nullopt;
        await(model().updateSession(edited));
        EXPECT_EQ(model().errorMessage(), mustEndAfterStart);
        if (c.end) {
            model().clearError();
            await(model().addSession(VeltoDate(5000), VeltoDate(*c.end)));
            EXPECT_EQ(model().errorMessage(), mustEndAfterStart);
        }
    }
    EXPECT_EQ(await(database().sessions(card.id)), QList<TimeSession>{stored});
}

TEST_F(CardDetailModelTest, sessionsAreAddedFlooredAndCountOnlyOnceEnded)
{
    const Card card = addCard(u"Tracked"_s);
    addSession(card, 9000, std::nullopt);
    load(card);
    EXPECT_EQ(model().totalTrackedSeconds(), 0.0);

    await(model().addSession(VeltoDate(1000.8), VeltoDate(1100.4)));
    EXPECT_FALSE(model().errorMessage());
    ASSERT_EQ(model().sessions().size(), 2);
    const TimeSession added = model().sessions().last(); // newest first: the running one leads
    EXPECT_EQ(added.startedAt, VeltoDate(1000));
    EXPECT_EQ(added.endedAt, VeltoDate(1100));
    EXPECT_EQ(added.source, TimeSession::Source::manual);
    EXPECT_EQ(model().totalTrackedSeconds(), 100.0);

    await(model().deleteSession(added));
    EXPECT_EQ(model().sessions().size(), 1);
}

TEST_F(CardDetailModelTest, updatingASessionDeletedMeanwhileSaysSoAndDropsIt)
{
    const Card card = addCard(u"Gone"_s);
    TimeSession session = addSession(card, 1000, 2000);
    load(card);
    ASSERT_EQ(model().sessions().size(), 1);

    await(database().deleteSession(session.id));
    session.endedAt = VeltoDate(3000);
    await(model().updateSession(session));

    EXPECT_EQ(model().errorMessage(), u"That session has already been deleted."_s);
    EXPECT_TRUE(model().sessions().isEmpty());
    EXPECT_EQ(model().sessionList()->rowCount(), 0);
}

TEST(CardDetailModel, folderReadMessageNamesTheFolderAndWhatCanBeDone)
{
    const QUrl folder = QUrl::fromLocalFile(u"/home/ann/Thesis"_s);
    const struct {
        const char *what;
        std::shared_ptr<std::exception> failure;
        QString message;
    } cases[] = {
        {"gone", std::make_shared<FolderListingError>(folder.toLocalFile(), ENOENT),
         u"“Thesis” is no longer at this location. Use Locate… to point at where it is now — the card keeps its "
         u"history, checklist and tracked time."_s},
        {"no permission", std::make_shared<FolderListingError>(folder.toLocalFile(), EACCES),
         u"Velto does not currently have permission to read “Thesis”. Use Locate… to choose it again and restore "
         u"access."_s},
        {"not permitted", std::make_shared<FolderListingError>(folder.toLocalFile(), EPERM),
         u"Velto does not currently have permission to read “Thesis”. Use Locate… to choose it again and restore "
         u"access."_s},
        {"other system error", std::make_shared<FolderListingError>(folder.toLocalFile(), EIO),
         u"“Thesis” could not be read: "_s + qt_error_string(EIO)},
        {"a failed write", std::make_shared<VeltoError>(u"database is locked"_s),
         u"“Thesis” could not be read: database is locked"_s},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(CardDetailModel::folderReadMessage(*c.failure, folder), c.message);
    }
}
