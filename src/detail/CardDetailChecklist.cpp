// The checklist operations of CardDetailModel: the scan for missing files, promoting a file of the
// folder, ticking and removing items, and handing an item's file to the desktop.

#include "CardDetailModel.h"

#include "BookmarkError.h"
#include "FileManagerReveal.h"
#include "Identifier.h"
#include "StoreQueries.h"

#include <QDesktopServices>

#include <algorithm>
#include <variant>

using namespace Qt::StringLiterals;

namespace {

// Where the item's bookmark leads now, or absent when it leads nowhere. A blob renewed on the way
// is dropped: the checklist stores nothing but its flags here.
std::optional<QUrl> resolvedURL(const ChecklistItem &item)
{
    try {
        return SecurityScopedBookmark::resolve(item.bookmark).url;
    } catch (const BookmarkError &) {
        return std::nullopt;
    }
}

// Only a file that is gone counts as missing: a folder in its place, or a file that may not be
// read, is still there as far as the checklist goes.
bool isMissing(const ChecklistItem &item)
{
    const std::optional<QUrl> url = resolvedURL(item);
    if (!url)
        return true;
    const SecurityScopedBookmark::ScopedAccess access(*url);
    const BookmarkPathCheck check = SecurityScopedBookmark::checkPath(*url, false);
    return std::holds_alternative<BookmarkPathCheck::Gone>(check.outcome);
}

} // namespace

Task<> CardDetailModel::scanChecklist()
{
    QList<ChecklistItem> scanned = items();
    if (scanned.isEmpty() || !m_services)
        co_return;
    QPointer<CardDetailModel> self(this);
    const auto database = m_services->database;
    for (ChecklistItem &item : scanned) {
        const bool missing = isMissing(item);
        if (missing == item.isMissing)
            continue;
        item.isMissing = missing;
        // Silent: the flag shows in no other process. A failed write keeps the flag on screen,
        // and the next scan tries again.
        auto writeFlag = [missing, id = item.id](SQLiteConnection &connection) {
            StoreQueries::write(connection, u"UPDATE checklist_items SET is_missing = ? WHERE id = ?"_s,
                                {StoreQueries::storedFlag(missing), id});
        };
        try {
            co_await database->run(writeFlag);
        } catch (const std::exception &) {
        }
        if (!self)
            co_return;
    }
    setItems(scanned);
}

bool CardDetailModel::hasChecklistItem(const FolderEntry &entry) const
{
    return std::ranges::find(items(), entry.name, &ChecklistItem::displayName) != items().cend();
}

Task<> CardDetailModel::promote(FolderEntry entry)
{
    if (entry.isDirectory || !m_card || hasChecklistItem(entry) || m_namesBeingPromoted.contains(entry.name))
        co_return;
    QPointer<CardDetailModel> self(this);
    const auto database = m_services->database;
    const QString cardID = m_card->id;

    ChecklistItem item;
    try {
        // The scope held on the folder covers the file.
        item.bookmark = SecurityScopedBookmark::create(entry.url);
    } catch (const BookmarkError &failure) {
        reportFailure(failure);
        co_return;
    }
    m_namesBeingPromoted.insert(entry.name);
    try {
        item.id = newIdentifier();
        item.cardID = cardID;
        item.displayName = entry.name;
        co_await database->appendChecklistItem(item);
        const QList<ChecklistItem> items = co_await database->checklistItems(cardID);
        if (self)
            setItems(items);
    } catch (const std::exception &failure) {
        if (self)
            reportFailure(failure);
    }
    if (self)
        m_namesBeingPromoted.remove(entry.name);
}

Task<> CardDetailModel::toggleItem(ChecklistItem item)
{
    if (!m_services)
        co_return;
    QPointer<CardDetailModel> self(this);
    const auto database = m_services->database;
    try {
        co_await database->setChecklistItemDone(!item.isDone, item.id);
    } catch (const std::exception &failure) {
        if (self)
            reportFailure(failure);
        co_return;
    }
    if (self)
        co_await rereadItems();
}

Task<> CardDetailModel::removeItem(ChecklistItem item)
{
    if (!m_services)
        co_return;
    QPointer<CardDetailModel> self(this);
    const auto database = m_services->database;
    try {
        co_await database->deleteChecklistItem(item.id);
    } catch (const std::exception &failure) {
        if (self)
            reportFailure(failure);
        co_return;
    }
    if (self)
        co_await rereadItems();
}

// The list on screen always comes from a fresh read, never from patching it.
Task<> CardDetailModel::rereadItems()
{
    if (!m_card)
        co_return;
    QPointer<CardDetailModel> self(this);
    const auto database = m_services->database;
    try {
        const QList<ChecklistItem> items = co_await database->checklistItems(m_card->id);
        if (self)
            setItems(items);
    } catch (const std::exception &failure) {
        if (self)
            reportFailure(failure);
    }
}

void CardDetailModel::previewSelectedItem()
{
    if (!m_selectedItemID)
        return;
    if (const std::optional<ChecklistItem> item = itemWithID(*m_selectedItemID))
        previewItem(*item);
}

void CardDetailModel::previewItem(const ChecklistItem &item)
{
    setPreviewURL(resolvedURL(item));
}

void CardDetailModel::openItem(const ChecklistItem &item)
{
    if (const std::optional<QUrl> url = resolvedURL(item))
        QDesktopServices::openUrl(*url);
}

void CardDetailModel::revealItem(const ChecklistItem &item)
{
    if (const std::optional<QUrl> url = resolvedURL(item))
        revealInFileManager(*url);
}

std::optional<ChecklistItem> CardDetailModel::itemWithID(const QString &id) const
{
    const auto found = std::ranges::find(items(), id, &ChecklistItem::id);
    return found == items().cend() ? std::nullopt : std::optional(*found);
}

void CardDetailModel::requestPromote(const QUrl &entryURL)
{
    const auto found = std::ranges::find(entries(), entryURL, &FolderEntry::url);
    if (found != entries().cend())
        promote(*found);
}

void CardDetailModel::requestToggleItem(const QString &itemID)
{
    if (const std::optional<ChecklistItem> item = itemWithID(itemID))
        toggleItem(*item);
}

void CardDetailModel::requestRemoveItem(const QString &itemID)
{
    if (const std::optional<ChecklistItem> item = itemWithID(itemID))
        removeItem(*item);
}

void CardDetailModel::requestPreviewItem(const QString &itemID)
{
    if (const std::optional<ChecklistItem> item = itemWithID(itemID))
        previewItem(*item);
}

void CardDetailModel::requestOpenItem(const QString &itemID)
{
    if (const std::optional<ChecklistItem> item = itemWithID(itemID))
        openItem(*item);
}

void CardDetailModel::requestRevealItem(const QString &itemID)
{
    if (const std::optional<ChecklistItem> item = itemWithID(itemID))
        revealItem(*item);
}
