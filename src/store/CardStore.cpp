#include "Database.h"

#include "CardResolution.h"
#include "FolderPaths.h"
#include "FractionalIndex.h"
#include "RepositoryError.h"
#include "StoreQueries.h"

#include <QDir>

#include <algorithm>
#include <utility>
#include <variant>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

QList<SQLiteValue> cardValues(const Card &card)
{
    return {card.id,
            card.bookmark,
            card.displayPath,
            card.displayName,
            rawValue(card.status),
            rawValue(card.priority),
            card.projectID,
            StoreQueries::storedDate(card.deadline),
            card.sortOrder,
            StoreQueries::storedFlag(card.isMissing),
            card.createdAt.storedSeconds(),
            card.statusChangedAt.storedSeconds(),
            card.lastSeenFileCount,
            card.finderTag,
            card.title,
            card.goal};
}

void insertRow(SQLiteConnection &connection, const Card &card)
{
    StoreQueries::write(connection,
                        u"INSERT INTO cards ("_s + cardColumns()
                            + u")\nVALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"_s,
                        cardValues(card));
}

QList<Card> readCards(SQLiteConnection &connection, const QString &sql, const QList<SQLiteValue> &values = {})
{
    return StoreQueries::readAll(connection, sql, values, cardFromRow);
}

// Puts the card at `from[k]` at k for every k, moving each card along its cycle: a card is too
// large to move about, and a second list of them all would double what a reload holds at its peak.
void reorder(QList<Card> &cards, std::vector<qsizetype> &from)
{
    for (qsizetype start = 0; start < cards.size(); ++start) {
        if (from[size_t(start)] == start)
            continue;
        Card held = std::move(cards[start]);
        qsizetype at = start;
        while (from[size_t(at)] != start) {
            const qsizetype next = from[size_t(at)];
            cards[at] = std::move(cards[next]);
            from[size_t(at)] = at;
            at = next;
        }
        cards[at] = std::move(held);
        from[size_t(at)] = at;
    }
}

// Sorted here rather than by SQLite, whose sorter copies every whole row, bookmark and all, before
// it hands back the first; the board reads them all on every reload. Read in the order they were
// added, which the table's own order gives at no cost, so cards that share an order stay in it.
QList<Card> readAllCards(SQLiteConnection &connection)
{
    QList<Card> cards = readCards(connection, u"SELECT "_s + cardColumns() + u" FROM cards ORDER BY rowid"_s);
    // Each card's order sorted beside its place, which breaks ties.
    std::vector<std::pair<double, qsizetype>> orders;
    orders.reserve(size_t(cards.size()));
    for (qsizetype place = 0; place < cards.size(); ++place)
        orders.emplace_back(cards.at(place).sortOrder, place);
    std::ranges::sort(orders);
    std::vector<qsizetype> from;
    from.reserve(orders.size());
    for (const auto &[order, place] : orders)
        from.push_back(place);
    reorder(cards, from);
    return cards;
}

std::optional<Card> readCard(SQLiteConnection &connection, const QString &id)
{
    const QList<Card> found =
        readCards(connection, u"SELECT "_s + cardColumns() + u" FROM cards WHERE id = ?"_s, {id});
    if (found.isEmpty())
        return std::nullopt;
    return found.first();
}

// The orders of the column, ascending, without the card that moves.
QList<double> otherOrders(SQLiteConnection &connection, CardStatus status, const QString &movingID)
{
    auto statement =
        connection.prepare(u"SELECT sort_order FROM cards\nWHERE status = ? AND id <> ?\nORDER BY sort_order"_s);
    statement->bind({rawValue(status), movingID});
    QList<double> orders;
    while (statement->step())
        orders.append(statement->real(0));
    return orders;
}

// Gives the column's cards the orders 0, 1, 2, ... in their present order.
void renumberColumn(SQLiteConnection &connection, CardStatus status)
{
    const QList<QString> ids =
        connection.queryTextColumn(u"SELECT id FROM cards WHERE status = ? ORDER BY sort_order"_s, {rawValue(status)});
    const QList<double> orders = FractionalIndex::renumbered(ids.size());
    auto update = connection.prepare(u"UPDATE cards SET sort_order = ? WHERE id = ?"_s);
    for (qsizetype k = 0; k < ids.size(); ++k) {
        update->reset();
        update->bind({orders.at(k), ids.at(k)});
        update->step();
    }
}

