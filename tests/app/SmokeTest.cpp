#include "SmokeFixture.h"
#include "QmlWarningGuard.h"

#include <QDesktopServices>
#include <QDirIterator>
#include <QFile>
#include <QQmlComponent>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

TEST_F(SmokeTest, EveryEntryOfTheCardMenuChangesTheStore)
{
    pressCardMenuEntry(u"Atlas"_s, u"statusEntry1"_s, u"statusMenu"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return stored(u"Atlas"_s).status == CardStatus::inProgress; }, 3000));

    pressCardMenuEntry(u"Beacon"_s, u"priorityEntry0"_s, u"priorityMenu"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return stored(u"Beacon"_s).priority == allPriorities.front(); }, 3000));

    await(board()->createProject(u"Thesis"_s, u"#FF9500"_s));
    pressCardMenuEntry(u"Cobalt"_s, u"projectEntry_Thesis"_s, u"projectMenu"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return stored(u"Cobalt"_s).projectID.has_value(); }, 3000));
    pressCardMenuEntry(u"Cobalt"_s, u"projectEntryNone"_s, u"projectMenu"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !stored(u"Cobalt"_s).projectID.has_value(); }, 3000));
    pressCardMenuEntry(u"Cobalt"_s, u"newProjectEntry"_s, u"projectMenu"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return board()->isManagingTaxonomy(); }, 3000));
    click(named(u"doneButton"_s));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !board()->isManagingTaxonomy(); }, 3000));

    // Delta is second in Not Started once Atlas left it; to the bottom, then to the top.
    pressCardMenuEntry(u"Delta"_s, u"menuMoveBottom"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return notStarted().last().displayName == u"Delta"_s; }, 3000));
    pressCardMenuEntry(u"Delta"_s, u"menuMoveTop"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return notStarted().first().displayName == u"Delta"_s; }, 3000));
    pressCardMenuEntry(u"Delta"_s, u"menuMoveDown"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return notStarted().at(1).displayName == u"Delta"_s; }, 3000));
    pressCardMenuEntry(u"Delta"_s, u"menuMoveUp"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return notStarted().first().displayName == u"Delta"_s; }, 3000));

    pressCardMenuEntry(u"Ember"_s, u"menuTimer"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return await(database().runningSession()).has_value(); }, 3000));
    pressCardMenuEntry(u"Ember"_s, u"menuTimer"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !await(database().runningSession()).has_value(); }, 3000));

    pressCardMenuEntry(u"Fjord"_s, u"menuRemove"_s);
    click(named(u"confirmRemoval"_s));
    EXPECT_TRUE(QTest::qWaitFor([&] { return await(database().allCards()).size() == 11; }, 3000));

    // A folder deleted for good is pointed at its new place with Locate….
    ASSERT_TRUE(QDir(m_sandbox.path(u"work/Garnet"_s)).removeRecursively());
    m_sandbox.makeFolder(u"elsewhere/Garnet"_s);
    board()->requestReload();
    ASSERT_TRUE(QTest::qWaitFor([&] { return board()->cardFace(stored(u"Garnet"_s).id).value(u"needsLocate"_s).toBool(); }, 5000));
    m_picker->answers.push_back({m_sandbox.url(u"elsewhere/Garnet"_s)});
    pressCardMenuEntry(u"Garnet"_s, u"menuLocate"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return stored(u"Garnet"_s).displayPath == m_sandbox.path(u"elsewhere/Garnet"_s); }, 5000));

    // With the sort on, the moves give way to the notice, which turns it off.
    board()->setSortByPriority(true);
    pressCardMenuEntry(u"Harbor"_s, u"menuSortNotice"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !board()->sortByPriority(); }, 3000));
}

