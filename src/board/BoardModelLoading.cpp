#include "BoardModel.h"

#include "FolderLook.h"
#include "Offload.h"
#include "WorkingFileCache.h"

#include <coroutine>
#include <exception>
#include <optional>
#include <utility>

namespace {

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

// The verdicts to show while a search runs: those known, and for the cards being searched for,
// the verdicts they had.
QHash<QString, CardResolution> withEarlierVerdicts(QHash<QString, CardResolution> known,
                                                   const QList<Card> &searched,
                                                   const QHash<QString, CardResolution> &earlier)
{
    for (const Card &card : searched) {
        if (const auto verdict = earlier.constFind(card.id); verdict != earlier.cend())
            known.insert(card.id, *verdict);
    }
    return known;
}

// The working files read where the rows put the folders, less those of folders no longer
// reachable there; and the reachable folders that are elsewhere, by card id, to read again. An
// available folder's path is where its location leads.
struct ReadsAfterVerdicts {
    QHash<QString, WorkingFileRead> stillValid;
    QHash<QString, QString> foldersElsewhere;
};

ReadsAfterVerdicts readsAfterVerdicts(QHash<QString, WorkingFileRead> atRows, const QList<Card> &cards,
                                      const QHash<QString, CardResolution> &resolutions)
{
    QHash<QString, QString> elsewhere;
    for (const Card &card : cards) {
        const auto verdict = resolutions.constFind(card.id);
        const bool reachable = verdict != resolutions.cend()
            && verdict->availability == CardResolution::Availability::available && verdict->locationURL;
        if (reachable && verdict->displayPath == card.displayPath)
            continue;
        // Asked first, since removing from a shared table copies it even when the key is absent.
        if (atRows.contains(card.id))
            atRows.remove(card.id);
        if (reachable)
            elsewhere.insert(card.id, verdict->displayPath);
    }
    return {std::move(atRows), std::move(elsewhere)};
}

void joinVerdicts(QHash<QString, CardResolution> &into, const QHash<QString, CardResolution> &searched)
{
    for (auto verdict = searched.cbegin(); verdict != searched.cend(); ++verdict)
        into.insert(verdict.key(), verdict.value());
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

Task<> BoardModel::reload()
{
    auto previous = std::exchange(m_loadChain, std::make_shared<LoadChain>());
    co_await runAfter(QPointer<BoardModel>(this), std::move(previous), m_loadChain);
}

Task<> BoardModel::runAfter(QPointer<BoardModel> model, std::shared_ptr<LoadChain> previous,
                            std::shared_ptr<LoadChain> current)
{
    // Named, not a temporary: gcc 12 destroys a temporary awaiter of a ready co_await twice.
    LoadChain::Ended ended{std::move(previous)};
    co_await ended;
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
    const auto failedSearches = m_failedSearches;
    QHash<QString, CardResolution> resolutions;
    // The verdicts on folders that are not where they were, while the search for them runs.
    std::optional<Task<QHash<QString, CardResolution>>> searching;
    std::exception_ptr failure;
    try {
        // Each source is published as soon as it is read, so new cards show while the rest loads.
        // Asked for together, so that the store reads them one after another without waiting for
        // this thread to take each in turn; still published in this order.
        Task<QList<Card>> readingCards = database->allCards();
        Task<QList<Project>> readingProjects = database->allProjects();
        Task<QList<Tag>> readingTags = database->allTags();
        Task<QHash<QString, QSet<QString>>> readingLinks = database->tagLinks();
        Task<QHash<QString, ChecklistProgress>> readingProgress = database->checklistProgress();
        const QList<Card> cards = co_await readingCards;
        if (!self)
            co_return false;
        // The rows show at once with the verdicts their folders had, so a move is on screen before
        // any folder is looked at; a card new to the board has none yet and shows no repair. The
        // look starts only then: on two processors it would slow the read of the rows it waited for.
        setCards(cards);
        // A folder where it was costs one look, taken while the rest of the store is read; the few
        // that moved or vanished are searched for after, holding back neither the other cards nor
        // the reads of their working files. Until its search ends such a card keeps its verdict.
        const FolderLook::Earlier earlier{failedSearches,     m_mountWatch,   m_folderWatch,
                                          m_resolutions,      m_confirmedFolders,
                                          m_workingFiles,     m_foldersWithoutFile};
        Task<FolderLook> looking = onThreadPool([cards, earlier] { return FolderLook::of(cards, earlier); });

        const QList<Project> projects = co_await readingProjects;
        if (!self)
            co_return false;
        setProjects(projects);
        const QList<Tag> tags = co_await readingTags;
        if (!self)
            co_return false;
        setTags(tags);
        const auto links = co_await readingLinks;
        if (!self)
            co_return false;
        setTagIDsByCard(links);
        const auto progress = co_await readingProgress;
        if (!self)
            co_return false;
        setChecklistProgress(progress);

        FolderLook look = co_await looking;
        if (!self)
            co_return false;
        m_foldersWithoutFile = std::move(look.withoutFile);
        CardResolution::Partial &partial = look.verdicts;
        m_confirmedFolders = std::move(partial.confirmed);
        resolutions = std::move(partial.known);
        if (!partial.needingSearch.isEmpty()) {
            auto search = [pending = partial.needingSearch, failedSearches] {
                return CardResolution::resolveAll(pending, ResolutionContext::current(failedSearches));
            };
            searching.emplace(onThreadPool(search));
        }
        setResolutions(withEarlierVerdicts(resolutions, partial.needingSearch, m_resolutions));
        if (searching) {
            joinVerdicts(resolutions, co_await *std::exchange(searching, std::nullopt));
            if (!self)
                co_return false;
            setResolutions(resolutions);
        }
        ReadsAfterVerdicts reads = readsAfterVerdicts(std::move(look.readsAtRows), cards, resolutions);
        QHash<QString, WorkingFileRead> workingFiles = std::move(reads.stillValid);
        if (const auto &elsewhere = reads.foldersElsewhere; !elsewhere.isEmpty()) {
            auto readElsewhere = [earlierReads = earlier.reads, elsewhere] {
                return WorkingFileCache::refreshed(earlierReads, elsewhere);
            };
            workingFiles.insert(co_await onThreadPool(readElsewhere));
            if (!self)
                co_return false;
        }
        setWorkingFiles(workingFiles);
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
    } catch (...) {
        failure = std::current_exception();
    }
    if (!failure)
        co_return true;
    // What was published stays; the board shows it with the failure above, and with the verdicts
    // of a search that was under way.
    if (searching) {
        joinVerdicts(resolutions, co_await *searching);
        if (!self)
            co_return false;
        setResolutions(resolutions);
    }
    if (!self)
        co_return false;
    try {
        std::rethrow_exception(failure);
    } catch (const std::exception &error) {
        reportFailure(error);
    }
    co_return true;
}
