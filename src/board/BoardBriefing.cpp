// The part of BoardModel that copies a card's briefing: it gathers what the briefing says of the
// card, renders it and puts it on the clipboard.

#include "BoardModel.h"

#include "AssignIfChanged.h"
#include "CardBriefing.h"
#include "FolderEntry.h"
#include "Offload.h"

#include <QClipboard>
#include <QGuiApplication>

#include <exception>

namespace {

// The listing, or absent when the folder could not be read.
std::optional<QList<FolderEntry>> listingOf(const QUrl &folder)
{
    try {
        return FolderEntry::list(folder);
    } catch (const std::exception &) {
        return std::nullopt;
    }
}

} // namespace

QDateTime BoardModel::briefingCopiedAtTime() const
{
    return m_briefingCopiedAt ? m_briefingCopiedAt->toDateTime() : QDateTime();
}

void BoardModel::setBriefingCopiedAt(const std::optional<VeltoDate> &copiedAt)
{
    if (assignIfChanged(m_briefingCopiedAt, copiedAt))
        emit briefingCopiedAtChanged();
}

void BoardModel::requestCopyBriefing(const QString &cardID)
{
    if (const auto card = cardWithID(cardID))
        copyBriefing(*card);
}

Task<> BoardModel::copyBriefing(Card card)
{
    QPointer<BoardModel> self(this);
    const auto database = m_services.database;
    const std::optional<CardResolution> found = co_await resolveAndKeep(card);
    if (!found)
        co_return;
    const CardResolution &resolution = *found;

    CardBriefing::Input input;
    input.card = card;
    input.contentsUnavailable = true;
    if (resolution.availability == CardResolution::Availability::available && resolution.locationURL) {
        const QUrl folder = *resolution.locationURL;
        auto listFolder = [folder] { return listingOf(folder); };
        const std::optional<QList<FolderEntry>> listing = co_await onThreadPool(listFolder);
        if (!self)
            co_return;
        input.contentsUnavailable = !listing.has_value();
        input.contents = listing.value_or(QList<FolderEntry>());
    }

    // A checklist that cannot be read is reported, and the briefing goes out without it.
    try {
        input.keyFiles = co_await database->checklistItems(card.id);
    } catch (const std::exception &failure) {
        if (self)
            reportFailure(failure);
    }
    if (!self)
        co_return;

    // An unreachable folder keeps its live path; only a missing one falls back to the stored path.
    if (resolution.locationURL)
        input.folderPath = resolution.locationURL->toLocalFile();
    // Project and tags as the board holds them now, after the waits above.
    input.project = project(card);
    input.tags = tags(card);

    const QString briefing = CardBriefing::render(input, VeltoDate::now(), QTimeZone::systemTimeZone());
    QClipboard *clipboard = QGuiApplication::clipboard();
    clipboard->setText(briefing, QClipboard::Clipboard);
    if (clipboard->supportsSelection())
        clipboard->setText(briefing, QClipboard::Selection);
    setBriefingCopiedAt(VeltoDate::now());
}