TEST_F(SmokeTest, EveryEntryOfTheFilterMenuNarrowsTheBoard)
{
    await(board()->createProject(u"Thesis"_s, u"#FF9500"_s));
    await(board()->addTag(u"urgent"_s, board()->cards().first()));
    const auto pressFilterEntry = [&](const QString &entry) {
        click(named(u"filterButton"_s));
        QObject *menu = m_window->findChild<QObject *>(u"filterMenu"_s);
        ASSERT_NE(menu, nullptr);
        ASSERT_TRUE(QTest::qWaitFor([&] { return menu->property("opened").toBool(); }, 2000));
        QQuickItem *item = entryOf(menu, entry);
        ASSERT_NE(item, nullptr) << entry.toStdString();
        // Lines below the fold are scrolled to first, as a user would.
        QMetaObject::invokeMethod(menu->property("contentItem").value<QObject *>(), "positionViewAtIndex",
                                  Q_ARG(int, menu->property("count").toInt() - 1), Q_ARG(int, 0));
        click(item);
    };

    pressFilterEntry(u"filterNoProject"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return board()->property("projectFilterKind").toString() == u"unassigned"_s; }, 2000));
    pressFilterEntry(u"filterProject_Thesis"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return board()->property("projectFilterKind").toString() == u"project"_s; }, 2000));
    pressFilterEntry(u"filterAllProjects"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return board()->property("projectFilterKind").toString() == u"any"_s; }, 2000));
    pressFilterEntry(u"filterPriority0"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !board()->property("selectedPriorities").toList().isEmpty(); }, 2000));
    pressFilterEntry(u"filterTag_urgent"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !board()->property("selectedTagIDs").toList().isEmpty(); }, 2000));
    pressFilterEntry(u"filterStatus3"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !board()->property("visibleStatuses").toList().contains(3); }, 2000));
    pressFilterEntry(u"filterSortByPriority"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return board()->sortByPriority(); }, 2000));
    pressFilterEntry(u"filterManageTaxonomy"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return board()->isManagingTaxonomy(); }, 2000));
    click(named(u"doneButton"_s));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !board()->isManagingTaxonomy(); }, 2000));
    click(named(u"clearAllButton"_s));
    EXPECT_TRUE(QTest::qWaitFor([&] { return board()->property("chips").toList().isEmpty(); }, 2000));
}

TEST_F(SmokeTest, TheBarsButtonsAddFoldersAndSwitchTheView)
{
    m_sandbox.makeFolder(u"work/Meridian"_s);
    m_picker->answers.push_back({m_sandbox.url(u"work/Meridian"_s)});
    click(named(u"addFolderButton"_s));
    EXPECT_TRUE(QTest::qWaitFor([&] { return await(database().allCards()).size() == 13; }, 3000));
    ASSERT_FALSE(m_picker->requests.isEmpty());
    EXPECT_TRUE(m_picker->requests.last().allowsMultiple);
    // The new card is selected, and its pane opens beside the board.
    ASSERT_TRUE(QTest::qWaitFor([&] { return board()->selectedCard() && board()->selectedCard()->displayName == u"Meridian"_s; }, 3000));

    click(named(u"dueSoonModeSegment"_s));
    EXPECT_TRUE(QTest::qWaitFor([&] { return named(u"dueSoonView"_s) != nullptr && named(u"dueSoonView"_s)->isVisible(); }, 2000));
    click(named(u"boardModeSegment"_s));
    EXPECT_TRUE(QTest::qWaitFor([&] { return named(u"columnRow"_s) != nullptr && named(u"columnRow"_s)->isVisible(); }, 2000));

    click(named(u"groupByProjectToggle"_s));
    EXPECT_TRUE(QTest::qWaitFor([&] { return board()->groupByProject(); }, 2000));
    click(named(u"groupByProjectToggle"_s));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !board()->groupByProject(); }, 2000));

    click(named(u"searchField"_s));
    for (const QChar letter : u"Kest"_s)
        QTest::keyClick(m_window, letter.toLatin1());
    EXPECT_TRUE(QTest::qWaitFor([&] { return notStarted().size() == 1; }, 2000));
    click(named(u"clearSearchButton"_s));
    EXPECT_TRUE(QTest::qWaitFor([&] { return notStarted().size() == 13; }, 2000));

    // A card dragged with the pointer onto the first gap of In Progress lands there.
    QQuickItem *cell = nullptr;
    ASSERT_TRUE(QTest::qWaitFor([&] { return (cell = cellOf(u"Indigo"_s)) != nullptr; }, 3000));
    QQuickItem *target = itemNamed(named(u"column1"_s), u"tailDropTarget"_s);
    ASSERT_NE(target, nullptr);
    const QPoint from = cell->mapToScene({40, 20}).toPoint();
    const QPoint to = target->mapToScene({target->width() / 2, target->height() / 2}).toPoint();
    dragWithPointer(from, to);
    EXPECT_TRUE(QTest::qWaitFor([&] { return stored(u"Indigo"_s).status == CardStatus::inProgress; }, 3000));

    // Straight down its own column, without the least sideways movement, which the column's
    // scrolling must not take for itself, a card goes under the next two.
    const QString moving = notStarted().constFirst().displayName;
    QQuickItem *third = cellOf(notStarted().at(2).displayName);
    ASSERT_NE(third, nullptr);
    const QPoint top = cellOf(moving)->mapToScene({40, 20}).toPoint();
    dragWithPointer(top, {top.x(), third->mapToScene({40, third->height() + 3}).toPoint().y()});
    EXPECT_TRUE(QTest::qWaitFor([&] { return notStarted().at(2).displayName == moving; }, 3000));
}

