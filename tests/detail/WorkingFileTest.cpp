#include "WorkingFile.h"
#include "WorkingFileError.h"

#include <QStringList>

#include <gtest/gtest.h>

#include <optional>

using namespace Qt::StringLiterals;

namespace {

// Tasks as "[x] text" or "[ ] text" and log entries as "date text", one per element, so that a
// case reads like the file it came from.
QStringList described(const WorkingFile &file)
{
    QStringList lines;
    for (const WorkingFile::Checkbox &task : file.tasks)
        lines.append((task.done ? u"[x] "_s : u"[ ] "_s) + task.text);
    for (const WorkingFile::LogEntry &entry : file.log)
        lines.append(entry.date + u' ' + entry.text);
    return lines;
}

TEST(WorkingFileTest, OnlyTopLevelCheckboxesOutsideFencesAreTasksAndOnlyDatedLogBulletsAreEntries)
{
    const struct {
        const char *name;
        QByteArray markdown;
        QStringList expected;
    } cases[] = {
        {"every bullet marker and either case of x",
         "- [ ] one\n* [x] two\n+ [X] three\n", {u"[ ] one"_s, u"[x] two"_s, u"[x] three"_s}},
        {"indented bullets belong to another",
         "- [ ] top\n  - [x] nested\n    - [ ] deeper\n\t- [x] tabbed\n", {u"[ ] top"_s}},
        {"numbered lists are no tasks", "1. [ ] first\n2) [x] second\n- [x] real\n", {u"[x] real"_s}},
        {"a box needs a space after it and a marker needs one too",
         "- [x]done\n-[ ] tight\n- [y] other\n- [ ]\n", {u"[ ] "_s}},
        {"three backticks hide what is inside",
         "```\n- [ ] hidden\n```\n- [ ] shown\n", {u"[ ] shown"_s}},
        {"four backticks are not closed by three",
         "````markdown\n```\n- [ ] hidden\n```\n- [x] still hidden\n````\n- [ ] shown\n", {u"[ ] shown"_s}},
        {"tildes are fences and backticks do not close them",
         "~~~\n- [ ] hidden\n```\n- [ ] hidden too\n~~~~\n- [x] shown\n", {u"[x] shown"_s}},
        {"a closing fence has nothing after it", "```\n- [ ] a\n``` not closed\n- [ ] b\n```\n- [ ] c\n",
         {u"[ ] c"_s}},
        {"backticks inside a line are no fence", "``` a ` b\n- [ ] shown\n", {u"[ ] shown"_s}},
        {"an unclosed fence runs to the end", "- [ ] before\n```\n- [ ] after\n## Log\n- 2026-01-02 x\n",
         {u"[ ] before"_s}},
        {"CRLF line ends", "- [x] one\r\n- [ ] two\r\n## Log\r\n- 2026-08-25 note\r\n",
         {u"[x] one"_s, u"[ ] two"_s, u"2026-08-25 note"_s}},
        {"a byte order mark", "\xEF\xBB\xBF- [x] first line\n", {u"[x] first line"_s}},
        {"log entries need a real date at the start, under Log only",
         "- 2026-01-01 not in a log\n## Log\n- 2026-08-25 — fixed it\n- 2026-02-30 no such day\n"
         "- note 2026-08-26\n  - 2026-08-27 nested\n* 2026-08-28: colon\n- 20260829 compact\n",
         {u"2026-08-25 fixed it"_s, u"2026-08-28 colon"_s}},
        {"the log ends at the next heading of its level, not at a deeper one",
         "## Log\n### Week 1\n- 2026-08-25 a\n## Later\n- 2026-08-26 b\n# Log\n- 2026-08-27 c\n",
         {u"2026-08-25 a"_s}},
        {"a checkbox in the log is a task", "## Log\n- [x] 2026-08-25 ticked\n", {u"[x] 2026-08-25 ticked"_s}},
        {"a fenced log heading opens no log", "```\n## Log\n```\n- 2026-08-25 a\n", {}},
        {"empty file", "", {}},
    };
    for (const auto &test : cases)
        EXPECT_EQ(described(WorkingFile::parse(test.markdown)), test.expected) << test.name;
}

TEST(WorkingFileTest, ALargeFileOrOneThatIsNotUtf8IsRefusedWithItsReason)
{
    using Reason = WorkingFileError::Reason;
    const struct {
        const char *name;
        QByteArray bytes;
        std::optional<Reason> refusal;
    } cases[] = {
        {"exactly 1 MiB", QByteArray(WorkingFile::sizeLimit, 'a'), std::nullopt},
        {"1 MiB and one byte", QByteArray(WorkingFile::sizeLimit + 1, 'a'), Reason::tooLarge},
        {"a stray continuation byte", "- [ ] caf\x80\n", Reason::notText},
        {"Latin-1 text", "- [ ] caf\xE9\n", Reason::notText},
        {"a truncated sequence at the end", "- [ ] \xE2\x82", Reason::notText},
        {"a NUL byte", QByteArray("- [ ] a\0b\n", 10), Reason::notText},
        {"multibyte text", "- [x] café ✓\n", std::nullopt},
    };
    for (const auto &test : cases) {
        std::optional<Reason> refusal;
        try {
            (void)WorkingFile::parse(test.bytes);
        } catch (const WorkingFileError &error) {
            refusal = error.reason();
        }
        EXPECT_EQ(refusal, test.refusal) << test.name;
    }
    EXPECT_STREQ(WorkingFileError(Reason::tooLarge).what(), "velto.md is over 1 MiB, so Velto did not read it.");
    EXPECT_STREQ(WorkingFileError(Reason::notText).what(), "velto.md is not UTF-8 text, so Velto did not read it.");
}

TEST(WorkingFileTest, DoneCountsTickedTasks)
{
    const WorkingFile file = WorkingFile::parse("- [x] a\n- [ ] b\n- [X] c\n");
    EXPECT_EQ(file.doneCount(), 2);
    EXPECT_EQ(file.tasks.size(), 3);
}

} // namespace
