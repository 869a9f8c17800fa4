#include "SessionListModel.h"

#include "TimeAggregation.h"

#include <QDateTime>

void SessionListModel::setSessions(const QList<TimeSession> &sessions)
{
    replaceRows(m_sessions, sessions, &TimeSession::id);
}

int SessionListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_sessions.size());
}

QVariant SessionListModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const TimeSession &session = m_sessions.at(index.row());
    switch (role) {
    case SessionIDRole:
        return session.id;
    case StartedAtRole:
        return session.startedAt.toDateTime();
    case EndedAtRole:
        // A running session has no end yet: an invalid date, and isRunning says why.
        return session.endedAt ? session.endedAt->toDateTime() : QDateTime();
    case IsRunningRole:
        return !session.endedAt;
    case DurationSecondsRole:
        return session.endedAt ? session.endedAt->secondsSinceReferenceDate() - session.startedAt.secondsSinceReferenceDate()
                               : 0.0;
    case MetTargetRole:
        return TimeAggregation::metTarget(session);
    default:
        return {};
    }
}

QHash<int, QByteArray> SessionListModel::roleNames() const
{
    return {{SessionIDRole, "sessionID"},
            {StartedAtRole, "startedAt"},
            {EndedAtRole, "endedAt"},
            {IsRunningRole, "isRunning"},
            {DurationSecondsRole, "durationSeconds"},
            {MetTargetRole, "metTarget"}};
}
