// The part of BoardModel that the QML views use: the state as maps and indices, and requests that
// start an operation and return at once.

#include "BoardModel.h"

#include "CardFaces.h"
#include "FilterChip.h"
#include "PlatformText.h"
#include "VocabularyIndex.h"

#include <QMimeData>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

using VocabularyIndex::caseAt;
using VocabularyIndex::indexOf;

} // namespace

void BoardModel::setSearchText(const QString &text)
{
    BoardFilter filter = m_filter;
    filter.searchText = text;
    setFilter(filter);
}

QString BoardModel::projectFilterKind() const
{
    if (std::holds_alternative<ProjectFilter::Unassigned>(m_filter.project.value))
        return u"unassigned"_s;
    if (std::holds_alternative<ProjectFilter::Project>(m_filter.project.value))
        return u"project"_s;
    return u"any"_s;
}

QString BoardModel::projectFilterID() const
{
    const auto *project = std::get_if<ProjectFilter::Project>(&m_filter.project.value);
    return project ? project->id : QString();
}

QVariantList BoardModel::selectedPriorities() const
{
    QVariantList indices;
    for (Priority priority : m_filter.priorities)
        indices.append(indexOf(allPriorities, priority));
    return indices;
}

QStringList BoardModel::selectedTagIDs() const
{
    QStringList ids(m_filter.tagIDs.cbegin(), m_filter.tagIDs.cend());
    ids.sort();
    return ids;
}

QVariantList BoardModel::visibleStatusList() const
{
    QVariantList indices;
    for (CardStatus status : m_filter.visibleStatuses)
        indices.append(indexOf(allCardStatuses, status));
    return indices;
}

QVariantList BoardModel::projectList() const
{
    QVariantList list;
    for (const Project &project : m_projects)
        list.append(colouredRecord(project.id, project.name, project.color));
    return list;
}

QVariantList BoardModel::tagList() const
{
    QVariantList list;
    for (const Tag &tag : m_tags)
        list.append(colouredRecord(tag.id, tag.name, tag.color));
    return list;
}

QVariantList BoardModel::swimlaneList() const
{
    QVariantList list;
    for (const Swimlane &lane : swimlanes()) {
        QVariantMap entry{{u"identity"_s, lane.identity()}};
        entry.insert(u"laneKind"_s, lane.project ? u"project"_s : u"unassigned"_s);
        entry.insert(u"projectID"_s, lane.project ? lane.project->id : QString());
        entry.insert(u"name"_s, lane.project ? lane.project->name : u"No Project"_s);
        entry.insert(u"color"_s, lane.project ? lane.project->color : QString());
        list.append(entry);
    }
    return list;
}

QVariantList BoardModel::chipList() const
{
    QVariantList list;
    for (const FilterChip &chip : FilterChip::activeChips(m_filter, m_sortByPriority, m_projects, m_tags))
        list.append(QVariantMap{{u"id"_s, chip.id}, {u"label"_s, chip.label},
                                {u"colorHex"_s, chip.colorHex.value_or(QString())}});
    return list;
}

QVariantList BoardModel::dueSoonList() const
{
    QVariantList list;
    for (const Card &card : dueSoonCards(VeltoDate::now()))
        list.append(face(card));
    return list;
}

QString BoardModel::pendingDropTitle() const
{
    if (m_pendingFileDrops.isEmpty())
        return {};
    if (m_pendingFileDrops.size() == 1)
        return u"Add “%1” to the board?"_s.arg(m_pendingFileDrops.first().folder.fileName());
    return u"Add %1 folders to the board?"_s.arg(m_pendingFileDrops.size());
}

QString BoardModel::pendingDropMessage()
{
    return PlatformText::pendingFileDropMessage();
}

QVariantMap BoardModel::face(const Card &card) const
{
    const auto found = m_resolutions.constFind(card.id);
    const CardResolution *resolution = found != m_resolutions.cend() ? &*found : nullptr;
    // A file that could not be read counts no tasks; the detail pane says why.
    const WorkingFile working = m_workingFiles.value(card.id).file;
    return m_faces.faceFor(CardFaceInputs{
        .card = card,
        .project = project(card),
        .tags = tags(card),
        .progress = m_checklistProgress.value(card.id),
        .workingDone = working.doneCount(),
        .workingTotal = working.tasks.size(),
        .availability = resolution ? std::optional(resolution->availability) : std::nullopt,
        .failure = resolution ? resolution->failure.value_or(QString()) : QString(),
        .needsLocate = needsLocate(card),
    });
}

QVariantMap BoardModel::cardFace(const QString &cardID) const
{
    const auto card = cardWithID(cardID);
    return card ? face(*card) : QVariantMap();
}

ProjectFilter BoardModel::laneFilter(const QString &kind, const QString &projectID)
{
    if (kind == u"unassigned"_s)
        return {ProjectFilter::Unassigned{}};
    if (kind == u"project"_s)
        return {ProjectFilter::Project{projectID}};
    return {};
}

void BoardModel::setProjectFilter(const QString &kind, const QString &projectID)
{
    BoardFilter filter = m_filter;
    filter.project = laneFilter(kind, projectID);
    setFilter(filter);
}

