#include "DetailPaneFixture.h"

#include "DeadlineRules.h"

#include <QBuffer>
#include <QImage>
#include <QTimeZone>

#include <algorithm>

#include <optional>

using namespace Qt::StringLiterals;

namespace {

using CardDetailViewTest = DetailPaneFixture;

TEST_F(CardDetailViewTest, TheColumnFollowsTheSelectionAndClosingClearsIt)
{
    const Card first = addCard(u"Alpha"_s);
    const Card second = addCard(u"Beta"_s);
    showColumn();
    deselect(); // adding a folder selects its card
    QQuickItem *column = item(u"cardDetailColumn"_s);
    ASSERT_NE(column, nullptr);
    EXPECT_FALSE(column->isVisible());
    EXPECT_EQ(item(u"cardDetailView"_s), nullptr);

    select(first);
    EXPECT_TRUE(column->isVisible());
    CardDetailModel *firstDetail = detail();

    // Another card gets a pane of its own rather than the first one's model.
    select(second);
    EXPECT_NE(detail(), firstDetail);
    EXPECT_EQ(itemsNamed(m_window->contentItem(), u"cardDetailView"_s).size(), 1);

    QMetaObject::invokeMethod(item(u"closeDetailButton"_s), "clicked");
    EXPECT_EQ(board().selectedCardIDText(), QString());
    EXPECT_FALSE(column->isVisible());
    EXPECT_TRUE(QTest::qWaitFor([&] { return item(u"cardDetailView"_s) == nullptr; }));
}

TEST_F(CardDetailViewTest, TheTitleIsStoredTrimmedWhenCommittedAndOnlyWhenChanged)
{
    struct Case {
        const char *name;
        std::optional<QString> stored;
        QString typed;          // replaces the whole field
        bool leaveByFocus;      // else Return
        std::optional<QString> expected;
    };
    const Case cases[] = {
        {"typed and returned", std::nullopt, u"  Launch plan "_s, false, u"Launch plan"_s},
        {"typed and left", std::nullopt, u"Launch plan"_s, true, u"Launch plan"_s},
        {"blanked", u"Old"_s, u"   "_s, false, std::nullopt},
        {"the folder's own name", std::nullopt, u"Gamma"_s, false, u"Gamma"_s},
        {"left unchanged", u"Old"_s, u"Old "_s, true, u"Old"_s},
    };
    const Card card = addCard(u"Gamma"_s);
    showColumn();
    for (const Case &test : cases) {
        SCOPED_TRACE(test.name);
        await(board().setTitle(test.stored, fresh(card)));
        deselect();
        select(card);
        QQuickItem *field = item(u"titleField"_s);
        ASSERT_NE(field, nullptr);
        EXPECT_EQ(field->property("text").toString(), test.stored.value_or(QString()));
        EXPECT_EQ(field->property("placeholderText").toString(), u"Gamma"_s);

        field->forceActiveFocus();
        QTest::keyClick(m_window.get(), Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(m_window.get(), Qt::Key_Backspace);
        typeKeys(test.typed);
        if (test.leaveByFocus)
            item(u"newTagField"_s)->forceActiveFocus();
        else
            press(m_window.get(), Qt::Key_Return);
        EXPECT_TRUE(QTest::qWaitFor([&] { return fresh(card).title == test.expected; }, 2000));
        EXPECT_FALSE(board().isLoading() && fresh(card).title != test.expected);
    }
}

TEST_F(CardDetailViewTest, TheGoalSheetSavesWithTheShortcutAndCancelsWithEscape)
{
    struct Case {
        const char *name;
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
        bool clearFirst;
        QString typed;
        std::optional<QString> expected;
    };
    const Case cases[] = {
        {"saved", Qt::Key_Return, Qt::ControlModifier, false, u"Ship **it**\n"_s, u"Ship **it**"_s},
        {"cancelled", Qt::Key_Escape, {}, false, u" and more"_s, u"Ship **it**"_s},
        {"emptied", Qt::Key_Return, Qt::ControlModifier, true, QString(), std::nullopt},
        {"written again", Qt::Key_Return, Qt::ControlModifier, false, u"Ship **it**"_s, u"Ship **it**"_s},
    };
    const Card card = addCard(u"Delta"_s);
    showColumn();
    select(card);
    QObject *sheet = object(u"goalSheet"_s);
    ASSERT_NE(sheet, nullptr);
    for (const Case &test : cases) {
        SCOPED_TRACE(test.name);
        QMetaObject::invokeMethod(item(u"editGoalLink"_s), "clicked");
        ASSERT_TRUE(QTest::qWaitFor([&] { return sheet->property("opened").toBool(); }));
        QObject *save = object(u"saveButton"_s);
        // Nothing typed yet, or only blanks after the stored text: nothing to save.
        EXPECT_FALSE(save->property("enabled").toBool());
        if (test.clearFirst) {
            press(m_window.get(), Qt::Key_A, Qt::ControlModifier);
            press(m_window.get(), Qt::Key_Delete);
        } else {
            // Blanks after the stored text change nothing that is kept.
            press(m_window.get(), Qt::Key_End, Qt::ControlModifier);
            typeKeys(u"  "_s);
            EXPECT_FALSE(save->property("enabled").toBool());
            typeKeys(test.typed);
        }
        press(m_window.get(), test.key, test.modifiers);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !sheet->property("visible").toBool(); }));
        await(board().reload());
        EXPECT_EQ(fresh(card).goal, test.expected);
    }
    EXPECT_EQ(item(u"goalText"_s)->property("text").toString(), u"Ship **it**"_s);
}

