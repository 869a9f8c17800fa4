#include "BoardModel.h"

#include "AssignIfChanged.h"
#include "DeadlineRules.h"

#include <QGuiApplication>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

using Availability = CardResolution::Availability;

} // namespace

BoardModel::BoardModel(VeltoServices services, TimerModel *timer, std::shared_ptr<FolderPicker> picker,
                       Reveal reveal, QObject *parent)
    : QObject(parent), m_services(std::move(services)), m_timer(timer),
      m_tagMirror(std::make_unique<FinderTagMirror>(m_services)), m_picker(std::move(picker)),
      m_reveal(std::move(reveal))
{
    for (auto changed : {&BoardModel::cardsChanged, &BoardModel::projectsChanged, &BoardModel::tagsChanged,
                         &BoardModel::tagIDsByCardChanged, &BoardModel::checklistProgressChanged,
                         &BoardModel::resolutionsChanged, &BoardModel::workingFilesChanged, &BoardModel::filterChanged,
                         &BoardModel::groupByProjectChanged, &BoardModel::sortByPriorityChanged})
        connect(this, changed, this, &BoardModel::presentationChanged);
    // What is due soon is counted in days, so a new day changes the list without a reload.
    connect(&m_day, &LocalDay::todayChanged, this, &BoardModel::presentationChanged);
    // Coming back to the application is when the user may have put a vanished folder back.
    if (qGuiApp) {
        connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
            if (state == Qt::ApplicationActive)
                m_failedSearches->clear();
        });
    }
}

BoardModel::~BoardModel() = default;

// Setters: each compares first, so an equal value notifies nobody.

void BoardModel::setCards(const QList<Card> &cards)
{
    if (!assignIfChanged(m_cards, cards))
        return;
    m_faces.keepOnly(m_cards);
    emit cardsChanged();
}

void BoardModel::setProjects(const QList<Project> &projects)
{
    if (assignIfChanged(m_projects, projects))
        emit projectsChanged();
}

void BoardModel::setTags(const QList<Tag> &tags)
{
    if (assignIfChanged(m_tags, tags))
        emit tagsChanged();
}

void BoardModel::setTagIDsByCard(const QHash<QString, QSet<QString>> &links)
{
    if (assignIfChanged(m_tagIDsByCard, links))
        emit tagIDsByCardChanged();
}

void BoardModel::setChecklistProgress(const QHash<QString, ChecklistProgress> &progress)
{
    if (assignIfChanged(m_checklistProgress, progress))
        emit checklistProgressChanged();
}

void BoardModel::setResolutions(const QHash<QString, CardResolution> &resolutions)
{
    if (assignIfChanged(m_resolutions, resolutions))
        emit resolutionsChanged();
}

void BoardModel::setWorkingFiles(const QHash<QString, WorkingFileRead> &files)
{
    if (assignIfChanged(m_workingFiles, files))
        emit workingFilesChanged();
}

void BoardModel::setIsLoading(bool loading)
{
    if (assignIfChanged(m_isLoading, loading))
        emit isLoadingChanged();
}

void BoardModel::setErrorMessage(const std::optional<QString> &message)
{
    if (assignIfChanged(m_errorMessage, message))
        emit errorMessageChanged();
}

void BoardModel::reportFailure(const std::exception &failure)
{
    setErrorMessage(QString::fromUtf8(failure.what()));
}

void BoardModel::setFilter(const BoardFilter &filter)
{
    if (assignIfChanged(m_filter, filter))
        emit filterChanged();
}

void BoardModel::setGroupByProject(bool group)
{
    if (assignIfChanged(m_groupByProject, group))
        emit groupByProjectChanged();
}

void BoardModel::setSortByPriority(bool sort)
{
    if (assignIfChanged(m_sortByPriority, sort))
        emit sortByPriorityChanged();
}

void BoardModel::setSelectedCardID(const std::optional<QString> &id)
{
    if (assignIfChanged(m_selectedCardID, id))
        emit selectedCardIDChanged();
}

void BoardModel::setSelectedCardIDText(const QString &id)
{
    setSelectedCardID(id.isEmpty() ? std::nullopt : std::optional(id));
}

void BoardModel::setPendingFileDrops(const QList<PendingFileDrop> &drops)
{
    if (assignIfChanged(m_pendingFileDrops, drops))
        emit pendingFileDropsChanged();
}

void BoardModel::setMode(BoardMode mode)
{
    if (assignIfChanged(m_mode, mode))
        emit modeChanged();
}

void BoardModel::setIsManagingTaxonomy(bool managing)
{
    if (assignIfChanged(m_isManagingTaxonomy, managing))
        emit isManagingTaxonomyChanged();
}

void BoardModel::showMessage(const QString &message)
{
    setErrorMessage(message);
}

void BoardModel::dismissError()
{
    setErrorMessage(std::nullopt);
}

