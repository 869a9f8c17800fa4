// The part of BoardModel that the detail pane uses: the card's own texts, and requests that edit
// them and return at once.

#include "BoardModel.h"

using namespace Qt::StringLiterals;

namespace {

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