TEST_F(CardDetailViewTest, TagsAndTheDeadlineAreAddedAndCleared)
{
    const Card card = addCard(u"Epsilon"_s);
    showColumn();
    select(card);

    QQuickItem *addTag = item(u"addTagButton"_s);
    EXPECT_FALSE(addTag->property("enabled").toBool());
    type(item(u"newTagField"_s), u"  urgent "_s);
    EXPECT_TRUE(addTag->property("enabled").toBool());
    press(m_window.get(), Qt::Key_Return);
    EXPECT_EQ(item(u"newTagField"_s)->property("text").toString(), QString());
    ASSERT_TRUE(QTest::qWaitFor([&] { return !board().tags(fresh(card)).isEmpty(); }));
    EXPECT_EQ(board().tags(fresh(card)).first().name, u"urgent"_s);
    ASSERT_TRUE(QTest::qWaitFor([&] { return item(u"detailTagChip"_s) != nullptr; }));

    QMetaObject::invokeMethod(item(u"removeTagButton"_s), "clicked");
    EXPECT_TRUE(QTest::qWaitFor([&] { return board().tags(fresh(card)).isEmpty(); }));

    QMetaObject::invokeMethod(item(u"addDeadlineLink"_s), "clicked");
    ASSERT_TRUE(QTest::qWaitFor([&] { return fresh(card).deadline.has_value(); }));
    EXPECT_EQ(DeadlineRules::daysUntil(*fresh(card).deadline, VeltoDate::now(), QTimeZone::systemTimeZone()), 7);
    ASSERT_TRUE(QTest::qWaitFor([&] {
        QQuickItem *clear = item(u"clearDeadlineLink"_s);
        return clear && clear->isVisible();
    }));

    QMetaObject::invokeMethod(item(u"clearDeadlineLink"_s), "clicked");
    EXPECT_TRUE(QTest::qWaitFor([&] { return !fresh(card).deadline.has_value(); }));
    EXPECT_TRUE(QTest::qWaitFor([&] { return item(u"addDeadlineLink"_s)->isVisible(); }));
}

