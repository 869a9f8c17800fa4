#include "Await.h"
#include "DesktopFolderPicker.h"
#include "FakeChooserPortal.h"
#include "PortalFolderChooser.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QDBusConnection>
#include <QDir>
#include <QFileDialog>
#include <QFileSystemModel>
#include <QLabel>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <optional>

using namespace Qt::StringLiterals;

namespace {

class FolderChooserTest : public ::testing::Test {
protected:
    QString makeFolder(const QString &name) const
    {
        EXPECT_TRUE(QDir(m_dir.path()).mkpath(name));
        return m_dir.filePath(name);
    }

    QTemporaryDir m_dir;
};

TEST_F(FolderChooserTest, ThePortalIsAskedForFoldersWithThePromptTheMessageAndTheStart)
{
    const QString start = makeFolder(u"Start"_s);
    const struct {
        const char *name;
        FolderPickerRequest request;
        QVariantMap expected; // besides the token
    } cases[] = {
        {"several, anywhere",
         {u"Add"_s, u"Choose folders to track on the Velto board."_s, std::nullopt, true},
         {{u"accept_label"_s, u"Add"_s}, {u"directory"_s, true}, {u"multiple"_s, true}}},
        {"one, from a start folder",
         {u"Locate"_s, u"Choose “Start” again."_s, QUrl::fromLocalFile(start), false},
         {{u"accept_label"_s, u"Locate"_s},
          {u"directory"_s, true},
          {u"multiple"_s, false},
          {u"current_folder"_s, QByteArray(start.toUtf8() + '\0')}}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        FakeChooserPortal portal;
        auto chosen = PortalFolderChooser::choose(QDBusConnection::sessionBus(), c.request, u"x11:2a"_s);
        ASSERT_TRUE(portal.waitForQuestion());
        EXPECT_EQ(portal.asked->title, c.request.message);
        EXPECT_EQ(portal.asked->parentWindow, u"x11:2a"_s);
        QVariantMap options = portal.asked->options;
        EXPECT_FALSE(options.take(u"handle_token"_s).toString().isEmpty());
        EXPECT_EQ(options, c.expected);
        portal.respond(1, {});
        EXPECT_EQ(await(std::move(chosen)), QList<QUrl>{});
    }
}

// However the chooser ends, the question gets one answer: the folders, or none.
TEST_F(FolderChooserTest, TheChoosersEndGivesTheFoldersOrNone)
{
    const QList<QUrl> two{QUrl::fromLocalFile(makeFolder(u"One"_s)), QUrl::fromLocalFile(makeFolder(u"Two"_s))};
    enum class End { chosen, cancelled, otherwise, portalGone };
    const struct {
        const char *name;
        End end;
        QList<QUrl> expected;
    } cases[] = {
        {"chosen", End::chosen, two},
        {"cancelled", End::cancelled, {}},
        {"closed some other way", End::otherwise, {}},
        {"portal went away", End::portalGone, {}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        FakeChooserPortal portal;
        auto chosen = PortalFolderChooser::choose(QDBusConnection::sessionBus(),
                                                  {u"Add"_s, u"Choose."_s, std::nullopt, true}, QString());
        ASSERT_TRUE(portal.waitForQuestion());
        switch (c.end) {
        case End::chosen:
            portal.respond(0, {two.at(0).toString(), two.at(1).toString()});
            break;
        case End::cancelled:
            portal.respond(1, {two.at(0).toString()});
            break;
        case End::otherwise:
            portal.respond(2, {});
            break;
        case End::portalGone:
            portal.leave();
            break;
        }
        const auto answer = await(std::move(chosen));
        ASSERT_TRUE(answer.has_value());
        EXPECT_EQ(*answer, c.expected);
    }
}

TEST_F(FolderChooserTest, NoPortalThatCanChooseFoldersLeavesTheQuestionOpen)
{
    const FolderPickerRequest request{u"Add"_s, u"Choose."_s, std::nullopt, true};
    EXPECT_FALSE(await(PortalFolderChooser::choose(QDBusConnection::sessionBus(), request, QString())))
        << "no portal on the bus";
    EXPECT_FALSE(await(PortalFolderChooser::choose(QDBusConnection(u"no-bus"_s), request, QString())))
        << "no bus";
    FakeChooserPortal filesOnly(PortalFolderChooser::firstVersionWithFolders - 1);
    EXPECT_FALSE(await(PortalFolderChooser::choose(QDBusConnection::sessionBus(), request, QString())))
        << "a chooser too old to be told to show folders only";
    EXPECT_FALSE(filesOnly.asked);
}

QFileDialog *openDialog()
{
    QFileDialog *found = nullptr;
    // Null when no dialog came up in time; the caller's expectation says so.
    (void)QTest::qWaitFor([&] {
        for (QWidget *widget : QApplication::topLevelWidgets())
            if (auto *dialog = qobject_cast<QFileDialog *>(widget); dialog && dialog->isVisible())
                found = dialog;
        return found != nullptr;
    }, 5000);
    return found;
}

// Without a portal the toolkit's dialog asks: the message on its own line, the prompt on the
// button, folders only, several at once, and the board hears every folder chosen.
TEST_F(FolderChooserTest, WithoutAPortalTheDialogChoosesSeveralFolders)
{
    const QString start = makeFolder(u"Start"_s);
    makeFolder(u"Start/One"_s);
    makeFolder(u"Start/Two"_s);
    DesktopFolderPicker picker;
    auto chosen = picker.choose({u"Add"_s, u"Choose folders to track on the Velto board."_s,
                                 QUrl::fromLocalFile(start), true});
    QFileDialog *dialog = openDialog();
    ASSERT_NE(dialog, nullptr);

    EXPECT_EQ(await(picker.choose({u"Add"_s, u"Again."_s, std::nullopt, true})), QList<QUrl>{})
        << "a second question while one is up counts as cancelled";
    const auto *message = dialog->findChild<QLabel *>(u"message"_s);
    ASSERT_NE(message, nullptr);
    EXPECT_EQ(message->text(), u"Choose folders to track on the Velto board."_s);
    EXPECT_EQ(dialog->labelText(QFileDialog::Accept), u"Add"_s);
    EXPECT_EQ(dialog->fileMode(), QFileDialog::Directory);
    EXPECT_EQ(QDir(dialog->directory()), QDir(start));

    auto *list = dialog->findChild<QAbstractItemView *>(u"listView"_s);
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->selectionMode(), QAbstractItemView::ExtendedSelection);
    auto *files = qobject_cast<QFileSystemModel *>(list->model());
    ASSERT_NE(files, nullptr);
    const QModelIndex root = files->index(start);
    ASSERT_TRUE(QTest::qWaitFor([&] { return files->rowCount(root) == 2; }, 5000));
    // Whole rows, as a click with Ctrl held selects them.
    for (const QString &name : {u"/One"_s, u"/Two"_s})
        list->selectionModel()->select(files->index(start + name),
                                       QItemSelectionModel::Select | QItemSelectionModel::Rows);
    QPushButton *add = nullptr;
    for (QPushButton *button : dialog->findChildren<QPushButton *>())
        if (button->text() == u"Add"_s)
            add = button;
    ASSERT_NE(add, nullptr);
    ASSERT_TRUE(add->isEnabled());
    add->click();

    QList<QUrl> answer = await(std::move(chosen));
    std::sort(answer.begin(), answer.end());
    EXPECT_EQ(answer, (QList<QUrl>{QUrl::fromLocalFile(start + u"/One"_s), QUrl::fromLocalFile(start + u"/Two"_s)}));
}

TEST_F(FolderChooserTest, TheDialogCancelledGivesNone)
{
    DesktopFolderPicker picker;
    auto chosen = picker.choose({u"Locate"_s, u"Choose the new location of “A”."_s, std::nullopt, false});
    QFileDialog *dialog = openDialog();
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->findChild<QAbstractItemView *>(u"listView"_s)->selectionMode(),
              QAbstractItemView::SingleSelection);
    dialog->reject();
    EXPECT_EQ(await(std::move(chosen)), QList<QUrl>{});
}

} // namespace