// Derived state.

std::optional<Card> BoardModel::selectedCard() const
{
    return m_selectedCardID ? cardWithID(*m_selectedCardID) : std::nullopt;
}

std::optional<Card> BoardModel::cardWithID(const QString &id) const
{
    const auto found = std::ranges::find(m_cards, id, &Card::id);
    return found == m_cards.cend() ? std::nullopt : std::optional(*found);
}

QList<const Card *> BoardModel::orderedColumn(CardStatus status, const ProjectFilter &lane, bool filtered) const
{
    // Pointers are sorted, not cards: a column of a large board is sorted on every reload.
    QList<const Card *> column;
    for (const Card &card : m_cards) {
        if (card.status == status && lane.admits(card.projectID)
            && (!filtered || m_filter.matches(card, m_tagIDsByCard.value(card.id))))
            column.append(&card);
    }
    const bool byPriority = filtered && m_sortByPriority;
    std::ranges::stable_sort(column, [byPriority](const Card *a, const Card *b) {
        if (byPriority && a->priority != b->priority)
            return rank(a->priority) < rank(b->priority);
        return a->sortOrder < b->sortOrder;
    });
    return column;
}

QList<Card> BoardModel::columnCards(CardStatus status, const ProjectFilter &lane) const
{
    const QList<const Card *> ordered = orderedColumn(status, lane, true);
    QList<Card> column;
    column.reserve(ordered.size());
    for (const Card *card : ordered)
        column.append(*card);
    return column;
}

QList<Swimlane> BoardModel::swimlanes() const
{
    QSet<QString> projectsShown;
    bool anyUnassigned = false;
    for (const Card &card : m_cards) {
        if (!m_filter.matches(card, m_tagIDsByCard.value(card.id)))
            continue;
        if (card.projectID)
            projectsShown.insert(*card.projectID);
        else
            anyUnassigned = true;
    }
    QList<Swimlane> lanes;
    for (const Project &project : m_projects) {
        if (projectsShown.contains(project.id))
            lanes.append(Swimlane{project});
    }
    if (anyUnassigned)
        lanes.append(Swimlane{});
    return lanes;
}

QList<Card> BoardModel::dueSoonCards(VeltoDate now, const QTimeZone &zone) const
{
    // Hidden columns stay hidden on the board only; every other facet of the filter applies.
    BoardFilter filter = m_filter;
    filter.visibleStatuses = {allCardStatuses.begin(), allCardStatuses.end()};

    QList<Card> due;
    for (const Card &card : m_cards) {
        if (!card.deadline || card.status == CardStatus::complete)
            continue;
        if (DeadlineRules::daysUntil(*card.deadline, now, zone) >= 8)
            continue;
        if (filter.matches(card, m_tagIDsByCard.value(card.id)))
            due.append(card);
    }
    std::ranges::stable_sort(due, {}, [](const Card &card) { return *card.deadline; });
    return due;
}

std::optional<Project> BoardModel::project(const Card &card) const
{
    if (!card.projectID)
        return std::nullopt;
    const auto found = std::ranges::find(m_projects, *card.projectID, &Project::id);
    return found == m_projects.cend() ? std::nullopt : std::optional(*found);
}

QList<Tag> BoardModel::tags(const Card &card) const
{
    const QSet<QString> ids = m_tagIDsByCard.value(card.id);
    QList<Tag> carried;
    for (const Tag &tag : m_tags) {
        if (ids.contains(tag.id))
            carried.append(tag);
    }
    return carried;
}

std::optional<QUrl> BoardModel::folderURL(const Card &card) const
{
    const auto resolution = m_resolutions.constFind(card.id);
    if (resolution == m_resolutions.cend() || resolution->availability != Availability::available)
        return std::nullopt;
    return resolution->locationURL;
}

bool BoardModel::needsLocate(const Card &card) const
{
    if (card.isMissing)
        return true;
    const auto resolution = m_resolutions.constFind(card.id);
    return resolution != m_resolutions.cend() && resolution->availability == Availability::unreachable;
}

ProjectFilter BoardModel::lane(const Card &card) const
{
    if (!m_groupByProject)
        return {};
    if (card.projectID)
        return {ProjectFilter::Project{*card.projectID}};
    return {ProjectFilter::Unassigned{}};
}

qint64 BoardModel::absolutePosition(qint64 visible, CardStatus status, const ProjectFilter &lane) const
{
    const QList<const Card *> column = orderedColumn(status, lane, true);
    const QList<const Card *> all = orderedColumn(status, {}, false);
    if (visible >= column.size())
        return all.size();
    // Before the card shown at `visible`, so cards hidden around it keep their places.
    const QString &anchor = column.at(visible)->id;
    const auto found = std::ranges::find_if(all, [&anchor](const Card *card) { return card->id == anchor; });
    return found - all.begin();
}
