#pragma once

#include "DatabaseChangeNotifier.h"
#include "DiagnosticsReport.h"
#include "Task.h"
#include "VeltoServices.h"

#include <QDateTime>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

#include <memory>
#include <optional>
#include <variant>

// Proves from the running application what the shared store rests on: the container and how it was
// found, the file and its settings, the schema, the tables, and that the change signal arrives.
// It writes nothing; its one effect outside is the signal its view posts.
class DiagnosticsModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application makes its one DiagnosticsModel")
    Q_PROPERTY(StateKind stateKind READ stateKind NOTIFY stateChanged)
    Q_PROPERTY(QString failureMessage READ failureMessage NOTIFY stateChanged)
    Q_PROPERTY(QVariantList appGroupRows READ appGroupRows NOTIFY stateChanged)
    Q_PROPERTY(QVariantList databaseRows READ databaseRows NOTIFY stateChanged)
    Q_PROPERTY(QVariantList migrationRows READ migrationRows NOTIFY stateChanged)
    Q_PROPERTY(QStringList tables READ tables NOTIFY stateChanged)
    Q_PROPERTY(QVariantList missingTableRows READ missingTableRows NOTIFY stateChanged)
    Q_PROPERTY(QVariantList notificationRows READ notificationRows NOTIFY notificationRowsChanged)
    Q_PROPERTY(int notificationsReceived READ notificationsReceived NOTIFY notificationsReceivedChanged)

public:
    enum class StateKind { Loading, Ready, Failed };
    Q_ENUM(StateKind)

    struct Loading {
        bool operator==(const Loading &) const = default;
    };
    struct Failed {
        QString message;
        bool operator==(const Failed &) const = default;
    };
    using State = std::variant<Loading, DiagnosticsReport, Failed>;

    explicit DiagnosticsModel(VeltoServices services, QObject *parent = nullptr);
    ~DiagnosticsModel() override;

    [[nodiscard]] const State &state() const { return m_state; }
    [[nodiscard]] int notificationsReceived() const { return m_notificationsReceived; }
    [[nodiscard]] const std::optional<QDateTime> &lastNotificationAt() const { return m_lastNotificationAt; }
    [[nodiscard]] bool isObserving() const { return m_observation != nullptr; }

    // Takes a new snapshot, registering for the change signal first if that has not worked yet.
    Task<> refresh();

    Q_INVOKABLE void requestRefresh();
    // Sends the change signal, as a write would; this process hears it too.
    Q_INVOKABLE void postChangeNotification() const;

    [[nodiscard]] StateKind stateKind() const;
    [[nodiscard]] QString failureMessage() const;
    [[nodiscard]] QVariantList appGroupRows() const;
    [[nodiscard]] QVariantList databaseRows() const;
    [[nodiscard]] QVariantList migrationRows() const;
    [[nodiscard]] QStringList tables() const;
    [[nodiscard]] QVariantList missingTableRows() const;
    [[nodiscard]] QVariantList notificationRows() const;

signals:
    void stateChanged();
    void notificationRowsChanged();
    void notificationsReceivedChanged();

private:
    void setState(State state);
    void noteDelivery();
    [[nodiscard]] const DiagnosticsReport *report() const { return std::get_if<DiagnosticsReport>(&m_state); }

    VeltoServices m_services;
    State m_state = Loading{};
    int m_notificationsReceived = 0;
    std::optional<QDateTime> m_lastNotificationAt;
    std::shared_ptr<DatabaseChangeNotifier::Observation> m_observation;
};
