#include "CardBriefing.h"

#include <QDateTime>
#include <QStringList>

#include <gtest/gtest.h>

#include <functional>

using namespace Qt::StringLiterals;

namespace {

const QTimeZone berlin("Europe/Berlin");

VeltoDate at(const QString &local)
{
    QDateTime moment = QDateTime::fromString(local, Qt::ISODate);
    moment.setTimeZone(berlin);
    return VeltoDate::fromStoredSeconds(moment.toSecsSinceEpoch());
}

const VeltoDate now = at(u"2026-03-28T12:00"_s);

// The block every briefing ends with, written out here so that a changed word shows.
const QStringList workingFile{
    u"## Working file"_s,
    u""_s,
    u"Keep a file called `velto.md` at the root of the folder above, and update it as you work. Create it if it is "
    u"not there. Velto reads it to show progress on this card."_s,
    u""_s,
    u"- Tasks are GitHub-flavoured checkboxes as **top-level bullets**: `- [ ] not done`, `- [x] done`. Numbered "
    u"lists are not read as tasks, and nothing inside a fenced code block is."_s,
    u"- Tick a box when the task is genuinely finished, not when it is started."_s,
    u"- Append notes under a `## Log` heading, newest last, each line starting with an ISO date."_s,
    u"- Anything else you want to keep is fine anywhere in the file."_s,
    u""_s,
    u"Do not move, rename or delete anything else in the folder."_s,
    u""_s,
    u"````markdown"_s,
    u"# Short name for the work"_s,
    u""_s,
    u"## Tasks"_s,
    u"- [x] Something finished"_s,
    u"- [ ] Something still open"_s,
    u""_s,
    u"## Log"_s,
    u"- 2026-08-25 What changed and why."_s,
    u"````"_s,
};

CardBriefing::Input plainInput()
{
    CardBriefing::Input input;
    input.card.id = u"CARD"_s;
    input.card.displayName = u"Q3"_s;
    input.card.displayPath = u"/home/ana/Work/Q3"_s;
    input.card.status = CardStatus::inProgress;
    input.card.priority = Priority::next;
    input.card.goal = u"Ship the report."_s;
    input.folderPath = u"/home/ana/Work/Q3"_s;
    return input;
}

FolderEntry entry(const QString &name, bool isDirectory)
{
    return {QUrl::fromLocalFile(u"/home/ana/Work/Q3/"_s + name), name, isDirectory};
}

ChecklistItem keyFile(const QString &name, bool isMissing)
{
    ChecklistItem item;
    item.displayName = name;
    item.isMissing = isMissing;
    return item;
}

const QString plainFacts = u"**Status:** In Progress · **Priority:** Next"_s;

TEST(CardBriefing, RendersTheDocumentLineByLine)
{
    QStringList manyEntries{u"40 file(s), 1 folder(s), top level only."_s, u"- Drafts/"_s};
    for (int i = 1; i < 40; ++i)
        manyEntries.append(u"- file %1.txt"_s.arg(i));
    manyEntries.append(u"- _…and 1 more, not listed._"_s);

    const struct {
        const char *name;
        std::function<void(CardBriefing::Input &)> change;
        QStringList lines; // everything before the working-file block
    } cases[] = {
        {"a custom title names the folder on a line of its own",
         [](CardBriefing::Input &input) { input.card.title = u"Report"_s; },
         {u"# Report"_s, u""_s, u"**Folder:** `/home/ana/Work/Q3`"_s, u"**Folder name:** Q3"_s, plainFacts, u""_s,
          u"## Goal"_s, u"Ship the report."_s, u""_s, u"## Folder contents"_s, u"_Empty._"_s, u""_s}},
        {"a title of blanks and a goal of blanks",
         [](CardBriefing::Input &input) {
             input.card.title = u"   "_s;
             input.card.goal = u" \n\t \n"_s;
         },
         {u"# Q3"_s, u""_s, u"**Folder:** `/home/ana/Work/Q3`"_s, plainFacts, u""_s, u"## Goal"_s,
          u"_Not set. Ask before assuming what finishing this means._"_s, u""_s, u"## Folder contents"_s,
          u"_Empty._"_s, u""_s}},
        {"the folder's own name as title, all facts, key files and a short listing",
         [](CardBriefing::Input &input) {
             input.card.title = u"Q3"_s;
             input.card.goal = std::nullopt;
             input.card.deadline = at(u"2026-03-27T06:00"_s);
             input.project = Project{u"P"_s, u"Client"_s, u"#2A78D6"_s};
             input.tags = {Tag{u"T2"_s, u"urgent"_s, {}}, Tag{u"T1"_s, u"review"_s, {}}};
             input.keyFiles = {keyFile(u"brief.pdf"_s, false), keyFile(u"notes.md"_s, true)};
             input.contents = {entry(u"Drafts"_s, true), entry(u"brief.pdf"_s, false)};
         },
         {u"# Q3"_s, u""_s, u"**Folder:** `/home/ana/Work/Q3`"_s,
          u"**Status:** In Progress · **Priority:** Next · **Due:** 2026-03-27 (1d overdue) · **Project:** Client · "
          u"**Tags:** urgent, review"_s,
          u""_s, u"## Goal"_s, u"_Not set. Ask before assuming what finishing this means._"_s, u""_s,
          u"## Key files"_s, u"_Picked out by hand as the ones that matter here._"_s, u"- brief.pdf"_s,
          u"- notes.md  _(missing)_"_s, u""_s, u"## Folder contents"_s,
          u"1 file(s), 1 folder(s), top level only."_s, u"- Drafts/"_s, u"- brief.pdf"_s, u""_s}},
        {"41 entries list 40",
         [](CardBriefing::Input &input) {
             input.contents = {entry(u"Drafts"_s, true)};
             for (int i = 1; i <= 40; ++i)
                 input.contents.append(entry(u"file %1.txt"_s.arg(i), false));
         },
         QStringList{u"# Q3"_s, u""_s, u"**Folder:** `/home/ana/Work/Q3`"_s, plainFacts, u""_s, u"## Goal"_s,
                     u"Ship the report."_s, u""_s, u"## Folder contents"_s}
             + manyEntries + QStringList{u""_s}},
        {"a missing folder: the stored path with a note",
         [](CardBriefing::Input &input) {
             input.folderPath = std::nullopt;
             input.contentsUnavailable = true;
         },
         {u"# Q3"_s, u""_s, u"**Folder:** `/home/ana/Work/Q3`"_s,
          u"> Velto could not reach this folder when the briefing was copied, so the path above is its last known "
          u"one."_s,
          plainFacts, u""_s, u"## Goal"_s, u"Ship the report."_s, u""_s, u"## Folder contents"_s,
          u"_Velto could not read the folder. Look for yourself._"_s, u""_s}},
        {"an unreachable folder: the live path without the note",
         [](CardBriefing::Input &input) {
             input.folderPath = u"/mnt/share/Q3"_s;
             input.contentsUnavailable = true;
             input.contents = {entry(u"stale.txt"_s, false)};
         },
         {u"# Q3"_s, u""_s, u"**Folder:** `/mnt/share/Q3`"_s, plainFacts, u""_s, u"## Goal"_s,
          u"Ship the report."_s, u""_s, u"## Folder contents"_s,
          u"_Velto could not read the folder. Look for yourself._"_s, u""_s}},
        {"a goal of many lines of markdown passes untouched",
         [](CardBriefing::Input &input) {
             input.card.goal = u"\n  ## Scope\n\n- [ ] draft\n  - nested\n```\n# not a heading\n```\n\n"_s;
         },
         {u"# Q3"_s, u""_s, u"**Folder:** `/home/ana/Work/Q3`"_s, plainFacts, u""_s, u"## Goal"_s, u"## Scope"_s,
          u""_s, u"- [ ] draft"_s, u"  - nested"_s, u"```"_s, u"# not a heading"_s, u"```"_s, u""_s,
          u"## Folder contents"_s, u"_Empty._"_s, u""_s}},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.name);
        CardBriefing::Input input = plainInput();
        c.change(input);
        const QString expected = (c.lines + workingFile).join(u'\n');
        EXPECT_EQ(CardBriefing::render(input, now, berlin), expected);
    }
}