TEST_F(CardDetailViewTest, ClickingAFileOfTheFolderPutsItOnTheChecklistOnce)
{
    const Card card = addCard(u"Zeta"_s, {u"notes.txt"_s});
    sandbox().makeFolder(u"Zeta/drafts"_s);
    showColumn();
    select(card);
    const QList<QQuickItem *> rows = itemsNamed(m_window->contentItem(), u"folderEntryRow"_s);
    ASSERT_EQ(rows.size(), 2);
    // Folders come first in the listing, and a click on one adds nothing.
    QQuickItem *folderRow = rows.at(0)->property("isDirectory").toBool() ? rows.at(0) : rows.at(1);
    QQuickItem *fileRow = folderRow == rows.at(0) ? rows.at(1) : rows.at(0);
    click(folderRow);
    click(fileRow);
    click(fileRow);
    ASSERT_TRUE(QTest::qWaitFor([&] { return detail()->itemCount() == 1; }));
    QTest::qWait(100);
    EXPECT_EQ(detail()->itemCount(), 1);
    EXPECT_EQ(detail()->items().first().displayName, u"notes.txt"_s);
    EXPECT_TRUE(fileRow->property("isOnChecklist").toBool());
    EXPECT_EQ(item(u"checklistProgress"_s)->property("text").toString(), u"0/1"_s);

    QMetaObject::invokeMethod(item(u"tickButton"_s), "clicked");
    EXPECT_TRUE(QTest::qWaitFor([&] { return detail()->doneItemCount() == 1; }));
    EXPECT_EQ(item(u"checklistProgress"_s)->property("text").toString(), u"1/1"_s);
    EXPECT_TRUE(item(u"itemName"_s)->property("font").value<QFont>().strikeOut());
}

// A one-page PDF with a correct cross-reference table, so that the viewer opens it without a
// complaint.
QByteArray onePagePDF()
{
    const QList<QByteArray> objects = {
        "<< /Type /Catalog /Pages 2 0 R >>",
        "<< /Type /Pages /Kids [3 0 R] /Count 1 >>",
        "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 200 200] >>",
    };
    QByteArray pdf = "%PDF-1.4\n";
    QList<qsizetype> offsets;
    for (qsizetype index = 0; index < objects.size(); ++index) {
        offsets.append(pdf.size());
        pdf += QByteArray::number(index + 1) + " 0 obj " + objects.at(index) + " endobj\n";
    }
    const qsizetype table = pdf.size();
    pdf += "xref\n0 " + QByteArray::number(objects.size() + 1) + "\n0000000000 65535 f \n";
    for (qsizetype offset : offsets)
        pdf += QByteArray::number(offset).rightJustified(10, '0') + " 00000 n \n";
    pdf += "trailer << /Size " + QByteArray::number(objects.size() + 1) + " /Root 1 0 R >>\nstartxref\n"
         + QByteArray::number(table) + "\n%%EOF\n";
    return pdf;
}

TEST_F(CardDetailViewTest, SpaceWithNothingSelectedLeavesTheKeyAndDoesNotPreview)
{
    const Card card = addCard(u"Eta"_s, {u"notes.txt"_s});
    showColumn();
    select(card);
    detail()->requestPromote(sandbox().url(u"Eta/notes.txt"_s));
    ASSERT_TRUE(QTest::qWaitFor([&] { return item(u"checklistRow"_s) != nullptr; }));

    item(u"checklistList"_s)->forceActiveFocus();
    press(m_window.get(), Qt::Key_Space);
    EXPECT_FALSE(detail()->previewURL().has_value());

    click(item(u"checklistRow"_s));
    EXPECT_EQ(detail()->selectedItemIDText(), detail()->items().first().id);
    EXPECT_TRUE(item(u"checklistList"_s)->hasActiveFocus());
    press(m_window.get(), Qt::Key_Space);
    EXPECT_TRUE(QTest::qWaitFor([&] { return detail()->previewURL().has_value(); }));
}

// Whether an image under `root` has finished loading.
bool hasReadyImage(const QQuickItem *root)
{
    if (root == nullptr)
        return false;
    for (QQuickItem *child : root->childItems()) {
        if (child->inherits("QQuickImageBase") && child->property("status").toInt() == 1)
            return true;
        if (hasReadyImage(child))
            return true;
    }
    return false;
}

