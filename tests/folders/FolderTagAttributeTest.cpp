#include "TagAttributeFixture.h"

#include "FinderTagError.h"
#include "FolderTagAttribute.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

const QString waiting = u"Velto: Waiting"_s;
const QString complete = u"Velto: Complete"_s;

// The text of the failure applying the tag raises, or empty when it succeeds.
QString failureOf(const std::optional<QString> &desired, const std::optional<QString> &previous, const QUrl &url)
{
    try {
        FolderTagAttribute::applyTag(desired, previous, url);
    } catch (const FinderTagError &error) {
        return error.text();
    }
    return {};
}

} // namespace

TEST(FolderTagAttribute, ReplacesOnlyItsOwnTagAndKeepsTheRest)
{
    const std::optional<QString> none;
    const std::optional<QStringList> unchanged;
    const struct {
        const char *what;
        QStringList elements;
        std::optional<QString> desired;
        std::optional<QString> previous;
        std::optional<QStringList> updated;
    } cases[] = {
        {"added after the user's tags", {u"Red\n6"_s, u"Invoices"_s}, waiting, none,
         QStringList{u"Red\n6"_s, u"Invoices"_s, waiting}},
        {"a new status goes to the end", {u"Red\n6"_s, waiting, u"Invoices"_s}, complete, waiting,
         QStringList{u"Red\n6"_s, u"Invoices"_s, complete}},
        {"removed by hand: only the new tag is added", {u"Red"_s}, complete, waiting,
         QStringList{u"Red"_s, complete}},
        {"the user's tag of that name is taken over, colour and all", {waiting + u"\n3"_s, u"Red"_s}, waiting, none,
         unchanged},
        {"turned off after removal by hand", {u"Red"_s}, none, waiting, unchanged},
        {"every copy of the old tag goes", {waiting, u"Red"_s, waiting}, complete, waiting,
         QStringList{u"Red"_s, complete}},
        {"turned off with two copies: neither stays", {waiting, waiting}, none, waiting, QStringList{}},
        {"the user's duplicates stay, in place and colour", {u"Red\n6"_s, waiting, u"Red"_s, u"Blue"_s, u"Red\n6"_s},
         none, waiting, QStringList{u"Red\n6"_s, u"Red"_s, u"Blue"_s, u"Red\n6"_s}},
        {"two copies of the wanted tag are taken over as they stand", {waiting, u"Red"_s, waiting}, waiting, none,
         unchanged},
        {"the wanted tag was there already", {complete, waiting}, complete, waiting, QStringList{complete}},
        {"colours follow their names in order", {u"A\n1"_s, u"B"_s, u"A\n2"_s}, none, u"B"_s,
         QStringList{u"A\n1"_s, u"A\n2"_s}},
        {"the colour is after the last line feed", {u"a\nb\n2"_s, u"Red"_s}, none, u"a\nb"_s, QStringList{u"Red"_s}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(FolderTagAttribute::updatedElements(c.elements, c.desired, c.previous), c.updated);
    }
}

using FolderTagAttributeOnDisk = TagAttributeFixture;

TEST_F(FolderTagAttributeOnDisk, ReadsWritesAndLeavesAloneWhatItCannotRead)
{
    const std::optional<QByteArray> noAttribute;
    const QString unreadable =
        u"the folder's file manager tags could not be read, so they were left alone rather than overwritten"_s;
    const struct {
        const char *what;
        std::optional<QByteArray> before;
        std::optional<QString> desired;
        std::optional<QString> previous;
        std::optional<QByteArray> after;
        QString failure;
    } cases[] = {
        {"no attribute: made with the one tag", noAttribute, waiting, {}, QByteArray("Velto: Waiting"), {}},
        {"an empty value reads as no tags", QByteArray(""), waiting, {}, QByteArray("Velto: Waiting"), {}},
        {"blanks and empty tags dropped, the rest kept in order", QByteArray(" Caf\xc3\xa9,, ,Invoices\t,"), waiting,
         {}, QByteArray("Caf\xc3\xa9,Invoices,Velto: Waiting"), {}},
        {"the same names are not written again", QByteArray(" Velto: Waiting ,Red"), waiting, waiting,
         QByteArray(" Velto: Waiting ,Red"), {}},
        {"the last tag removed leaves an empty value", QByteArray("Velto: Complete"), {}, complete, QByteArray(""), {}},
        {"nothing to remove writes nothing", noAttribute, {}, complete, noAttribute, {}},
        {"every copy of the old tag removed, the user's twins kept", QByteArray("Velto: Complete,Red,Velto: Complete,Red"),
         {}, complete, QByteArray("Red,Red"), {}},
        {"not UTF-8: left exactly as it was", QByteArray("Red,\xff"), waiting, {}, QByteArray("Red,\xff"), unreadable},
        {"a tag with a line feed, shown escaped", QByteArray("Red"), u"Velto:\n\"W\"\t\\\x01"_s, {}, QByteArray("Red"),
         u"a file manager tag may not contain a newline: \"Velto:\\n\\\"W\\\"\\t\\\\\\u{1}\""_s},
        {"a tag with a comma", QByteArray("Red"), u"Velto, Waiting"_s, {}, QByteArray("Red"),
         u"a file manager tag may not contain a comma: \"Velto, Waiting\""_s},
    };
    int index = 0;
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        const QString folder = QString::number(++index);
        makeFolder(folder);
        if (c.before)
            setRawTags(folder, *c.before);

        EXPECT_EQ(failureOf(c.desired, c.previous, url(folder)), c.failure);
        EXPECT_EQ(rawTags(folder), c.after);
    }
}

TEST_F(FolderTagAttributeOnDisk, TagsThroughALinkAndReportsFoldersItCannotReach)
{
    makeFolder(u"target"_s);
    ASSERT_TRUE(QFile::link(path(u"target"_s), path(u"link"_s)));
    const struct {
        QUrl url;
        QString failure;
    } cases[] = {
        {url(u"link"_s), {}},
        {QUrl(u"https://example.com/folder"_s), u"could not form a filesystem path for /folder"_s},
        {url(u"gone"_s), u"getxattr failed: No such file or directory (errno 2)"_s},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.url.toString().toStdString());
        EXPECT_EQ(failureOf(waiting, std::nullopt, c.url), c.failure);
    }
    EXPECT_EQ(rawTags(u"target"_s), QByteArray("Velto: Waiting"));
}
