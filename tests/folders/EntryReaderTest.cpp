#include "EntryReader.h"
#include "FolderSandbox.h"

#include <QFile>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

// Read one after another, as a board's folders are, each path must give what a read of the whole
// path gives: the directory kept open from the path before must never stand in for another.
TEST(EntryReader, readsWhatAReadOfTheWholePathReads)
{
    const FolderSandbox sandbox;
    sandbox.makeFolder(u"a/one"_s);
    sandbox.makeFolder(u"a/two"_s);
    sandbox.makeFolder(u"b/one"_s);
    sandbox.makeFile(u"a/file"_s);
    ASSERT_TRUE(QFile::link(sandbox.path(u"a/one"_s), sandbox.path(u"a/link"_s)));
    const QStringList paths{
        sandbox.path(u"a/one"_s),     sandbox.path(u"a/two"_s),  sandbox.path(u"b/one"_s),
        sandbox.path(u"a/one"_s),     sandbox.path(u"a/file"_s), sandbox.path(u"a/link"_s),
        sandbox.path(u"a/missing"_s), sandbox.path(u"gone/one"_s), u"/tmp"_s,
        sandbox.path(u"a/two"_s),     u"/"_s,
    };
    EntryReader reader;
    for (const auto detail : {FileIdentity::Detail::statOnly, FileIdentity::Detail::withHandle}) {
        for (const QString &path : paths) {
            SCOPED_TRACE(path.toStdString());
            const auto read = reader.read(path, detail);
            const auto expected = FileIdentity::read(path, detail);
            ASSERT_EQ(read.has_value(), expected.has_value());
            if (expected) {
                EXPECT_EQ(*read, *expected);
                EXPECT_EQ(read->modified, expected->modified);
            }
        }
    }
    // What stands at a path read before is read anew: the kept directory holds no answers.
    sandbox.remove(u"a/two"_s);
    EXPECT_FALSE(reader.read(sandbox.path(u"a/two"_s), FileIdentity::Detail::statOnly).has_value());
}
