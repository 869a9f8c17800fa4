#include "CardDetailModel.h"

#include "AppModel.h"
#include "AssignIfChanged.h"
#include "CardResolution.h"
#include "FolderListingError.h"
#include "FolderPaths.h"
#include "Offload.h"

#include <algorithm>
#include <cerrno>
#include <utility>

using namespace Qt::StringLiterals;

CardDetailModel::CardDetailModel(QObject *parent)
    : QObject(parent), m_entries(new FolderEntryListModel(this)), m_items(new ChecklistListModel(this)),
      m_sessions(new SessionListModel(this))
{
}

CardDetailModel::CardDetailModel(VeltoServices services, QObject *parent) : CardDetailModel(parent)
{
    m_services = std::move(services);
}

CardDetailModel::~CardDetailModel() = default;

AppModel *CardDetailModel::app() const
{
    return m_app;
}

void CardDetailModel::setApp(AppModel *app)
{
    if (m_app == app)
        return;
    m_app = app;
    // Services once taken stay: operations under way, and a loaded card, rely on them.
    if (app && app->services())
        m_services = app->services();
    emit appChanged();
}

// Setters: each compares first, so an equal value notifies nobody.

void CardDetailModel::setCard(const std::optional<Card> &card)
{
    if (assignIfChanged(m_card, card))
        emit cardChanged();
}

void CardDetailModel::setFolderURL(const std::optional<QUrl> &url)
{
    if (assignIfChanged(m_folderURL, url))
        emit folderURLChanged();
}

void CardDetailModel::setEntries(const QList<FolderEntry> &entries)
{
    if (m_entries->entries() == entries)
        return;
    m_entries->setEntries(entries);
    emit entriesChanged();
}

void CardDetailModel::setItems(const QList<ChecklistItem> &items)
{
    if (m_items->items() == items)
        return;
    m_items->setItems(items);
    QSet<QString> names;
    for (const ChecklistItem &item : items)
        names.insert(item.displayName);
    m_entries->setChecklistNames(names);
    emit itemsChanged();
}

void CardDetailModel::setErrorMessage(const std::optional<QString> &message)
{
    if (assignIfChanged(m_errorMessage, message))
        emit errorMessageChanged();
}

void CardDetailModel::setIsLoading(bool loading)
{
    if (assignIfChanged(m_isLoading, loading))
        emit isLoadingChanged();
}

void CardDetailModel::setNewFileCount(qint64 count)
{
    if (assignIfChanged(m_newFileCount, count))
        emit newFileCountChanged();
}

void CardDetailModel::setSessions(const QList<TimeSession> &sessions)
{
    if (m_sessions->sessions() == sessions)
        return;
    m_sessions->setSessions(sessions);
    emit sessionsChanged();
}

void CardDetailModel::setSelectedItemID(const std::optional<QString> &id)
{
    if (!assignIfChanged(m_selectedItemID, id))
        return;
    m_items->setSelectedItemID(id);
    emit selectedItemIDChanged();
}

void CardDetailModel::setSelectedItemIDText(const QString &id)
{
    setSelectedItemID(id.isEmpty() ? std::nullopt : std::optional(id));
}

void CardDetailModel::setPreviewURL(const std::optional<QUrl> &url)
{
    if (assignIfChanged(m_previewURL, url))
        emit previewURLChanged();
}

void CardDetailModel::setPreviewURLValue(const QUrl &url)
{
    setPreviewURL(url.isEmpty() ? std::nullopt : std::optional(url));
}

void CardDetailModel::setDidFindFolderUnreadable(bool unreadable)
{
    if (assignIfChanged(m_didFindFolderUnreadable, unreadable))
        emit didFindFolderUnreadableChanged();
}

void CardDetailModel::reportFailure(const std::exception &failure)
{
    setErrorMessage(QString::fromUtf8(failure.what()));
}

void CardDetailModel::clearError()
{
    setErrorMessage(std::nullopt);
}

int CardDetailModel::doneItemCount() const
{
    return int(std::ranges::count_if(items(), &ChecklistItem::isDone));
}

