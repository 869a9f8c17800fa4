#include "BoardModel.h"

#include "AssignIfChanged.h"
#include "DeadlineRules.h"
#include "FolderPaths.h"
#include "FolderTagAttribute.h"
#include "Identifier.h"
#include "Offload.h"
#include "PlatformText.h"
#include "SecurityScopedBookmark.h"

#include <QDir>
#include <QFileInfo>
#include <QMap>

#include <algorithm>
#include <coroutine>
#include <exception>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

using Availability = CardResolution::Availability;

QString describe(const std::exception &failure)
{
    return QString::fromUtf8(failure.what());
}

// A folder as the board records it: a local path without a trailing slash or dot segments.
QUrl standardized(const QUrl &url)
{
    return QUrl::fromLocalFile(QDir::cleanPath(url.toLocalFile()));
}

QString lastComponent(const QUrl &url)
{
    return FolderPaths::lastComponent(url.toLocalFile());
}

// The verdicts that differ from the rows they were made from.
QHash<QString, CardResolution> resolutionsToPersist(const QList<Card> &cards,
                                                   const QHash<QString, CardResolution> &resolutions)
{
    QHash<QString, CardResolution> changed;
    for (const Card &card : cards) {
        const auto resolution = resolutions.constFind(card.id);
        if (resolution != resolutions.cend() && resolution->needsPersisting(card))
            changed.insert(card.id, *resolution);
    }
    return changed;
}

} // namespace

// One reload's place in the line of reloads: the next one waits here until this one has ended.
struct BoardModel::LoadChain {
    bool done = false;
    std::coroutine_handle<> next;

    void finish()
    {
        done = true;
        if (auto waiting = std::exchange(next, {}))
            waiting.resume();
    }

    struct Ended {
        std::shared_ptr<LoadChain> chain;
        bool await_ready() const noexcept { return !chain || chain->done; }
        void await_suspend(std::coroutine_handle<> waiting) noexcept { chain->next = waiting; }
        void await_resume() const noexcept {}
    };
};

BoardModel::BoardModel(VeltoServices services, TimerModel *timer, std::shared_ptr<FolderPicker> picker,
                       Reveal reveal, QObject *parent)
    : QObject(parent), m_services(std::move(services)), m_timer(timer),
      m_tagMirror(std::make_unique<FinderTagMirror>(m_services)), m_picker(std::move(picker)),
      m_reveal(std::move(reveal))
{
    for (auto changed : {&BoardModel::cardsChanged, &BoardModel::projectsChanged, &BoardModel::tagsChanged,
                         &BoardModel::tagIDsByCardChanged, &BoardModel::checklistProgressChanged,
                         &BoardModel::resolutionsChanged, &BoardModel::filterChanged,
                         &BoardModel::groupByProjectChanged, &BoardModel::sortByPriorityChanged})
        connect(this, changed, this, &BoardModel::presentationChanged);
    // What is due soon is counted in days, so a new day changes the list without a reload.
    connect(&m_day, &LocalDay::todayChanged, this, &BoardModel::presentationChanged);
}

BoardModel::~BoardModel() = default;

// Setters: each compares first, so an equal value notifies nobody.