TEST(CardBriefing, ListsExactlyFortyEntriesWithoutARemainder)
{
    CardBriefing::Input input = plainInput();
    for (int i = 1; i <= 40; ++i)
        input.contents.append(entry(u"file %1.txt"_s.arg(i), false));
    const QStringList lines = CardBriefing::render(input, now, berlin).split(u'\n');
    EXPECT_TRUE(lines.contains(u"- file 40.txt"_s));
    EXPECT_FALSE(lines.contains(u"- _…and 0 more, not listed._"_s));
    EXPECT_EQ(lines.at(lines.indexOf(u"- file 40.txt"_s) + 1), QString());
}

// Days count as full days of the wall clock, not as dates crossed, and a day of 23 hours is a day.
TEST(CardBriefing, DatesTheDeadlineAndCountsFullDays)
{
    const struct {
        QString deadline;
        QString due;
    } cases[] = {
        {u"2026-03-27T06:00"_s, u"2026-03-27 (1d overdue)"_s},
        {u"2026-03-27T16:00"_s, u"2026-03-27 (today)"_s},
        {u"2026-03-29T08:00"_s, u"2026-03-29 (today)"_s},
        {u"2026-03-29T12:00"_s, u"2026-03-29 (in 1d)"_s},
        {u"2026-04-01T00:30"_s, u"2026-04-01 (in 3d)"_s},
    };
    for (const auto &c : cases) {
        SCOPED_TRACE(c.deadline.toStdString());
        CardBriefing::Input input = plainInput();
        input.card.deadline = at(c.deadline);
        const QStringList lines = CardBriefing::render(input, now, berlin).split(u'\n');
        EXPECT_EQ(lines.at(3), plainFacts + u" · **Due:** "_s + c.due);
    }
}

} // namespace
