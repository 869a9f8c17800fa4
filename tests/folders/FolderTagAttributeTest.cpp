#include "TagAttributeFixture.h"

#include "FinderTagError.h"
#include "FolderTagAttribute.h"

#include <gtest/gtest.h>

#include <functional>

using namespace Qt::StringLiterals;

namespace {

const QString waiting = u"Velto: Waiting"_s;
const QString complete = u"Velto: Complete"_s;

// The reason of the failure `action` throws, or absent when it throws none.
std::optional<FinderTagError::Reason> failureOf(const std::function<void()> &action)
{
    try {
        action();
    } catch (const FinderTagError &error) {
        return error.reason();
    }
    return std::nullopt;
}

} // namespace

TEST(FolderTagAttribute, SplitsTheValueIntoTags)
{
    const struct {
        const char *what;
        QByteArray value;
        std::optional<QStringList> tags;
    } cases[] = {
        {"empty", "", QStringList{}},
        {"blanks around tags", "  Red ,\tInvoices\n", QStringList{u"Red"_s, u"Invoices"_s}},
        {"empty tags dropped", ",Red,, ,Invoices,", QStringList{u"Red"_s, u"Invoices"_s}},
        {"UTF-8", "Caf\xc3\xa9,\xe6\x97\xa5\xe6\x9c\xac", QStringList{u"Café"_s, u"日本"_s}},
        {"not UTF-8", "Red,\xff\xfe", std::nullopt},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(FolderTagAttribute::decode(c.value), c.tags);
    }
}

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
        {"turned off: the last tag goes", {waiting}, none, waiting, QStringList{}},
        {"turned off after removal by hand", {u"Red"_s}, none, waiting, unchanged},
        {"only the first of two copies goes", {waiting, u"Red"_s, waiting}, complete, waiting,
         QStringList{u"Red"_s, waiting, complete}},
        {"the wanted tag was there already", {complete, waiting}, complete, waiting, QStringList{complete}},
        {"colours follow their names in order", {u"A\n1"_s, u"B"_s, u"A\n2"_s}, none, u"B"_s,
         QStringList{u"A\n1"_s, u"A\n2"_s}},
        {"the colour is after the last line feed", {u"a\nb\n2"_s, u"Red"_s}, none, u"a\nb"_s,
         QStringList{u"Red"_s}},
        {"a coloured copy of the old tag goes first", {waiting + u"\n2"_s, u"Red"_s}, complete, waiting,
         QStringList{u"Red"_s, complete}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(FolderTagAttribute::updatedElements(c.elements, c.desired, c.previous), c.updated);
    }
}

TEST(FinderTagError, PrintsEachReason)
{
    const struct {
        FinderTagError::Reason reason;
        QString text;
    } cases[] = {
        {FinderTagError::TagContainsNewline{u"a\nb\t\"c\\\x01"_s},
         u"a file manager tag may not contain a newline: \"a\\nb\\t\\\"c\\\\\\u{1}\""_s},
        {FinderTagError::TagContainsComma{u"a,b"_s}, u"a file manager tag may not contain a comma: \"a,b\""_s},
        {FinderTagError::PathUnrepresentable{QUrl(u"https://example.com/x y"_s)},
         u"could not form a filesystem path for /x y"_s},
        {FinderTagError::WriteFailed{EOPNOTSUPP}, u"setxattr failed: Operation not supported (errno 95)"_s},
        {FinderTagError::ReadFailed{ENOENT}, u"getxattr failed: No such file or directory (errno 2)"_s},
        {FinderTagError::TagsUnreadable{},
         u"the folder's file manager tags could not be read, so they were left alone rather than overwritten"_s},
    };
    for (const auto &c : cases)
        EXPECT_EQ(FinderTagError(c.reason).text(), c.text);
}

using FolderTagAttributeOnDisk = TagAttributeFixture;

TEST_F(FolderTagAttributeOnDisk, ReadsWritesAndLeavesAloneWhatItCannotRead)
{
    const std::optional<QByteArray> noAttribute;
    const std::optional<FinderTagError::Reason> fine;
    const FinderTagError::Reason unreadable = FinderTagError::TagsUnreadable{};
    const struct {
        const char *what;
        std::optional<QByteArray> before;
        std::optional<QString> desired;
        std::optional<QString> previous;
        std::optional<QByteArray> after;
        std::optional<FinderTagError::Reason> failure;
    } cases[] = {
        {"no attribute: made with the one tag", noAttribute, waiting, {}, QByteArray("Velto: Waiting"), fine},
        {"an empty value reads as no tags", QByteArray(""), waiting, {}, QByteArray("Velto: Waiting"), fine},
        {"user tags kept in order", QByteArray("Red, Invoices"), waiting, {},
         QByteArray("Red,Invoices,Velto: Waiting"), fine},
        {"the same names are not written again", QByteArray(" Velto: Waiting ,Red"), waiting, waiting,
         QByteArray(" Velto: Waiting ,Red"), fine},
        {"the last tag removed leaves an empty value", QByteArray("Velto: Complete"), {}, complete, QByteArray(""),
         fine},
        {"nothing to remove writes nothing", noAttribute, {}, complete, noAttribute, fine},
        {"not UTF-8: left exactly as it was", QByteArray("Red,\xff"), waiting, {}, QByteArray("Red,\xff"),
         unreadable},
        {"a tag with a line feed", QByteArray("Red"), u"Velto:\nWaiting"_s, {}, QByteArray("Red"),
         FinderTagError::TagContainsNewline{u"Velto:\nWaiting"_s}},
        {"a tag with a comma", QByteArray("Red"), u"Velto, Waiting"_s, {}, QByteArray("Red"),
         FinderTagError::TagContainsComma{u"Velto, Waiting"_s}},
    };
    int index = 0;
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        const QString folder = QString::number(++index);
        makeFolder(folder);
        if (c.before)
            setRawTags(folder, *c.before);

        EXPECT_EQ(failureOf([&] { FolderTagAttribute::applyTag(c.desired, c.previous, url(folder)); }), c.failure);
        EXPECT_EQ(rawTags(folder), c.after);
    }
}

TEST_F(FolderTagAttributeOnDisk, FollowsALinkToTheFolder)
{
    makeFolder(u"target"_s);
    ASSERT_TRUE(QFile::link(path(u"target"_s), path(u"link"_s)));

    FolderTagAttribute::applyTag(waiting, std::nullopt, url(u"link"_s));

    EXPECT_EQ(rawTags(u"target"_s), QByteArray("Velto: Waiting"));
}

TEST_F(FolderTagAttributeOnDisk, ReportsFoldersItCannotReach)
{
    const struct {
        const char *what;
        QUrl url;
        FinderTagError::Reason reason;
    } cases[] = {
        {"not a local file", QUrl(u"https://example.com/folder"_s),
         FinderTagError::PathUnrepresentable{QUrl(u"https://example.com/folder"_s)}},
        {"gone", url(u"gone"_s), FinderTagError::ReadFailed{ENOENT}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_EQ(failureOf([&] { FolderTagAttribute::applyTag(waiting, std::nullopt, c.url); }), c.reason);
    }
}