// The card's pane: opened by a click, each field set through it, a file promoted and ticked, the
// briefing copied, and closed again.
TEST_F(SmokeTest, ThePaneOfACardSetsEachFieldAndCopiesTheBriefing)
{
    m_sandbox.makeFile(u"work/Atlas/notes.md"_s);
    click(cellOf(u"Atlas"_s));
    ASSERT_TRUE(QTest::qWaitFor([&] { return named(u"cardDetailView"_s) != nullptr; }, 3000));
    ASSERT_TRUE(QTest::qWaitFor([&] { return named(u"folderEntryRow"_s) != nullptr; }, 3000));

    click(named(u"titleField"_s));
    for (const QChar letter : u"Draft"_s)
        QTest::keyClick(m_window, letter.toLatin1());
    QTest::keyClick(m_window, Qt::Key_Return);
    EXPECT_TRUE(QTest::qWaitFor([&] { return stored(u"Atlas"_s).title == u"Draft"_s; }, 3000));

    click(named(u"editGoalLink"_s));
    ASSERT_TRUE(QTest::qWaitFor([&] { return named(u"markdownEditor"_s) != nullptr && named(u"markdownEditor"_s)->isVisible(); }, 3000));
    click(named(u"markdownEditor"_s));
    for (const QChar letter : u"Ship"_s)
        QTest::keyClick(m_window, letter.toLatin1());
    QTest::keyClick(m_window, Qt::Key_Return, Qt::ControlModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return stored(u"Atlas"_s).goal == u"Ship"_s; }, 3000));

    click(named(u"newTagField"_s));
    for (const QChar letter : u"urgent"_s)
        QTest::keyClick(m_window, letter.toLatin1());
    click(named(u"addTagButton"_s));
    EXPECT_TRUE(QTest::qWaitFor([&] { return await(database().tagLinks()).value(stored(u"Atlas"_s).id).size() == 1; }, 3000));

    click(named(u"addDeadlineLink"_s));
    EXPECT_TRUE(QTest::qWaitFor([&] { return stored(u"Atlas"_s).deadline.has_value(); }, 3000));

    click(named(u"folderEntryRow"_s));
    EXPECT_TRUE(QTest::qWaitFor([&] { return await(database().checklistItems(stored(u"Atlas"_s).id)).size() == 1; }, 3000));
    ASSERT_TRUE(QTest::qWaitFor([&] { return named(u"tickButton"_s) != nullptr; }, 3000));
    click(named(u"tickButton"_s));
    EXPECT_TRUE(QTest::qWaitFor([&] {
        const auto items = await(database().checklistItems(stored(u"Atlas"_s).id));
        return items.size() == 1 && items.first().isDone;
    }, 3000));

    QGuiApplication::clipboard()->clear();
    click(named(u"briefingButton"_s));
    EXPECT_TRUE(QTest::qWaitFor([&] { return QGuiApplication::clipboard()->text().contains(u"Ship"_s); }, 3000));

    click(named(u"closeDetailButton"_s));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !board()->selectedCardID().has_value(); }, 3000));
}

// Takes the place of the desktop's handler of local files, so that Open reaches no editor.
class OpenedFiles : public QObject {
    Q_OBJECT

public:
    OpenedFiles() { QDesktopServices::setUrlHandler(u"file"_s, this, "open"); }
    ~OpenedFiles() override { QDesktopServices::unsetUrlHandler(u"file"_s); }

    QList<QUrl> urls;

public slots:
    void open(const QUrl &url) { urls.append(url); }
};