QString CardDetailModel::folderReadMessage(const std::exception &failure, const QUrl &url)
{
    const QString name = FolderPaths::lastComponent(url.toLocalFile());
    const auto *listing = dynamic_cast<const FolderListingError *>(&failure);
    if (listing && listing->errorCode() == ENOENT)
        return u"“%1” is no longer at this location. Use Locate… to point at where it is now — the card keeps "
               u"its history, checklist and tracked time."_s.arg(name);
    if (listing && (listing->errorCode() == EACCES || listing->errorCode() == EPERM))
        return u"Velto does not currently have permission to read “%1”. Use Locate… to choose it again and "
               u"restore access."_s.arg(name);
    const QString reason = listing ? qt_error_string(listing->errorCode()) : QString::fromUtf8(failure.what());
    return u"“%1” could not be read: %2"_s.arg(name, reason);
}

Task<> CardDetailModel::load(Card card)
{
    if (!m_services)
        co_return;
    QPointer<CardDetailModel> self(this);
    const auto database = m_services->database;
    setIsLoading(true);

    // The row as stored now; the card as the board had it serves when it cannot be read.
    Card fresh = card;
    try {
        const std::optional<Card> stored = co_await database->card(card.id);
        if (stored)
            fresh = *stored;
    } catch (const std::exception &) {
    }
    if (!self)
        co_return;

    auto resolveFresh = [fresh] { return CardResolution::resolve(fresh); };
    const CardResolution resolution = co_await onThreadPool(resolveFresh);
    if (!self)
        co_return;

    // A folder that is there but may not be used is shown exactly like one that is gone.
    std::optional<QUrl> url;
    if (resolution.availability == CardResolution::Availability::available)
        url = resolution.locationURL;
    setDidFindFolderUnreadable(!url);
    setCard(fresh);
    setFolderURL(url);
    setErrorMessage(url ? std::nullopt : resolution.failure);
    setSelectedItemID(std::nullopt);
    // The new scope opens before the old one closes, so reloading the same folder never drops it.
    m_access = url ? std::make_unique<SecurityScopedBookmark::ScopedAccess>(*url) : nullptr;

    co_await readChecklistAndSessions(fresh.id);
    if (!self)
        co_return;

    if (url) {
        co_await listFolder(*url, fresh);
        if (!self)
            co_return;
        co_await scanChecklist();
        if (!self)
            co_return;
    } else {
        setEntries({});
        setNewFileCount(0);
    }
    setIsLoading(false);
}

Task<> CardDetailModel::readChecklistAndSessions(QString cardID)
{
    QPointer<CardDetailModel> self(this);
    const auto database = m_services->database;
    try {
        const QList<ChecklistItem> items = co_await database->checklistItems(cardID);
        const QList<TimeSession> sessions = co_await database->sessions(cardID);
        if (!self)
            co_return;
        setItems(items);
        setSessions(sessions);
    } catch (const std::exception &failure) {
        if (!self)
            co_return;
        reportFailure(failure);
        setItems({});
        setSessions({});
    }
}

Task<> CardDetailModel::listFolder(QUrl url, Card fresh)
{
    QPointer<CardDetailModel> self(this);
    const auto database = m_services->database;
    try {
        const QList<FolderEntry> entries = FolderEntry::list(url);
        setEntries(entries);
        // Only a count that grew shows: a first opening, or files taken away, show nothing new.
        const qint64 count = FolderEntry::fileCount(entries);
        const std::optional<qint64> stored = fresh.lastSeenFileCount;
        setNewFileCount(stored && *stored < count ? count - *stored : 0);
        co_await database->setLastSeenFileCount(count, fresh.id);
    } catch (const std::exception &failure) {
        // A count that could not be stored reads as a folder that could not be read, so the pane
        // never shows a count the database did not take.
        if (!self)
            co_return;
        setEntries({});
        setNewFileCount(0);
        setDidFindFolderUnreadable(true);
        setErrorMessage(folderReadMessage(failure, url));
    }
}

void CardDetailModel::requestLoad(const QString &cardID)
{
    if (!m_app || !m_app->board())
        return;
    const QList<Card> &cards = m_app->board()->cards();
    const auto found = std::ranges::find(cards, cardID, &Card::id);
    if (found != cards.cend())
        load(*found);
}