TEST_F(CardDetailViewTest, ThePreviewShowsEachKindOfFileAndReturnClosesIt)
{
    struct Case {
        QString file;
        QByteArray bytes;
        QString shownBy;
    };
    QImage picture(8, 8, QImage::Format_RGB32);
    picture.fill(Qt::blue);
    QByteArray png;
    QBuffer buffer(&png);
    ASSERT_TRUE(buffer.open(QIODevice::WriteOnly) && picture.save(&buffer, "PNG"));
    const Case cases[] = {
        {u"notes.txt"_s, "plain words", u"previewText"_s},
        {u"plan.md"_s, "# Plan\n\n- one", u"previewText"_s},
        {u"photo.png"_s, png, u"previewImage"_s},
        {u"paper.pdf"_s, onePagePDF(), u"previewPdf"_s},
        {u"bundle.zip"_s, QByteArray("PK\x03\x04", 4), u"previewOther"_s},
    };
    // Qt 6.4's PDF document posts an event to an object it has not made yet whenever it loads.
    tolerate(u"QCoreApplication::postEvent: Unexpected null receiver"_s);
    const Card card = addCard(u"Kappa"_s);
    for (const Case &test : cases) {
        QFile file(sandbox().path(u"Kappa/"_s + test.file));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(test.bytes);
    }
    showColumn();
    select(card);
    for (const Case &test : cases)
        detail()->requestPromote(sandbox().url(u"Kappa/"_s + test.file));
    ASSERT_TRUE(QTest::qWaitFor([&] { return detail()->itemCount() == int(std::size(cases)); }));
    QObject *sheet = object(u"quickLookSheet"_s);
    ASSERT_NE(sheet, nullptr);
    for (const Case &test : cases) {
        SCOPED_TRACE(test.file.toStdString());
        const auto found = std::ranges::find(detail()->items(), test.file, &ChecklistItem::displayName);
        ASSERT_NE(found, detail()->items().cend());
        detail()->requestPreviewItem(found->id);
        ASSERT_TRUE(QTest::qWaitFor([&] { return sheet->property("opened").toBool(); }));
        EXPECT_EQ(object(u"previewFileName"_s)->property("text").toString(), test.file);
        EXPECT_TRUE(QTest::qWaitFor([&] { return item(test.shownBy) != nullptr; }));
        // The PDF view renders its page on a thread of its own; closing the sheet while that runs
        // can crash Qt 6.4's view, so the page is let finish first.
        if (test.shownBy == u"previewPdf"_s) {
            EXPECT_TRUE(QTest::qWaitFor([&] { return hasReadyImage(item(test.shownBy)); }, 5000));
        }
        press(m_window.get(), Qt::Key_Return);
        EXPECT_TRUE(QTest::qWaitFor([&] { return !detail()->previewURL().has_value(); }));
        EXPECT_TRUE(QTest::qWaitFor([&] { return !sheet->property("visible").toBool(); }));
    }
}

TEST_F(CardDetailViewTest, TheSessionEditorShowsTheLengthAndRefusesAnEndBeforeTheStart)
{
    struct Case {
        const char *name;
        qint64 endAfterStartSeconds;
        QString shown;
        bool canSave;
    };
    const Case cases[] = {
        {"as opened", 3600, u"1h"_s, true},
        {"ninety minutes", 5400, u"1h 30m"_s, true},
        {"ending as it starts", 0, u"A session has to end after it starts."_s, false},
        {"ending before it starts", -60, u"A session has to end after it starts."_s, false},
    };
    const Card card = addCard(u"Theta"_s);
    showColumn(280);
    select(card);
    EXPECT_EQ(item(u"trackedTotal"_s)->property("text").toString(), u"—"_s);
    EXPECT_TRUE(item(u"noSessionsNote"_s)->isVisible());
    QObject *editor = object(u"sessionEditor"_s);
    ASSERT_NE(editor, nullptr);
    for (const Case &test : cases) {
        SCOPED_TRACE(test.name);
        QMetaObject::invokeMethod(item(u"addSessionButton"_s), "clicked");
        ASSERT_TRUE(QTest::qWaitFor([&] { return editor->property("opened").toBool(); }));
        EXPECT_EQ(editor->property("title").toString(), u"Add Session"_s);
        const QDateTime start = editor->property("start").toDateTime();
        editor->setProperty("end", start.addSecs(test.endAfterStartSeconds));
        EXPECT_EQ(object(u"sessionEditorLength"_s)->property("text").toString(), test.shown);
        EXPECT_EQ(object(u"sessionSaveButton"_s)->property("enabled").toBool(), test.canSave);
        QMetaObject::invokeMethod(object(u"sessionCancelButton"_s), "clicked");
        EXPECT_TRUE(QTest::qWaitFor([&] { return !editor->property("visible").toBool(); }));
    }

    // Saved with Return, the session is listed and counted.
    QMetaObject::invokeMethod(item(u"addSessionButton"_s), "clicked");
    ASSERT_TRUE(QTest::qWaitFor([&] { return editor->property("opened").toBool(); }));
    press(m_window.get(), Qt::Key_Return);
    ASSERT_TRUE(QTest::qWaitFor([&] { return detail()->sessions().size() == 1; }));
    EXPECT_EQ(item(u"trackedTotal"_s)->property("text").toString(), u"1h"_s);
    EXPECT_TRUE(QTest::qWaitFor([&] { return item(u"sessionRow"_s) != nullptr; }));
    EXPECT_EQ(item(u"sessionLength"_s)->property("text").toString(), u"1h"_s);
    EXPECT_FALSE(item(u"noSessionsNote"_s)->isVisible());
}