// Whether the column must be renumbered before the card can go into the gap: there is no room
// left between its neighbours, or they hold the same order (two writers added cards at once).
bool needsRenumbering(const FractionalIndex::Failure &failure)
{
    if (std::holds_alternative<FractionalIndex::Failure::Exhausted>(failure.reason()))
        return true;
    const auto &neighbours = std::get<FractionalIndex::Failure::NeighboursOutOfOrder>(failure.reason());
    return neighbours.before == neighbours.after;
}

// The position among the others once the card itself is left out of its own column, counted from
// the order it holds now.
qint64 positionAmongOthers(SQLiteConnection &connection, CardStatus status, const QString &id, qint64 position)
{
    const qint64 before =
        connection
            .queryInt(u"SELECT count(*) FROM cards\n"
                      u"WHERE status = ? AND sort_order < (SELECT sort_order FROM cards WHERE id = ?)"_s,
                      {rawValue(status), id})
            .value_or(0);
    return before < position ? position - 1 : position;
}

// The order for the card at `position` of the column `status` as it stands, the card left out.
double placement(SQLiteConnection &connection, CardStatus status, const QString &id, qint64 position,
                 bool staysInColumn)
{
    const qint64 target = staysInColumn ? positionAmongOthers(connection, status, id, position) : position;
    return FractionalIndex::orderForPosition(otherOrders(connection, status, id), target);
}

// The order for the move. When the gap has run out of room or its neighbours are tied, the column
// is renumbered once and the card placed again; a second failure stands.
double orderAt(SQLiteConnection &connection, CardStatus status, const QString &id, qint64 position,
               bool staysInColumn)
{
    try {
        return placement(connection, status, id, position, staysInColumn);
    } catch (const FractionalIndex::Failure &failure) {
        if (!needsRenumbering(failure))
            throw;
    }
    renumberColumn(connection, status);
    return placement(connection, status, id, position, staysInColumn);
}

// The cards whose rows differ from what resolving their folders found, each with its verdict.
QList<std::pair<Card, CardResolution>> cardsToPersist(const QList<Card> &cards,
                                                      const QHash<QString, CardResolution> &resolutions)
{
    QList<std::pair<Card, CardResolution>> pairs;
    for (const Card &card : cards) {
        const auto resolution = resolutions.constFind(card.id);
        if (resolution != resolutions.cend() && resolution->needsPersisting(card))
            pairs.append({card, *resolution});
    }
    return pairs;
}

} // namespace

Task<QList<Card>> Database::allCards()
{
    return run([](SQLiteConnection &connection) { return readAllCards(connection); });
}

Task<std::optional<Card>> Database::card(QString id)
{
    return run([id](SQLiteConnection &connection) { return readCard(connection, id); });
}

Task<void> Database::insertCard(Card card)
{
    return run([this, card](SQLiteConnection &connection) {
        insertRow(connection, card);
        postChange();
    });
}

Task<Card> Database::appendCard(Card card)
{
    return run([this, card](SQLiteConnection &connection) {
        Card stored = card;
        connection.transaction([&] {
            stored.sortOrder = StoreQueries::orderAfterLast(
                connection, u"SELECT max(sort_order) FROM cards WHERE status = ?"_s, {rawValue(stored.status)});
            insertRow(connection, stored);
        });
        postChange();
        return stored;
    });
}

Task<void> Database::moveCard(QString id, CardStatus status, qint64 position, VeltoDate now)
{
    return run([this, id, status, position, now](SQLiteConnection &connection) {
        const std::optional<Card> card = readCard(connection, id);
        if (!card)
            throw RepositoryError(RepositoryError::NotFound{u"cards"_s, id});
        connection.transaction([&] {
            const bool staysInColumn = card->status == status;
            const double order = orderAt(connection, status, id, position, staysInColumn);
            // Only a move to another column restarts the clock of the card's status.
            const VeltoDate changedAt = staysInColumn ? card->statusChangedAt : now;
            StoreQueries::write(
                connection,
                u"UPDATE cards SET status = ?, sort_order = ?, status_changed_at = ?\nWHERE id = ?"_s,
                {rawValue(status), order, changedAt.storedSeconds(), id});
        });
        postChange();
    });
}

