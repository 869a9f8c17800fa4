#include "BoardModel.h"

#include "Identifier.h"

#include <algorithm>
#include <exception>
#include <utility>

Task<> BoardModel::reloadAfter(Task<> write)
{
    QPointer<BoardModel> self(this);
    try {
        co_await write;
    } catch (const std::exception &failure) {
        if (self)
            reportFailure(failure);
        co_return;
    }
    if (self)
        co_await reload();
}

Task<> BoardModel::moveCard(QString id, CardStatus status, qint64 position)
{
    return reloadAfter(m_services.database->moveCard(std::move(id), status, position));
}

Task<> BoardModel::moveInColumn(Card card, ColumnMove move)
{
    // Sorted by priority, the order on screen is not the stored one, so a hand move means nothing.
    if (m_sortByPriority)
        co_return;
    const ProjectFilter lane = this->lane(card);
    const QList<Card> column = columnCards(card.status, lane);
    const auto found = std::ranges::find(column, card.id, &Card::id);
    if (found == column.cend())
        co_return;
    const qint64 index = found - column.cbegin();
    const qint64 last = column.size() - 1;

    qint64 target = 0;
    switch (move) {
    case ColumnMove::top:
    case ColumnMove::up:
        if (index == 0)
            co_return;
        target = move == ColumnMove::top ? 0 : index - 1;
        break;
    case ColumnMove::down:
    case ColumnMove::bottom:
        if (index == last)
            co_return;
        // A position is the place before the card there, counting the moving card itself.
        target = move == ColumnMove::down ? index + 2 : column.size();
        break;
    }
    co_await moveCard(card.id, card.status, absolutePosition(target, card.status, lane));
}

Task<> BoardModel::setStatus(CardStatus status, Card card)
{
    if (status == card.status)
        co_return;
    // A new status always lands at the top of its column.
    co_await moveCard(card.id, status, 0);
}

Task<> BoardModel::acceptDrop(DropContents contents, CardStatus status, qint64 visible, ProjectFilter lane)
{
    QPointer<BoardModel> self(this);
    if (contents.cardIDs.isEmpty() && contents.fileURLs.isEmpty())
        co_return;
    // Once, before anything moves: cards dropped together land in order before the same anchor.
    const qint64 position = absolutePosition(visible, status, lane);
    for (const QString &id : std::as_const(contents.cardIDs)) {
        co_await moveCard(id, status, position);
        if (!self)
            co_return;
        // A drop into a lane gives the card that lane's project, whether or not the move worked.
        if (std::holds_alternative<ProjectFilter::Unassigned>(lane.value))
            co_await setProject(std::nullopt, id);
        else if (const auto *project = std::get_if<ProjectFilter::Project>(&lane.value))
            co_await setProject(project->id, id);
        if (!self)
            co_return;
    }
    if (!contents.fileURLs.isEmpty())
        co_await addDropped(contents.fileURLs);
}

Task<> BoardModel::setPriority(Priority priority, Card card)
{
    return reloadAfter(m_services.database->setPriority(priority, card.id));
}

Task<> BoardModel::setProject(std::optional<QString> projectID, QString cardID)
{
    return reloadAfter(m_services.database->setProject(std::move(projectID), std::move(cardID)));
}

Task<> BoardModel::setDeadline(std::optional<VeltoDate> deadline, Card card)
{
    return reloadAfter(m_services.database->setDeadline(deadline, card.id));
}

Task<> BoardModel::setTitle(std::optional<QString> title, Card card)
{
    return reloadAfter(m_services.database->setCardText(CardTextColumn::title, std::move(title), card.id));
}

Task<> BoardModel::setGoal(std::optional<QString> goal, Card card)
{
    return reloadAfter(m_services.database->setCardText(CardTextColumn::goal, std::move(goal), card.id));
}

Task<> BoardModel::createProject(QString name, QString color)
{
    return reloadAfter(m_services.database->insertProject(Project{newIdentifier(), std::move(name), std::move(color)}));
}

Task<> BoardModel::updateProject(Project project)
{
    return reloadAfter(m_services.database->updateProject(std::move(project)));
}

Task<> BoardModel::deleteProject(QString id)
{
    Task<> deletion = reloadAfter(m_services.database->deleteProject(id));
    // Whether or not the delete worked, the board must not stay filtered on a project that may be gone.
    if (m_filter.project == ProjectFilter{ProjectFilter::Project{id}}) {
        BoardFilter filter = m_filter;
        filter.project = {};
        setFilter(filter);
    }
    co_await deletion;
}

Task<> BoardModel::addTag(QString name, Card card)
{
    QPointer<BoardModel> self(this);
    const auto database = m_services.database;
    try {
        const Tag tag = co_await database->findOrCreateTag(name);
        co_await database->attachTag(card.id, tag.id);
    } catch (const std::exception &failure) {
        if (self)
            reportFailure(failure);
        co_return;
    }
    if (self)
        co_await reload();
}

Task<> BoardModel::removeTag(QString tagID, QString cardID)
{
    return reloadAfter(m_services.database->detachTag(std::move(cardID), std::move(tagID)));
}

Task<> BoardModel::recolorTag(QString tagID, QString color)
{
    return reloadAfter(m_services.database->recolorTag(std::move(color), std::move(tagID)));
}

Task<> BoardModel::deleteTag(QString id)
{
    Task<> deletion = reloadAfter(m_services.database->deleteTag(id));
    // As with projects: no filter on a tag that may be gone.
    if (m_filter.tagIDs.contains(id)) {
        BoardFilter filter = m_filter;
        filter.tagIDs.remove(id);
        setFilter(filter);
    }
    co_await deletion;
}

Task<> BoardModel::setTagMirrorEnabled(bool enabled)
{
    QPointer<BoardModel> self(this);
    co_await m_tagMirror->setEnabled(enabled, m_cards, m_resolutions);
    if (self)
        co_await reload();
}
