#include "FolderSandbox.h"

#include "FolderEntry.h"
#include "FolderListingError.h"

#include <gtest/gtest.h>

#include <cerrno>

using namespace Qt::StringLiterals;

namespace {

// "name/" makes a folder, "name" a file, "name -> target" a link.
void make(const FolderSandbox &sandbox, const QString &item)
{
    if (item.contains(u" -> "_s)) {
        const QString link = u"f/"_s + item.section(u" -> "_s, 0, 0);
        ASSERT_TRUE(QFile::link(sandbox.path(item.section(u" -> "_s, 1)), sandbox.path(link)));
    } else if (item.endsWith(u'/')) {
        sandbox.makeFolder(u"f/"_s + item);
    } else {
        QFile file(sandbox.path(u"f/"_s + item));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        if (item == u".hidden"_s)
            file.write("secret.txt\nPrivate\n");
    }
}

} // namespace

TEST(FolderEntry, listsTheTopLevelFoldersFirstInNaturalOrder)
{
    const struct {
        const char *what;
        QStringList items;
        QStringList listed; // folders end in "/"
        qsizetype fileCount;
    } cases[] = {
        {"empty", {}, {}, 0},
        {"only hidden", {u".git/"_s, u".DS_Store"_s}, {}, 0},
        {"folders before files", {u"b.txt"_s, u"A/"_s, u"c/"_s}, {u"A/"_s, u"c/"_s, u"b.txt"_s}, 1},
        {"numbers by value, case not counting",
         {u"File 10"_s, u"file 9"_s, u"File 1"_s, u"Notes 2/"_s, u"notes 10/"_s},
         {u"Notes 2/"_s, u"notes 10/"_s, u"File 1"_s, u"file 9"_s, u"File 10"_s}, 3},
        {"names in .hidden left out",
         {u".hidden"_s, u"secret.txt"_s, u"Private/"_s, u"shown.txt"_s},
         {u"shown.txt"_s},
         1},
        {"a link is no folder", {u"Real/"_s, u"Link -> f/Real"_s, u"Dangling -> nowhere"_s, u"inner/deep/"_s},
         {u"inner/"_s, u"Real/"_s, u"Dangling"_s, u"Link"_s}, 2},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        const FolderSandbox sandbox;
        sandbox.makeFolder(u"f"_s);
        for (const QString &item : c.items)
            make(sandbox, item);

        const QList<FolderEntry> entries = FolderEntry::list(sandbox.url(u"f"_s));

        QStringList listed;
        for (const FolderEntry &entry : entries) {
            listed.append(entry.name + (entry.isDirectory ? u"/"_s : QString()));
            EXPECT_EQ(entry.url, sandbox.url(u"f/"_s + entry.name));
        }
        EXPECT_EQ(listed, c.listed);
        EXPECT_EQ(FolderEntry::fileCount(entries), c.fileCount);
    }
}

TEST(FolderEntry, failsWithTheReasonWhenTheFolderCannotBeRead)
{
    const FolderSandbox sandbox;
    sandbox.makeFile(u"plain.txt"_s);
    try {
        (void)FolderEntry::list(sandbox.url(u"plain.txt"_s));
        ADD_FAILURE() << "listed";
    } catch (const FolderListingError &error) {
        EXPECT_EQ(error.errorCode(), ENOTDIR);
        EXPECT_EQ(error.text(), u"The folder “plain.txt” could not be opened: Not a directory."_s);
    }
}