TEST_F(CardDetailViewTest, ARunningSessionReadsRunningAndTheButtonStopsIt)
{
    const Card card = addCard(u"Iota"_s);
    showColumn(280);
    select(card);
    QQuickItem *button = item(u"timerButton"_s);
    EXPECT_EQ(button->property("text").toString(), u"Start"_s);
    QMetaObject::invokeMethod(button, "clicked");
    ASSERT_TRUE(QTest::qWaitFor([&] { return button->property("text").toString() == u"Stop"_s; }));
    EXPECT_TRUE(item(u"runningClock"_s)->isVisible());

    // The pane lists the session it started without being reopened.
    ASSERT_TRUE(QTest::qWaitFor([&] { return item(u"sessionRunning"_s) != nullptr; }));
    EXPECT_TRUE(item(u"sessionRunning"_s)->isVisible());
    EXPECT_EQ(item(u"trackedTotal"_s)->property("text").toString(), u"—"_s);

    QMetaObject::invokeMethod(button, "clicked");
    EXPECT_TRUE(QTest::qWaitFor([&] { return button->property("text").toString() == u"Start"_s; }));
    EXPECT_TRUE(QTest::qWaitFor([&] { return item(u"sessionLength"_s) != nullptr; }));
}

TEST_F(CardDetailViewTest, AFullPaneAtItsNarrowestWidthShowsEverySectionWithoutWarnings)
{
    const Card card = addCard(u"A folder with a rather long name to wrap"_s, {u"brief.md"_s, u"gone.txt"_s});
    await(board().setGoal(u"A goal long enough to wrap over several lines in a narrow pane"_s, fresh(card)));
    await(board().addTag(u"design"_s, fresh(card)));
    await(board().setDeadline(VeltoDate::now(), fresh(card)));
    showColumn(280);
    select(card);
    detail()->requestPromote(sandbox().url(card.displayName + u"/gone.txt"_s));
    ASSERT_TRUE(QTest::qWaitFor([&] { return detail()->itemCount() == 1; }));
    QFile::remove(sandbox().path(card.displayName + u"/gone.txt"_s));
    detail()->requestLoad(card.id);
    ASSERT_TRUE(QTest::qWaitFor([&] { return item(u"missingMark"_s) && item(u"missingMark"_s)->isVisible(); }));

    QQuickItem *view = item(u"cardDetailView"_s);
    EXPECT_GE(view->width(), 280 - 1);
    for (const QString &name : {u"titleField"_s, u"goalBlock"_s, u"deadlinePicker"_s, u"addSessionButton"_s,
                                u"checklistRow"_s, u"folderEntryRow"_s}) {
        SCOPED_TRACE(name.toStdString());
        QQuickItem *part = item(name);
        ASSERT_NE(part, nullptr);
        const QRectF inView = part->mapRectToItem(view, part->boundingRect());
        EXPECT_LE(inView.right(), view->width() + 0.5);
    }
}

} // namespace