// A velto.md kept by an agent: its tasks count on the card's face, and its pane lists them with
// the newest five entries of its log; a checkbox in a fenced block is none of them.
TEST_F(SmokeTest, TheWorkingFileShowsOnTheFaceAndInThePane)
{
    QFile file(m_sandbox.path(u"work/Beacon/velto.md"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("# Beacon\n\n## Tasks\n- [x] one\n- [x] two\n- [ ] three\n- [ ] four\n- [ ] five\n"
               "```\n- [x] sample, not a task\n```\n\n## Log\n- 2026-08-20 first\n- 2026-08-21 second\n"
               "- 2026-08-22 third\n- 2026-08-23 fourth\n- 2026-08-24 fifth\n- 2026-08-25 sixth\n");
    file.close();
    await(board()->reload());

    QQuickItem *count = nullptr;
    ASSERT_TRUE(QTest::qWaitFor([&] {
        count = cellOf(u"Beacon"_s) ? itemNamed(cellOf(u"Beacon"_s), u"workingProgressCount"_s) : nullptr;
        return count != nullptr && count->isVisible();
    }, 3000));
    EXPECT_EQ(count->property("text").toString(), u"2/5"_s);
    EXPECT_FALSE(itemNamed(cellOf(u"Atlas"_s), u"workingProgressCount"_s)->isVisible());

    click(cellOf(u"Beacon"_s));
    ASSERT_TRUE(QTest::qWaitFor([&] { return named(u"workingFileSection"_s) != nullptr; }, 3000));
    const auto texts = [&](const QString &name) {
        QStringList found;
        for (QQuickItem *item : itemsNamed(named(u"workingFileSection"_s), name))
            found.append(item->property("text").toString());
        return found;
    };
    EXPECT_EQ(texts(u"workingFileTaskText"_s), (QStringList{u"one"_s, u"two"_s, u"three"_s, u"four"_s, u"five"_s}));
    EXPECT_EQ(texts(u"workingFileLogText"_s),
              (QStringList{u"second"_s, u"third"_s, u"fourth"_s, u"fifth"_s, u"sixth"_s}));
    EXPECT_EQ(named(u"workingFileProgress"_s)->property("text").toString(), u"2/5"_s);
    EXPECT_FALSE(named(u"workingFileNote"_s)->isVisible());

    const OpenedFiles opened;
    click(named(u"openWorkingFileButton"_s));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !opened.urls.isEmpty(); }, 3000));
    EXPECT_EQ(opened.urls.value(0), m_sandbox.url(u"work/Beacon/velto.md"_s));

    // A card without the file says who is to make it.
    click(cellOf(u"Atlas"_s));
    ASSERT_TRUE(QTest::qWaitFor([&] {
        return named(u"workingFileNote"_s) != nullptr && named(u"workingFileNote"_s)->isVisible()
            && board()->selectedCardID() == stored(u"Atlas"_s).id;
    }, 3000));
    EXPECT_TRUE(named(u"workingFileNote"_s)->property("text").toString().contains(u"briefing asks the agent"_s));
    EXPECT_FALSE(named(u"openWorkingFileButton"_s)->isVisible());
}