void BoardModel::setPriorityShown(int index, bool shown)
{
    const auto priority = caseAt<Priority>(allPriorities, index);
    if (!priority)
        return;
    BoardFilter filter = m_filter;
    if (shown)
        filter.priorities.insert(*priority);
    else
        filter.priorities.erase(*priority);
    setFilter(filter);
}

void BoardModel::setTagShown(const QString &tagID, bool shown)
{
    BoardFilter filter = m_filter;
    if (shown)
        filter.tagIDs.insert(tagID);
    else
        filter.tagIDs.remove(tagID);
    setFilter(filter);
}

void BoardModel::setStatusVisible(int index, bool visible)
{
    const auto status = caseAt<CardStatus>(allCardStatuses, index);
    if (!status)
        return;
    BoardFilter filter = m_filter;
    if (visible)
        filter.visibleStatuses.insert(*status);
    else
        filter.visibleStatuses.erase(*status);
    setFilter(filter);
}

void BoardModel::clearChip(const QString &id)
{
    if (id == u"sort"_s)
        setSortByPriority(false);
    else
        setFilter(FilterChip::clearing(id, m_filter));
}

void BoardModel::clearAllFilters()
{
    // The grouping and the mode are the user's way of looking, not restrictions: they stay.
    setFilter({});
    setSortByPriority(false);
}

void BoardModel::cancelPendingFileDrops()
{
    setPendingFileDrops({});
}

void BoardModel::requestReload()
{
    // Asked for from outside the model's own operations, so folders searched for in vain are
    // looked for again.
    m_failedSearches->clear();
    reload();
}

void BoardModel::requestAddFoldersFromPanel()
{
    addFoldersFromPanel();
}

void BoardModel::requestResolvePendingFileDrops()
{
    resolvePendingFileDrops();
}

void BoardModel::requestOpenInFinder(const QString &cardID)
{
    if (const auto card = cardWithID(cardID))
        openInFinder(*card);
}

void BoardModel::requestLocate(const QString &cardID)
{
    if (const auto card = cardWithID(cardID))
        locate(*card);
}

void BoardModel::requestRemoveCard(const QString &cardID)
{
    if (const auto card = cardWithID(cardID))
        removeCard(*card);
}

void BoardModel::requestToggleTimer(const QString &cardID)
{
    const auto card = cardWithID(cardID);
    if (!card || !m_timer)
        return;
    if (m_timer->isRunning(*card))
        m_timer->stop(true);
    else
        m_timer->start(*card);
}

void BoardModel::requestMoveInColumn(const QString &cardID, int move)
{
    constexpr std::array moves{ColumnMove::top, ColumnMove::up, ColumnMove::down, ColumnMove::bottom};
    const auto card = cardWithID(cardID);
    const auto chosen = caseAt<ColumnMove>(moves, move);
    if (card && chosen)
        moveInColumn(*card, *chosen);
}

void BoardModel::requestSetStatus(const QString &cardID, int status)
{
    const auto card = cardWithID(cardID);
    const auto chosen = caseAt<CardStatus>(allCardStatuses, status);
    if (card && chosen)
        setStatus(*chosen, *card);
}

void BoardModel::requestSetPriority(const QString &cardID, int priority)
{
    const auto card = cardWithID(cardID);
    const auto chosen = caseAt<Priority>(allPriorities, priority);
    if (card && chosen)
        setPriority(*chosen, *card);
}

void BoardModel::requestSetProject(const QString &cardID, const QString &projectID)
{
    setProject(projectID.isEmpty() ? std::nullopt : std::optional(projectID), cardID);
}

void BoardModel::requestAddTag(const QString &cardID, const QString &name)
{
    if (const auto card = cardWithID(cardID))
        addTag(name, *card);
}

void BoardModel::requestRemoveTag(const QString &cardID, const QString &tagID)
{
    removeTag(tagID, cardID);
}

void BoardModel::requestCreateProject(const QString &name, const QString &color)
{
    createProject(name, color);
}

void BoardModel::requestUpdateProject(const QString &id, const QString &name, const QString &color)
{
    updateProject(Project{id, name, color});
}

void BoardModel::requestDeleteProject(const QString &id)
{
    deleteProject(id);
}

void BoardModel::requestRecolorTag(const QString &id, const QString &color)
{
    recolorTag(id, color);
}

void BoardModel::requestDeleteTag(const QString &id)
{
    deleteTag(id);
}

void BoardModel::requestCardDrop(const QString &cardID, int status, int position, const QString &laneKind,
                                 const QString &laneProjectID)
{
    const auto column = caseAt<CardStatus>(allCardStatuses, status);
    if (!column)
        return;
    // Read by the same rules as any drop, so that an empty or garbled id is dropped the same way.
    QMimeData data;
    data.setData(CardDragging::cardType(), cardID.toUtf8());
    acceptDrop(CardDragging::readDrop(data, true), *column, position, laneFilter(laneKind, laneProjectID));
}

void BoardModel::requestDrop(const QByteArray &cardData, bool offersCard, const QList<QUrl> &urls, int status,
                             int position, const QString &laneKind, const QString &laneProjectID)
{
    const auto column = caseAt<CardStatus>(allCardStatuses, status);
    if (!column)
        return;
    QMimeData data;
    if (offersCard)
        data.setData(CardDragging::cardType(), cardData);
    data.setUrls(urls);
    acceptDrop(CardDragging::readDrop(data, false), *column, position, laneFilter(laneKind, laneProjectID));
}
