#include "BoardFixture.h"

#include "CardBriefing.h"
#include "Identifier.h"
#include "SecurityScopedBookmark.h"

#include <QClipboard>
#include <QGuiApplication>

using namespace Qt::StringLiterals;

namespace {

class BoardBriefingTest : public BoardFixture {
protected:
    // Copies the briefing of the card named `name` and checks what every copy does, whatever the
    // folder's state.
    QString copy(const QString &name)
    {
        QSignalSpy copied(&board(), &BoardModel::briefingCopiedAtChanged);
        const VeltoDate before = VeltoDate::now();
        await(board().copyBriefing(*cardNamed(name)));
        EXPECT_EQ(copied.count(), 1);
        EXPECT_TRUE(board().briefingCopiedAt() && *board().briefingCopiedAt() >= before);
        QClipboard *clipboard = QGuiApplication::clipboard();
        const QString text = clipboard->text(QClipboard::Clipboard);
        if (clipboard->supportsSelection()) {
            EXPECT_EQ(clipboard->text(QClipboard::Selection), text);
        }
        return text;
    }
};

TEST_F(BoardBriefingTest, CopiesWhatTheBoardTheChecklistAndTheFolderSay)
{
    addFolders({u"Q3"_s});
    sandbox().makeFolder(u"Q3/Drafts"_s);
    sandbox().makeFile(u"Q3/brief.pdf"_s);
    sandbox().makeFile(u"Q3/.hidden"_s);
    const Card card = *cardNamed(u"Q3"_s);
    await(board().createProject(u"Client"_s, u"#2A78D6"_s));
    const Project project = board().projects().first();
    await(board().setProject(project.id, card.id));
    await(board().addTag(u"urgent"_s, card));
    ChecklistItem item;
    item.id = newIdentifier();
    item.cardID = card.id;
    item.bookmark = SecurityScopedBookmark::create(sandbox().url(u"Q3/brief.pdf"_s));
    item.displayName = u"brief.pdf"_s;
    item.sortOrder = 1;
    await(database().insertChecklistItem(item));

    const QString text = copy(u"Q3"_s);

    CardBriefing::Input expected;
    expected.card = *cardNamed(u"Q3"_s);
    expected.folderPath = sandbox().path(u"Q3"_s);
    expected.project = project;
    expected.tags = board().tags();
    expected.keyFiles = {item};
    expected.contents = {{sandbox().url(u"Q3/Drafts"_s), u"Drafts"_s, true},
                         {sandbox().url(u"Q3/brief.pdf"_s), u"brief.pdf"_s, false}};
    EXPECT_EQ(text, CardBriefing::render(expected, VeltoDate::now(), QTimeZone::systemTimeZone()));
    EXPECT_TRUE(text.contains(u"**Project:** Client · **Tags:** urgent"_s)) << text.toStdString();
    EXPECT_EQ(board().errorMessage(), std::nullopt);
}

TEST_F(BoardBriefingTest, AMissingFolderIsBriefedFromItsLastKnownPath)
{
    addFolders({u"Q3"_s});
    sandbox().remove(u"Q3"_s);

    const QStringList lines = copy(u"Q3"_s).split(u'\n');

    EXPECT_EQ(lines.mid(2, 2),
              (QStringList{u"**Folder:** `%1`"_s.arg(sandbox().path(u"Q3"_s)),
                           u"> Velto could not reach this folder when the briefing was copied, so the path above is "
                           u"its last known one."_s}));
    EXPECT_TRUE(lines.contains(u"_Velto could not read the folder. Look for yourself._"_s));
    // The verdict reaches the card's face at once.
    const Card card = *cardNamed(u"Q3"_s);
    EXPECT_EQ(board().resolutions().value(card.id).availability, CardResolution::Availability::missing);
}

TEST_F(BoardBriefingTest, TheCardMenuCopiesTheBriefing)
{
    addFolders({u"Q3"_s});
    showInWindow("BoardView { anchors.fill: parent; board: host.board; timer: host.timer }", {1180, 760});
    QQuickItem *cell = item(u"cardCell"_s);
    ASSERT_NE(cell, nullptr);
    QTest::mouseClick(m_window.get(), Qt::RightButton, {}, cell->mapToScene({20, 10}).toPoint());
    QObject *entry = cell->findChild<QObject *>(u"menuCopyBriefing"_s);
    ASSERT_NE(entry, nullptr);
    QMetaObject::invokeMethod(entry, "triggered");
    ASSERT_TRUE(QTest::qWaitFor([&] { return board().briefingCopiedAt().has_value(); }, 2000));
    EXPECT_TRUE(QGuiApplication::clipboard()->text().startsWith(u"# Q3\n"_s));
}

} // namespace
