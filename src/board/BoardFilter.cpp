#include "BoardFilter.h"

#include "TextFolding.h"

#include <QStringList>

namespace {

// Joined so that a search can run across the end of the title into the folder's name. A title
// that is present counts as stored, even when blank.
QString searchableText(const Card &card)
{
    QStringList parts;
    if (card.title)
        parts.append(*card.title);
    parts.append(card.displayName);
    parts.append(card.displayPath);
    return parts.join(u' ');
}

bool matchesSearch(const Card &card, const QString &searchText)
{
    const QString needle = searchText.trimmed();
    if (needle.isEmpty())
        return true;
    return TextFolding::searchKey(searchableText(card)).contains(TextFolding::searchKey(needle));
}

} // namespace

bool BoardFilter::matches(const Card &card, const QSet<QString> &cardTagIDs) const
{
    if (!project.admits(card.projectID))
        return false;
    if (!cardTagIDs.contains(tagIDs))
        return false;
    if (!priorities.empty() && !priorities.contains(card.priority))
        return false;
    if (!visibleStatuses.contains(card.status))
        return false;
    return matchesSearch(card, searchText);
}
