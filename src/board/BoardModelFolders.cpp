#include "BoardModel.h"

#include "FolderPaths.h"
#include "FolderTagAttribute.h"
#include "Identifier.h"
#include "Offload.h"
#include "PlatformText.h"
#include "SecurityScopedBookmark.h"

#include <QDir>
#include <QFileInfo>
#include <QMap>

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

} // namespace

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