Task<void> Database::relinkCard(QString id, QUrl folder, QByteArray bookmark)
{
    return run([this, id, folder, bookmark](SQLiteConnection &connection) {
        // A folder's URL may end in a slash; the stored path, like the name after it, does not.
        const QString path = QDir::cleanPath(folder.toLocalFile());
        StoreQueries::write(connection,
                            u"UPDATE cards SET bookmark = ?, display_path = ?, display_name = ?,\n"
                            u"                 is_missing = 0\nWHERE id = ?"_s,
                            {bookmark, path, FolderPaths::lastComponent(path), id});
        postChange();
    });
}

Task<void> Database::setPriority(Priority priority, QString id)
{
    return run([this, priority, id](SQLiteConnection &connection) {
        StoreQueries::write(connection, u"UPDATE cards SET priority = ? WHERE id = ?"_s, {rawValue(priority), id});
        postChange();
    });
}

Task<void> Database::setProject(std::optional<QString> projectID, QString id)
{
    return run([this, projectID, id](SQLiteConnection &connection) {
        StoreQueries::write(connection, u"UPDATE cards SET project_id = ? WHERE id = ?"_s, {projectID, id});
        postChange();
    });
}

Task<void> Database::setDeadline(std::optional<VeltoDate> deadline, QString id)
{
    return run([this, deadline, id](SQLiteConnection &connection) {
        StoreQueries::write(connection, u"UPDATE cards SET deadline = ? WHERE id = ?"_s,
                            {StoreQueries::storedDate(deadline), id});
        postChange();
    });
}

Task<void> Database::setCardText(CardTextColumn column, std::optional<QString> value, QString id)
{
    return run([this, column, value, id](SQLiteConnection &connection) {
        const QString trimmed = value.value_or(QString()).trimmed();
        const SQLiteValue stored = trimmed.isEmpty() ? SQLiteValue() : SQLiteValue(trimmed);
        StoreQueries::write(connection, u"UPDATE cards SET %1 = ? WHERE id = ?"_s.arg(columnName(column)),
                            {stored, id});
        postChange();
    });
}

Task<void> Database::setLastSeenFileCount(qint64 count, QString id)
{
    return run([count, id](SQLiteConnection &connection) {
        StoreQueries::write(connection, u"UPDATE cards SET last_seen_file_count = ? WHERE id = ?"_s, {count, id});
    });
}

Task<void> Database::deleteCard(QString id)
{
    // The schema's cascades take the card's checklist, tag links and sessions with it.
    return run([this, id](SQLiteConnection &connection) {
        StoreQueries::write(connection, u"DELETE FROM cards WHERE id = ?"_s, {id});
        postChange();
    });
}

Task<void> Database::applyResolutions(QHash<QString, CardResolution> resolutions)
{
    return run([this, resolutions](SQLiteConnection &connection) {
        // Nothing to write must cost no transaction and wake no other process: the board runs this
        // on every load.
        const auto pairs = cardsToPersist(readAllCards(connection), resolutions);
        if (pairs.isEmpty())
            return;
        connection.transaction([&] {
            auto update = connection.prepare(u"UPDATE cards SET bookmark = ?, display_path = ?,\n"
                                             u"                 display_name = ?, is_missing = ?\nWHERE id = ?"_s);
            for (const auto &[card, resolution] : pairs) {
                update->reset();
                update->bind({resolution.refreshedBookmark.value_or(card.bookmark), resolution.displayPath,
                              resolution.displayName,
                              StoreQueries::storedFlag(resolution.availability
                                                       == CardResolution::Availability::missing),
                              card.id});
                update->step();
            }
        });
        postChange();
    });
}