// The windows beside the board: opened by the bar's buttons and the keys, one of each however often
// they are asked for; the diagnostics hear their own post and take a new snapshot on Reload.
TEST_F(SmokeTest, TheAnalyticsAndDiagnosticsWindowsOpenFromTheBarAndTheKeys)
{
    const auto windowsNamed = [](const QString &name) {
        QList<QQuickWindow *> found;
        for (QWindow *window : QGuiApplication::topLevelWindows())
            if (window->objectName() == name)
                found.append(qobject_cast<QQuickWindow *>(window));
        return found;
    };
    const auto clickIn = [](QQuickWindow *window, QQuickItem *item) {
        ASSERT_NE(item, nullptr);
        ASSERT_TRUE(QTest::qWaitFor([&] { return item->isVisible() && item->width() > 0; }, 2000));
        QTest::qWait(50); // laid out in the frame after the window took its size
        QTest::mouseClick(window, Qt::LeftButton, {}, item->mapToScene({item->width() / 2, item->height() / 2}).toPoint());
    };

    click(named(u"analyticsButton"_s));
    ASSERT_EQ(windowsNamed(u"analyticsWindow"_s).size(), 1);
    QQuickWindow *analytics = windowsNamed(u"analyticsWindow"_s).first();
    ASSERT_TRUE(QTest::qWaitFor([&] { return analytics->isVisible(); }, 2000));
    EXPECT_EQ(analytics->title(), u"Analytics"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return itemNamed(analytics->contentItem(), u"analyticsView"_s) != nullptr; }, 2000));
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_model->analytics()->weekLabels().size() == 8; }, 3000));
    analytics->close();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !analytics->isVisible(); }, 2000));
    // The keys belong to the main window's menus, so it has the focus again first.
    m_window->requestActivate();
    QTest::keyClick(m_window, Qt::Key_1, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return analytics->isVisible(); }, 2000));
    click(named(u"analyticsButton"_s));
    EXPECT_EQ(windowsNamed(u"analyticsWindow"_s).size(), 1);

    m_window->requestActivate();
    QTest::keyClick(m_window, Qt::Key_D, Qt::ControlModifier | Qt::ShiftModifier);
    ASSERT_EQ(windowsNamed(u"diagnosticsWindow"_s).size(), 1);
    QQuickWindow *diagnostics = windowsNamed(u"diagnosticsWindow"_s).first();
    ASSERT_TRUE(QTest::qWaitFor([&] { return diagnostics->isVisible(); }, 2000));
    EXPECT_EQ(diagnostics->title(), u"Velto Diagnostics"_s);
    click(named(u"diagnosticsButton"_s));
    EXPECT_EQ(windowsNamed(u"diagnosticsWindow"_s).size(), 1);
    // Tall enough for the whole report, so that its buttons can be pressed without scrolling.
    diagnostics->resize(760, 1300);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(diagnostics));
    const auto inDiagnostics = [&](const QString &name) { return itemNamed(diagnostics->contentItem(), name); };
    ASSERT_TRUE(QTest::qWaitFor([&] { return inDiagnostics(u"postNotificationButton"_s) != nullptr; }, 3000));
    // The board's own writes are heard too, so the count is taken just before the press.
    const int before = m_model->diagnostics()->notificationsReceived();
    clickIn(diagnostics, inDiagnostics(u"postNotificationButton"_s));
    EXPECT_TRUE(QTest::qWaitFor([&] {
        QQuickItem *received = inDiagnostics(u"rowValue_Received here"_s);
        return received != nullptr
            && received->property("text").toString().startsWith(QString::number(before + 1) + u" (last at "_s);
    }, 3000));
    clickIn(diagnostics, inDiagnostics(u"reloadDiagnosticsButton"_s));
    EXPECT_TRUE(QTest::qWaitFor([&] { return inDiagnostics(u"postNotificationButton"_s) != nullptr; }, 3000));
    EXPECT_EQ(m_model->diagnostics()->notificationsReceived(), before + 1);
    diagnostics->close();
    analytics->close();
}

// Every view of the module compiles and finds every module it imports on this machine.
TEST(ViewFiles, EveryViewLoadsWithTheModulesItImports)
{
    QQmlEngine engine;
    engine.addImportPath(u"qrc:/qt/qml"_s);
    int loaded = 0;
    for (QDirIterator files(u":/qt/qml/Velto"_s, {u"*.qml"_s}, QDir::Files, QDirIterator::Subdirectories);
         files.hasNext();) {
        const QString path = files.next();
        SCOPED_TRACE(path.toStdString());
        QQmlComponent component(&engine, QUrl(u"qrc"_s + path));
        EXPECT_FALSE(component.isError()) << component.errorString().toStdString();
        ++loaded;
    }
    EXPECT_GT(loaded, 40);
}

// The guard that fails a test on a view's warning must know one when it sees one, and let the
// rest of the platform's chatter pass.
TEST(ViewWarnings, TheGuardTellsAViewsWarningsFromOtherMessages)
{
    const QMessageLogContext plain;
    QMessageLogContext qml(nullptr, 0, nullptr, "qml");
    const struct {
        const char *text;
        QtMsgType type;
        const QMessageLogContext &context;
        bool isViewWarning;
    } cases[] = {
        {"qrc:/qt/qml/Velto/board/CardContextMenu.qml:90: TypeError: Cannot call method 'requestSetStatus' of undefined",
         QtWarningMsg, plain, true},
        {"qrc:/qt/qml/Velto/board/CardCell.qml:40:9: QML Item: Binding loop detected for property \"x\"",
         QtWarningMsg, plain, true},
        {"FolderDialog: Failed to load non-native FolderDialog implementation: module \"Qt.labs.folderlistmodel\" "
         "is not installed",
         QtWarningMsg, plain, true},
        {"ReferenceError: board is not defined", QtWarningMsg, plain, true},
        {"anything a view logs", QtWarningMsg, qml, true},
        {"QStandardPaths: XDG_RUNTIME_DIR not set, defaulting to '/tmp/runtime-root'", QtWarningMsg, plain, false},
        {"qrc:/qt/qml/Velto/app/Main.qml: a debug line", QtDebugMsg, plain, false},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(QmlWarningGuard::isViewWarning(c.type, c.context, QString::fromUtf8(c.text)), c.isViewWarning);
    }
}

} // namespace

#include "SmokeTest.moc"
