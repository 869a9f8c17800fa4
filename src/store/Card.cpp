#include "Card.h"

#include "RepositoryError.h"
#include "RowReading.h"
#include "SQLiteStatement.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// Tabs and every kind of space, but not line ends: a title made of line feeds is not blank.
bool isHorizontalBlank(QChar c)
{
    return c == u'\t' || c.category() == QChar::Separator_Space;
}

bool isBlankTitle(const QString &title)
{
    return std::all_of(title.cbegin(), title.cend(), isHorizontalBlank);
}

RepositoryError malformedCard(const QString &id, const QString &detail)
{
    return RepositoryError(RepositoryError::MalformedRow{u"cards"_s, id, detail});
}

} // namespace

QString Card::boardTitle() const
{
    if (title && !isBlankTitle(*title))
        return *title;
    return displayName;
}

bool Card::hasCustomTitle() const
{
    return boardTitle() != displayName;
}

QString cardColumns()
{
    return u"id, bookmark, display_path, display_name, status, priority, project_id,\n"
           u"deadline, sort_order, is_missing, created_at, status_changed_at,\n"
           u"last_seen_file_count, finder_tag, title, goal"_s;
}

Card cardFromRow(const SQLiteStatement &row)
{
    Card card;
    card.id = row.text(0);

    auto bookmark = row.blob(1);
    if (!bookmark)
        throw malformedCard(card.id, u"bookmark is NULL"_s);
    card.bookmark = *bookmark;

    // The two words are matched where SQLite holds them: a board reads every card on each reload.
    const auto status = row.utf8(4);
    const auto knownStatus = status ? cardStatusFromRawValue(*status) : std::nullopt;
    if (!knownStatus)
        throw malformedCard(card.id, u"unknown status '%1'"_s.arg(RowReading::textOrNull(status)));
    card.status = *knownStatus;

    const auto priority = row.utf8(5);
    const auto knownPriority = priority ? priorityFromRawValue(*priority) : std::nullopt;
    if (!knownPriority)
        throw malformedCard(card.id, u"unknown priority '%1'"_s.arg(RowReading::textOrNull(priority)));
    card.priority = *knownPriority;

    card.displayPath = row.text(2);
    card.displayName = row.text(3);
    card.projectID = row.optionalText(6);
    card.deadline = RowReading::optionalDate(row, 7);
    card.sortOrder = row.real(8);
    card.isMissing = RowReading::flag(row, 9);
    card.createdAt = RowReading::date(row, 10);
    card.statusChangedAt = RowReading::date(row, 11);
    card.lastSeenFileCount = row.optionalInt64(12);
    card.finderTag = row.optionalText(13);
    card.title = row.optionalText(14);
    card.goal = row.optionalText(15);
    return card;
}
