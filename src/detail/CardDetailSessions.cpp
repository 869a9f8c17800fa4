// The session operations of CardDetailModel: the card's total, and adding, correcting and deleting
// its sessions by hand.

#include "CardDetailModel.h"

#include "Identifier.h"
#include "RepositoryError.h"

#include <algorithm>
#include <variant>

using namespace Qt::StringLiterals;

namespace {

QString sessionMustEndAfterStart()
{
    return u"A session has to end after it starts."_s;
}

VeltoDate fromDateTime(const QDateTime &dateTime)
{
    return VeltoDate::fromStoredSeconds(dateTime.toSecsSinceEpoch());
}

} // namespace

double CardDetailModel::totalTrackedSeconds() const
{
    double total = 0.0;
    for (const TimeSession &session : sessions()) {
        if (session.endedAt)
            total += session.endedAt->secondsSinceReferenceDate() - session.startedAt.secondsSinceReferenceDate();
    }
    return total;
}

Task<> CardDetailModel::addSession(VeltoDate start, VeltoDate end)
{
    if (!m_card || !(end > start)) {
        setErrorMessage(sessionMustEndAfterStart());
        co_return;
    }
    QPointer<CardDetailModel> self(this);
    const auto database = m_services->database;

    TimeSession session;
    session.id = newIdentifier();
    session.cardID = m_card->id;
    session.startedAt = start.floored();
    session.endedAt = end.floored();
    session.source = TimeSession::Source::manual;
    session.confidence = 1.0;
    try {
        co_await database->insertSession(session);
    } catch (const std::exception &failure) {
        if (self)
            reportFailure(failure);
        co_return;
    }
    if (self)
        co_await rereadSessions();
}

Task<> CardDetailModel::updateSession(TimeSession session)
{
    if (!m_card)
        co_return;
    if (!session.endedAt || !(*session.endedAt > session.startedAt)) {
        setErrorMessage(sessionMustEndAfterStart());
        co_return;
    }
    QPointer<CardDetailModel> self(this);
    const auto database = m_services->database;
    const QString cardID = m_card->id;

    try {
        co_await database->updateSession(session, false);
    } catch (const RepositoryError &failure) {
        if (!self)
            co_return;
        if (std::holds_alternative<RepositoryError::NotFound>(failure.reason()))
            setErrorMessage(u"That session has already been deleted."_s);
        else
            reportFailure(failure);
    } catch (const std::exception &failure) {
        if (!self)
            co_return;
        reportFailure(failure);
    }
    if (!self)
        co_return;

    // Read again after a failure as well: a session deleted elsewhere leaves the list together
    // with the message, and that first message stays on screen.
    try {
        const QList<TimeSession> sessions = co_await database->sessions(cardID);
        if (self)
            setSessions(sessions);
    } catch (const std::exception &failure) {
        if (self && !m_errorMessage)
            reportFailure(failure);
    }
}

Task<> CardDetailModel::deleteSession(TimeSession session)
{
    if (!m_card)
        co_return;
    QPointer<CardDetailModel> self(this);
    const auto database = m_services->database;
    try {
        co_await database->deleteSession(session.id);
    } catch (const std::exception &failure) {
        if (self)
            reportFailure(failure);
        co_return;
    }
    if (self)
        co_await rereadSessions();
}

Task<> CardDetailModel::rereadSessions()
{
    if (!m_card)
        co_return;
    QPointer<CardDetailModel> self(this);
    const auto database = m_services->database;
    try {
        const QList<TimeSession> sessions = co_await database->sessions(m_card->id);
        if (self)
            setSessions(sessions);
    } catch (const std::exception &failure) {
        if (self)
            reportFailure(failure);
    }
}

std::optional<TimeSession> CardDetailModel::sessionWithID(const QString &id) const
{
    const auto found = std::ranges::find(sessions(), id, &TimeSession::id);
    return found == sessions().cend() ? std::nullopt : std::optional(*found);
}

void CardDetailModel::requestAddSession(const QDateTime &start, const QDateTime &end)
{
    addSession(fromDateTime(start), fromDateTime(end));
}

void CardDetailModel::requestUpdateSession(const QString &sessionID, const QDateTime &start, const QDateTime &end)
{
    std::optional<TimeSession> session = sessionWithID(sessionID);
    if (!session)
        return;
    session->startedAt = fromDateTime(start);
    session->endedAt = fromDateTime(end);
    updateSession(*session);
}

void CardDetailModel::requestDeleteSession(const QString &sessionID)
{
    if (const std::optional<TimeSession> session = sessionWithID(sessionID))
        deleteSession(*session);
}
