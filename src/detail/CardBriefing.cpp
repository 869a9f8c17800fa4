#include "CardBriefing.h"

#include <QDateTime>
#include <QLocale>
#include <QStringList>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace CardBriefing {

namespace {

constexpr qsizetype listedEntries = 40;

// Full days from `now` to `deadline` on the wall clock of `zone`: a day across a daylight-saving
// change is still one day, and a part of a day counts for nothing, so 20 hours either way is 0.
qint64 fullDaysBetween(VeltoDate now, VeltoDate deadline, const QTimeZone &zone)
{
    const QDateTime from = now.floored().toDateTime().toTimeZone(zone);
    const QDateTime to = deadline.toDateTime().toTimeZone(zone);
    qint64 days = from.date().daysTo(to.date());
    if (days > 0 && from.addDays(days) > to)
        --days;
    else if (days < 0 && from.addDays(days) < to)
        ++days;
    return days;
}

QString relativeDays(qint64 days)
{
    if (days < 0)
        return u"%1d overdue"_s.arg(-days);
    if (days == 0)
        return u"today"_s;
    return u"in %1d"_s.arg(days);
}

QString factsLine(const Input &input, VeltoDate now, const QTimeZone &zone)
{
    QStringList facts{u"**Status:** "_s + label(input.card.status), u"**Priority:** "_s + label(input.card.priority)};
    if (const auto deadline = input.card.deadline) {
        const QString date = QLocale::c().toString(deadline->toDateTime().toTimeZone(zone), u"yyyy-MM-dd"_s);
        facts.append(u"**Due:** %1 (%2)"_s.arg(date, relativeDays(fullDaysBetween(now, *deadline, zone))));
    }
    if (input.project)
        facts.append(u"**Project:** "_s + input.project->name);
    if (!input.tags.isEmpty()) {
        QStringList names;
        for (const Tag &tag : input.tags)
            names.append(tag.name);
        facts.append(u"**Tags:** "_s + names.join(u", "_s));
    }
    return facts.join(u" · "_s);
}

void appendContents(QStringList &lines, const Input &input)
{
    lines.append(u"## Folder contents"_s);
    if (input.contentsUnavailable) {
        lines.append(u"_Velto could not read the folder. Look for yourself._"_s);
        return;
    }
    if (input.contents.isEmpty()) {
        lines.append(u"_Empty._"_s);
        return;
    }
    const qsizetype files = FolderEntry::fileCount(input.contents);
    const qsizetype folders = input.contents.size() - files;
    lines.append(u"%1 file(s), %2 folder(s), top level only."_s.arg(files).arg(folders));
    const qsizetype listed = std::min(input.contents.size(), listedEntries);
    for (qsizetype i = 0; i < listed; ++i) {
        const FolderEntry &entry = input.contents.at(i);
        lines.append(u"- "_s + entry.name + (entry.isDirectory ? u"/"_s : QString()));
    }
    if (input.contents.size() > listedEntries)
        lines.append(u"- _…and %1 more, not listed._"_s.arg(input.contents.size() - listedEntries));
}

// Tells the agent how to keep its notes in the folder. The fence is four backticks so that a
// sample with a fence of three inside cannot close it; the date in the sample never changes.
void appendWorkingFile(QStringList &lines)
{
    lines << u"## Working file"_s << QString()
          << u"Keep a file called `velto.md` at the root of the folder above, and update it as you work. "
             u"Create it if it is not there. Velto reads it to show progress on this card."_s
          << QString()
          << u"- Tasks are GitHub-flavoured checkboxes as **top-level bullets**: `- [ ] not done`, `- [x] done`. "
             u"Numbered lists are not read as tasks, and nothing inside a fenced code block is."_s
          << u"- Tick a box when the task is genuinely finished, not when it is started."_s
          << u"- Append notes under a `## Log` heading, newest last, each line starting with an ISO date."_s
          << u"- Anything else you want to keep is fine anywhere in the file."_s << QString()
          << u"Do not move, rename or delete anything else in the folder."_s << QString() << u"````markdown"_s
          << u"# Short name for the work"_s << QString() << u"## Tasks"_s << u"- [x] Something finished"_s
          << u"- [ ] Something still open"_s << QString() << u"## Log"_s << u"- 2026-08-25 What changed and why."_s
          << u"````"_s;
}

} // namespace

QString render(const Input &input, VeltoDate now, const QTimeZone &zone)
{
    const Card &card = input.card;
    QStringList lines{u"# "_s + card.boardTitle(), QString(),
                      u"**Folder:** `%1`"_s.arg(input.folderPath.value_or(card.displayPath))};
    if (!input.folderPath)
        lines.append(u"> Velto could not reach this folder when the briefing was copied, so the path above is its "
                     u"last known one."_s);
    if (card.hasCustomTitle())
        lines.append(u"**Folder name:** "_s + card.displayName);
    lines << factsLine(input, now, zone) << QString() << u"## Goal"_s;

    // A goal of many lines goes in as one element and so stays many lines.
    const QString goal = card.goal.value_or(QString()).trimmed();
    lines << (goal.isEmpty() ? u"_Not set. Ask before assuming what finishing this means._"_s : goal) << QString();

    if (!input.keyFiles.isEmpty()) {
        lines << u"## Key files"_s << u"_Picked out by hand as the ones that matter here._"_s;
        for (const ChecklistItem &item : input.keyFiles)
            lines.append(u"- "_s + item.displayName + (item.isMissing ? u"  _(missing)_"_s : QString()));
        lines.append(QString());
    }
    appendContents(lines, input);
    lines.append(QString());
    appendWorkingFile(lines);
    return lines.join(u'\n');
}

} // namespace CardBriefing