void BoardModel::setCards(const QList<Card> &cards)
{
    if (assignIfChanged(m_cards, cards))
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
    setErrorMessage(describe(failure));
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

QList<Card> BoardModel::columnCards(CardStatus status, const ProjectFilter &lane) const
{
    QList<Card> column;
    for (const Card &card : m_cards) {
        if (card.status == status && lane.admits(card.projectID)
            && m_filter.matches(card, m_tagIDsByCard.value(card.id)))
            column.append(card);
    }
    const bool byPriority = m_sortByPriority;
    std::ranges::stable_sort(column, [byPriority](const Card &a, const Card &b) {
        if (byPriority && a.priority != b.priority)
            return rank(a.priority) < rank(b.priority);
        return a.sortOrder < b.sortOrder;
    });
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
    const QList<Card> column = columnCards(status, lane);
    QList<Card> all;
    for (const Card &card : m_cards) {
        if (card.status == status)
            all.append(card);
    }
    std::ranges::stable_sort(all, {}, &Card::sortOrder);

    if (visible >= column.size())
        return all.size();
    // Before the card shown at `visible`, so cards hidden around it keep their places.
    const QString &anchor = column.at(visible).id;
    const auto found = std::ranges::find(all, anchor, &Card::id);
    return found - all.begin();
}

// Loading.

Task<> BoardModel::reload()
{
    auto previous = std::exchange(m_loadChain, std::make_shared<LoadChain>());
    co_await runAfter(QPointer<BoardModel>(this), std::move(previous), m_loadChain);
}

Task<> BoardModel::runAfter(QPointer<BoardModel> model, std::shared_ptr<LoadChain> previous,
                            std::shared_ptr<LoadChain> current)
{
    co_await LoadChain::Ended{std::move(previous)};
    if (model)
        co_await model->load();
    current->finish();
}

Task<> BoardModel::load()
{
    QPointer<BoardModel> self(this);
    setIsLoading(true);
    if (!co_await loadSources(self))
        co_return;
    // Last, because the presentation may have changed the selection while the load was away.
    if (m_selectedCardID && !selectedCard())
        setSelectedCardID(std::nullopt);
    setIsLoading(false);
}

Task<bool> BoardModel::loadSources(const QPointer<BoardModel> &self)
{
    const auto database = m_services.database;
    try {
        // Each source is published as soon as it is read, so new cards show while the rest loads.
        const QList<Card> cards = co_await database->allCards();
        if (!self)
            co_return false;
        auto resolveAll = [cards] { return CardResolution::resolveAll(cards); };
        const QHash<QString, CardResolution> resolutions = co_await onThreadPool(resolveAll);
        if (!self)
            co_return false;
        setCards(cards);
        setResolutions(resolutions);

        const QList<Project> projects = co_await database->allProjects();
        if (!self)
            co_return false;
        setProjects(projects);
        const QList<Tag> tags = co_await database->allTags();
        if (!self)
            co_return false;
        setTags(tags);
        const auto links = co_await database->tagLinks();
        if (!self)
            co_return false;
        setTagIDsByCard(links);
        const auto progress = co_await database->checklistProgress();
        if (!self)
            co_return false;
        setChecklistProgress(progress);
        // Only a clean read of every source clears the banner.
        setErrorMessage(std::nullopt);

        // Renamed and moved folders, and folders gone missing, reach their rows here. A board whose
        // folders all stayed put reads its rows once: the store would find nothing to write, and
        // reading them again would give what was just published.
        QList<Card> updated = cards;
        if (const auto changed = resolutionsToPersist(cards, resolutions); !changed.isEmpty()) {
            co_await database->applyResolutions(changed);
            if (!self)
                co_return false;
            updated = co_await database->allCards();
            if (!self)
                co_return false;
            setCards(updated);
        }

        const bool tagged = co_await m_tagMirror->sync(updated, resolutions, false);
        if (!self)
            co_return false;
        if (tagged) {
            const QList<Card> retagged = co_await database->allCards();
            if (!self)
                co_return false;
            setCards(retagged);
        }
    } catch (const std::exception &failure) {
        // What was published stays; the board shows it with the failure above.
        if (!self)
            co_return false;
        reportFailure(failure);
    }
    co_return true;
}

// Folders in and out.

Task<> BoardModel::addFoldersFromPanel()
{
    QPointer<BoardModel> self(this);
    const auto picker = m_picker;
    const FolderPickerRequest request{u"Add"_s, u"Choose folders to track on the Velto board."_s, std::nullopt, true};
    const QList<QUrl> chosen = co_await picker->choose(request);
    if (!self || chosen.isEmpty())
        co_return;
    co_await addFolders(chosen);
}

Task<> BoardModel::addFolders(QList<QUrl> urls)
{
    QPointer<BoardModel> self(this);
    QStringList failures;
    std::optional<QString> firstCardID;
    bool needsReload = false;
    for (const QUrl &url : std::as_const(urls)) {
        co_await addOneFolder(standardized(url), failures, firstCardID, needsReload);
        if (!self)
            co_return;
    }

    // The reload first: a clean load clears the banner, which must then show these failures.
    if (needsReload) {
        co_await reload();
        if (!self)
            co_return;
    }
    if (failures.size() == 1)
        setErrorMessage(failures.first());
    else if (failures.size() > 1)
        setErrorMessage(u"%1 folders could not be added:\n"_s.arg(failures.size()) + failures.join(u'\n'));
    if (firstCardID)
        setSelectedCardID(firstCardID);
}

Task<> BoardModel::addOneFolder(QUrl url, QStringList &failures, std::optional<QString> &firstCardID,
                                bool &needsReload)
{
    QPointer<BoardModel> self(this);
    const auto database = m_services.database;
    // The passes see the cards of the last load: a batch is reloaded only after its last folder.
    auto classify = [url, cards = m_cards, resolutions = m_resolutions] {
        return FolderMatch::classify(url, cards, resolutions);
    };
    const FolderMatch match = co_await onThreadPool(classify);
    if (!self)
        co_return;

    if (const auto *tracked = std::get_if<FolderMatch::AlreadyTracked>(&match.value)) {
        if (!firstCardID)
            firstCardID = tracked->card.id;
        co_return;
    }
    try {
        if (const auto *stranded = std::get_if<FolderMatch::StrandedCardAtSamePath>(&match.value)) {
            // The card keeps its id, history, checklist and time.
            const QByteArray bookmark = SecurityScopedBookmark::create(url);
            co_await database->relinkCard(stranded->card.id, url, bookmark);
            if (!firstCardID)
                firstCardID = stranded->card.id;
        } else {
            co_await insertNewCard(url, firstCardID);
        }
        needsReload = true;
    } catch (const std::exception &failure) {
        failures.append(lastComponent(url) + u": "_s + describe(failure));
    }
}

Task<> BoardModel::insertNewCard(const QUrl &url, std::optional<QString> &firstCardID)
{
    const auto database = m_services.database;
    Card card;
    card.bookmark = SecurityScopedBookmark::create(url);
    card.id = newIdentifier();
    card.displayPath = url.toLocalFile();
    card.displayName = lastComponent(url);
    card.status = CardStatus::notStarted;
    card.priority = Priority::later;
    card.createdAt = VeltoDate::now().floored();
    card.statusChangedAt = card.createdAt;
    // At the bottom of "Not Started", wherever the folder was dropped.
    co_await database->appendCard(card);
    if (!firstCardID)
        firstCardID = card.id;
}

Task<> BoardModel::addDropped(QList<QUrl> urls)
{
    QPointer<BoardModel> self(this);
    QList<QUrl> folders;
    QMap<QString, QStringList> filesByFolder; // ordered by the folder's path
    for (const QUrl &url : std::as_const(urls)) {
        const QFileInfo info(url.toLocalFile());
        if (!url.isLocalFile() || !info.exists())
            continue;
        if (info.isDir())
            folders.append(url);
        else
            filesByFolder[info.absolutePath()].append(info.fileName());
    }

    if (!folders.isEmpty()) {
        co_await addFolders(folders);
        if (!self)
            co_return;
    }
    if (filesByFolder.isEmpty())
        co_return;
    QList<PendingFileDrop> drops;
    for (auto entry = filesByFolder.begin(); entry != filesByFolder.end(); ++entry) {
        entry->sort();
        drops.append(PendingFileDrop{QUrl::fromLocalFile(entry.key()), *entry});
    }
    setPendingFileDrops(drops);
}

Task<> BoardModel::resolvePendingFileDrops()
{
    QPointer<BoardModel> self(this);
    const auto picker = m_picker;
    const QList<PendingFileDrop> drops = std::exchange(m_pendingFileDrops, {});
    if (!drops.isEmpty())
        emit pendingFileDropsChanged();

    for (const PendingFileDrop &drop : drops) {
        const FolderPickerRequest request{
            u"Add"_s,
            u"Add “%1” to the board. %2 dropped file(s) will be added to its checklist."_s.arg(
                lastComponent(drop.folder), QString::number(drop.fileNames.size())),
            drop.folder, false};
        const QList<QUrl> chosen = co_await picker->choose(request);
        if (!self)
            co_return;
        if (chosen.isEmpty())
            continue;
        // The user may have chosen another folder; from here on the chosen one counts.
        const QUrl folder = standardized(chosen.first());
        const QList<QUrl> single{folder};
        co_await addFolders(single);
        if (!self)
            co_return;
        const auto card = cardAt(folder);
        if (!card)
            continue;
        co_await attachFiles(drop.fileNames, folder, card->id);
        if (!self)
            co_return;
    }
    co_await reload();
}

std::optional<Card> BoardModel::cardAt(const QUrl &folder) const
{
    for (const Card &card : m_cards) {
        const auto resolution = m_resolutions.constFind(card.id);
        if (resolution != m_resolutions.cend() && resolution->availability == Availability::available
            && resolution->locationURL && standardized(*resolution->locationURL) == folder)
            return card;
    }
    return std::nullopt;
}

Task<> BoardModel::attachFiles(QStringList names, QUrl folder, QString cardID)
{
    QPointer<BoardModel> self(this);
    const auto database = m_services.database;
    for (const QString &name : std::as_const(names)) {
        const QString path = QDir(folder.toLocalFile()).filePath(name);
        // A file that went away since the drop is skipped without a word.
        if (!QFileInfo::exists(path))
            continue;
        try {
            ChecklistItem item;
            {
                const SecurityScopedBookmark::ScopedAccess access(folder);
                item.bookmark = SecurityScopedBookmark::create(QUrl::fromLocalFile(path));
            }
            item.id = newIdentifier();
            item.cardID = cardID;
            item.displayName = name;
            co_await database->appendChecklistItem(item);
        } catch (const std::exception &failure) {
            if (self)
                setErrorMessage(name + u": "_s + describe(failure));
        }
        if (!self)
            co_return;
    }
}

Task<> BoardModel::locate(Card card)
{
    QPointer<BoardModel> self(this);
    const auto picker = m_picker;
    const auto database = m_services.database;
    const auto resolution = m_resolutions.constFind(card.id);

    FolderPickerRequest request{u"Locate"_s, u"Choose the new location of “%1”."_s.arg(card.displayName),
                                std::nullopt, false};
    if (resolution != m_resolutions.cend() && resolution->availability == Availability::unreachable) {
        request.message = PlatformText::chooseUnreachableFolderAgain(card.displayName);
        if (resolution->locationURL)
            request.directory = QUrl::fromLocalFile(FolderPaths::parent(resolution->locationURL->toLocalFile()));
    }
    const QList<QUrl> chosen = co_await picker->choose(request);
    if (!self || chosen.isEmpty())
        co_return;

    // Any folder will do: the user may point a card wherever they like.
    const QUrl folder = standardized(chosen.first());
    try {
        const QByteArray bookmark = SecurityScopedBookmark::create(folder);
        co_await database->relinkCard(card.id, folder, bookmark);
    } catch (const std::exception &failure) {
        if (self)
            reportFailure(failure);
        co_return;
    }
    if (self)
        co_await reload();
}

Task<std::optional<CardResolution>> BoardModel::resolveAndKeep(Card card)
{
    QPointer<BoardModel> self(this);
    auto resolveCard = [card] { return CardResolution::resolve(card); };
    const CardResolution resolution = co_await onThreadPool(resolveCard);
    if (!self)
        co_return std::nullopt;
    // The verdict also refreshes the card's face; the next reload decides what is stored.
    QHash<QString, CardResolution> resolutions = m_resolutions;
    resolutions.insert(card.id, resolution);
    setResolutions(resolutions);
    co_return resolution;
}

Task<> BoardModel::openInFinder(Card card)
{
    QPointer<BoardModel> self(this);
    const auto database = m_services.database;
    const std::optional<CardResolution> found = co_await resolveAndKeep(card);
    if (!found)
        co_return;
    const CardResolution &resolution = *found;

    if (resolution.locationURL) {
        bool shown = false;
        {
            const SecurityScopedBookmark::ScopedAccess access(*resolution.locationURL);
            shown = co_await m_reveal(*resolution.locationURL);
        }
        if (!self)
            co_return;
        // The failure to reach the folder already says what to do when nothing opened.
        if (resolution.availability != Availability::available)
            setErrorMessage(PlatformText::cannotReachFolder(resolution.displayName, resolution.failure));
        else if (!shown)
            setErrorMessage(PlatformText::noFileManagerAnswered());
    } else {
        setErrorMessage(u"“%1” could not be opened. %2"_s.arg(
            resolution.displayName, resolution.failure.value_or(u"The folder could not be found."_s)));
    }

    if (!resolution.needsPersisting(card))
        co_return;
    try {
        const QHash<QString, CardResolution> changed{{card.id, resolution}};
        co_await database->applyResolutions(changed);
        if (!self)
            co_return;
        const QList<Card> cards = co_await database->allCards();
        if (self)
            setCards(cards);
    } catch (const std::exception &failure) {
        if (self)
            reportFailure(failure);
    }
}

Task<> BoardModel::removeCard(Card card)
{
    QPointer<BoardModel> self(this);
    const auto database = m_services.database;
    const QPointer<TimerModel> timer = m_timer;

    if (timer && timer->isRunning(card)) {
        co_await timer->stop(false);
        if (!self)
            co_return;
    }
    // A status tag left behind must not keep the card on the board.
    if (const auto folder = folderURL(card); card.finderTag && folder) {
        try {
            const SecurityScopedBookmark::ScopedAccess access(*folder);
            FolderTagAttribute::applyTag(std::nullopt, card.finderTag, *folder);
        } catch (const std::exception &) {
        }
    }
    try {
        co_await database->deleteCard(card.id);
    } catch (const std::exception &failure) {
        if (self)
            reportFailure(failure);
        co_return;
    }
    if (!self)
        co_return;
    if (timer)
        timer->forget(card.id);
    if (m_selectedCardID == card.id)
        setSelectedCardID(std::nullopt);
    co_await reload();
}

// Moves and edits.

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
