// The part of BoardModel that the detail pane uses: the card's own texts, and requests that edit
// them and return at once.

#include "BoardModel.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// Log entries the pane shows, the newest ones.
constexpr qsizetype shownLogEntries = 5;

QVariantMap workingFileDetail(const std::optional<WorkingFileRead> &read)
{
    if (!read)
        return {{u"exists"_s, false}};
    QVariantList tasks;
    for (const WorkingFile::Checkbox &task : read->file.tasks)
        tasks.append(QVariantMap{{u"text"_s, task.text}, {u"done"_s, task.done}});
    QVariantList log;
    const QList<WorkingFile::LogEntry> &entries = read->file.log;
    for (qsizetype i = std::max<qsizetype>(0, entries.size() - shownLogEntries); i < entries.size(); ++i)
        log.append(QVariantMap{{u"date"_s, entries.at(i).date}, {u"text"_s, entries.at(i).text}});
    return {{u"exists"_s, true},
            {u"url"_s, QUrl::fromLocalFile(read->path)},
            {u"failure"_s, read->failure.value_or(QString())},
            {u"tasks"_s, tasks},
            {u"log"_s, log}};
}

// The pane stores what the user typed without its surrounding blanks, and nothing for a blank.
std::optional<QString> storedText(const QString &text)
{
    const QString trimmed = text.trimmed();
    return trimmed.isEmpty() ? std::nullopt : std::optional(trimmed);
}

} // namespace

QVariantMap BoardModel::cardDetail(const QString &cardID) const
{
    const auto card = cardWithID(cardID);
    if (!card)
        return {};
    QVariantMap detail = face(*card);
    detail.insert(u"storedTitle"_s, card->title.value_or(QString()));
    detail.insert(u"goal"_s, card->goal.value_or(QString()));
    const auto url = folderURL(*card);
    detail.insert(u"hasFolderURL"_s, url.has_value());
    const auto working = m_workingFiles.constFind(cardID);
    detail.insert(u"workingFile"_s, workingFileDetail(working == m_workingFiles.cend()
                                                          ? std::nullopt : std::optional(*working)));
    return detail;
}

void BoardModel::requestSetTitle(const QString &cardID, const QString &title)
{
    const auto card = cardWithID(cardID);
    if (!card)
        return;
    // Leaving the field unchanged writes nothing; an absent title counts as an empty one.
    const std::optional<QString> stored = storedText(title);
    if (stored.value_or(QString()) == card->title.value_or(QString()))
        return;
    setTitle(stored, *card);
}

void BoardModel::requestSetGoal(const QString &cardID, const QString &goal)
{
    if (const auto card = cardWithID(cardID))
        setGoal(storedText(goal), *card);
}

void BoardModel::requestSetDeadline(const QString &cardID, const QDateTime &deadline)
{
    const auto card = cardWithID(cardID);
    if (!card)
        return;
    const std::optional<VeltoDate> chosen = deadline.isValid()
        ? std::optional(VeltoDate::fromStoredSeconds(deadline.toSecsSinceEpoch()))
        : std::nullopt;
    if (chosen == card->deadline)
        return;
    setDeadline(chosen, *card);
}
