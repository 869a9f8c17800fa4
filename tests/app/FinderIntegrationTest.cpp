#include "FinderIntegration.h"
#include "FolderSandbox.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

FileManagerPlaces placesIn(const FolderSandbox &sandbox)
{
    return {sandbox.path(u"user"_s), {sandbox.path(u"system"_s)}, {sandbox.path(u"lib/libnautilus-python.so"_s)}};
}

void put(const FolderSandbox &sandbox, const QString &relative)
{
    sandbox.makeFolder(QFileInfo(relative).path());
    QFile file(sandbox.path(relative));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
}

class FinderIntegrationTest : public ::testing::Test {
protected:
    FileManagerPlaces places() const { return placesIn(m_sandbox); }

    FolderSandbox m_sandbox;
};

} // namespace

// The extension runs only with both the host library and the extension file; the add-to-board
// entry counts as there once Dolphin's menu is in any data folder and Files has the script or the
// extension, which carries the entry for Files.
TEST_F(FinderIntegrationTest, ReadsWhatIsInstalledWhere)
{
    const auto extension = u"nautilus-python/extensions/velto_badges.py"_s;
    const auto menu = u"kio/servicemenus/io.quillmere.Velto.AddToBoard.desktop"_s;
    const struct {
        const char *name;
        QStringList files;
        bool extensionOn;
        bool actionsInstalled;
    } cases[] = {
        {"nothing", {}, false, false},
        {"host library alone", {u"lib/libnautilus-python.so"_s}, false, false},
        {"extension without its host", {u"system/"_s + extension}, false, false},
        {"extension for everyone", {u"lib/libnautilus-python.so"_s, u"system/"_s + extension}, true, false},
        {"extension for the user", {u"lib/libnautilus-python.so"_s, u"user/"_s + extension}, true, false},
        {"both entries for the user",
         {u"user/nautilus/scripts/Add to Velto Board"_s, u"user/"_s + menu},
         false, true},
        {"package: extension and Dolphin menu",
         {u"system/"_s + extension, u"system/"_s + menu},
         false, true},
        {"Dolphin's menu alone", {u"system/"_s + menu}, false, false},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        const FolderSandbox sandbox;
        for (const QString &file : c.files)
            put(sandbox, file);
        const FinderIntegration integration(placesIn(sandbox), u"/usr/bin/velto"_s);
        EXPECT_EQ(integration.isExtensionEnabled(), c.extensionOn);
        EXPECT_EQ(integration.areActionsInstalled(), c.actionsInstalled);
    }
}

// The entries call this very executable, whatever its path holds, and both file managers insist
// that they be executable.
TEST_F(FinderIntegrationTest, InstallsBothEntriesCallingThisExecutable)
{
    const QString executable = m_sandbox.path(u"it's a \"build\"/velto"_s);
    m_sandbox.makeFolder(u"it's a \"build\""_s);
    {
        QFile program(executable);
        ASSERT_TRUE(program.open(QIODevice::WriteOnly));
        program.write("#!/bin/sh\nprintf '%s\\n' \"$@\" > \"$0.args\"\n");
    }
    ASSERT_TRUE(QFile::setPermissions(executable, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    FinderIntegration integration(places(), executable);
    QSignalSpy installedChanges(&integration, &FinderIntegration::areActionsInstalledChanged);

    integration.installActions();

    EXPECT_TRUE(integration.areActionsInstalled());
    EXPECT_EQ(installedChanges.count(), 1);
    EXPECT_TRUE(integration.actionsError().isEmpty());
    const FileManagerPlaces where = places();
    for (const QString &path : {where.userFilesScript(), where.userDolphinMenu()}) {
        SCOPED_TRACE(path.toStdString());
        EXPECT_TRUE(QFileInfo(path).isExecutable());
    }
    // Files runs the script with the selected names as its arguments.
    QProcess script;
    script.start(where.userFilesScript(), {u"/work/one folder"_s, u"two"_s});
    ASSERT_TRUE(script.waitForFinished(5000));
    QFile arguments(executable + u".args"_s);
    ASSERT_TRUE(arguments.open(QIODevice::ReadOnly));
    EXPECT_EQ(arguments.readAll(), "/work/one folder\ntwo\n");
    QFile menu(where.userDolphinMenu());
    ASSERT_TRUE(menu.open(QIODevice::ReadOnly));
    EXPECT_TRUE(menu.readAll().contains(R"(Exec="/)"));
}

TEST_F(FinderIntegrationTest, SaysWhyTheEntriesCouldNotBeInstalled)
{
    put(m_sandbox, u"user/nautilus"_s); // a file where the scripts folder should be
    FinderIntegration integration(places(), u"/usr/bin/velto"_s);

    integration.installActions();

    EXPECT_FALSE(integration.areActionsInstalled());
    EXPECT_TRUE(integration.actionsError().contains(u"could not be"_s)) << integration.actionsError().toStdString();
}

// Turn On puts the extension and its logic in the user's extensions folder, its menu entry calling
// this very executable however its path is spelt; where the folder cannot be made, the row says so.
TEST_F(FinderIntegrationTest, InstallsTheExtensionForTheUser)
{
    const struct {
        const char *name;
        QString executable;
        QByteArray literal;
    } cases[] = {
        {"plain", u"/usr/bin/velto"_s, R"(VELTO_EXECUTABLE = "/usr/bin/velto")"},
        {"quotes, backslash and a line break", u"/a \"b\"\\c\nd/velto"_s,
         R"(VELTO_EXECUTABLE = "/a \"b\"\\c\nd/velto")"},
        {"UTF-8", u"/home/zoë/構築/velto"_s, "VELTO_EXECUTABLE = \"/home/zo\xc3\xab/\xe6\xa7\x8b\xe7\xaf\x89/velto\""},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        const FolderSandbox sandbox;
        put(sandbox, u"lib/libnautilus-python.so"_s);
        FinderIntegration integration(placesIn(sandbox), c.executable);
        QSignalSpy enabledChanges(&integration, &FinderIntegration::isExtensionEnabledChanged);
        ASSERT_FALSE(integration.isExtensionEnabled());

        integration.installExtension();

        EXPECT_TRUE(integration.isExtensionEnabled());
        EXPECT_EQ(enabledChanges.count(), 1);
        EXPECT_TRUE(integration.extensionError().isEmpty());
        const QString folder = sandbox.path(u"user/nautilus-python/extensions/"_s);
        QFile extension(folder + u"velto_badges.py"_s);
        ASSERT_TRUE(extension.open(QIODevice::ReadOnly));
        const QByteArray text = extension.readAll();
        EXPECT_TRUE(text.contains(c.literal + '\n')) << text.toStdString();
        EXPECT_FALSE(text.contains("@VELTO_EXECUTABLE@"));
        QFile logic(folder + u"velto_badges_logic.py"_s);
        ASSERT_TRUE(logic.open(QIODevice::ReadOnly));
        EXPECT_TRUE(logic.readAll().contains("def emblem_for"));
    }

    put(m_sandbox, u"user/nautilus-python"_s); // a file where the folder should be
    FinderIntegration integration(places(), u"/usr/bin/velto"_s);
    integration.installExtension();
    EXPECT_FALSE(integration.isExtensionEnabled());
    EXPECT_TRUE(integration.extensionError().contains(u"could not be"_s)) << integration.extensionError().toStdString();
}
