#pragma once

#include "RecordListModel.h"
#include "TimeSession.h"

#include <QtQml/qqmlregistration.h>

// A card's tracked sessions, newest first, as the sessions section lists them.
class SessionListModel : public RecordListModel {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("A CardDetailModel holds the sessions")

public:
    enum Role { SessionIDRole = Qt::UserRole + 1, StartedAtRole, EndedAtRole, IsRunningRole, DurationSecondsRole, MetTargetRole };
    Q_ENUM(Role)

    using RecordListModel::RecordListModel;

    [[nodiscard]] const QList<TimeSession> &sessions() const { return m_sessions; }
    void setSessions(const QList<TimeSession> &sessions);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;

private:
    QList<TimeSession> m_sessions;
};
