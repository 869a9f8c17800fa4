#include "DiagnosticsModel.h"

#include "AssignIfChanged.h"
#include "DiagnosticSections.h"

#include <QLocale>
#include <QPointer>

#include <exception>

namespace {

QVariantList forViews(const QList<DiagnosticRow> &rows)
{
    QVariantList list;
    for (const DiagnosticRow &row : rows)
        list.append(row.forViews());
    return list;
}

} // namespace

DiagnosticsModel::DiagnosticsModel(VeltoServices services, QObject *parent)
    : QObject(parent), m_services(std::move(services))
{
}

DiagnosticsModel::~DiagnosticsModel() = default;

Task<> DiagnosticsModel::refresh()
{
    QPointer<DiagnosticsModel> self(this);
    setState(Loading{});
    // Made once and kept for the life of the model, so the count runs on across refreshes; a
    // registration that failed is tried again by the next refresh.
    if (!m_observation) {
        m_observation = m_services.notifier.observe([self] {
            if (self)
                self->noteDelivery();
        });
        if (m_observation)
            emit notificationRowsChanged();
    }
    const auto database = m_services.database;
    try {
        DatabaseDiagnostics snapshot = co_await database->diagnostics();
        if (self)
            setState(DiagnosticsReport{m_services.container, m_services.migration, std::move(snapshot),
                                       m_services.notifier.name});
    } catch (const std::exception &failure) {
        if (self)
            setState(Failed{QString::fromUtf8(failure.what())});
    }
}

void DiagnosticsModel::requestRefresh()
{
    refresh();
}

void DiagnosticsModel::postChangeNotification() const
{
    m_services.notifier.post();
}

void DiagnosticsModel::noteDelivery()
{
    ++m_notificationsReceived;
    m_lastNotificationAt = QDateTime::currentDateTime();
    emit notificationsReceivedChanged();
    emit notificationRowsChanged();
}

void DiagnosticsModel::setState(State state)
{
    if (!assignIfChanged(m_state, std::move(state)))
        return;
    emit stateChanged();
    emit notificationRowsChanged();
}

DiagnosticsModel::StateKind DiagnosticsModel::stateKind() const
{
    if (std::holds_alternative<DiagnosticsReport>(m_state))
        return StateKind::Ready;
    if (std::holds_alternative<Failed>(m_state))
        return StateKind::Failed;
    return StateKind::Loading;
}

QString DiagnosticsModel::failureMessage() const
{
    const auto *failed = std::get_if<Failed>(&m_state);
    return failed ? failed->message : QString();
}

QVariantList DiagnosticsModel::appGroupRows() const
{
    return report() ? forViews(DiagnosticSections::appGroup(*report())) : QVariantList();
}

QVariantList DiagnosticsModel::databaseRows() const
{
    return report() ? forViews(DiagnosticSections::database(*report(), QLocale())) : QVariantList();
}

QVariantList DiagnosticsModel::migrationRows() const
{
    return report() ? forViews(DiagnosticSections::migrations(*report())) : QVariantList();
}

QStringList DiagnosticsModel::tables() const
{
    return report() ? QStringList(report()->database.tables) : QStringList();
}

QVariantList DiagnosticsModel::missingTableRows() const
{
    return report() ? forViews(DiagnosticSections::missingTables(*report())) : QVariantList();
}

QVariantList DiagnosticsModel::notificationRows() const
{
    if (!report())
        return {};
    return forViews(DiagnosticSections::notification(*report(), isObserving(), m_notificationsReceived,
                                                     m_lastNotificationAt, QLocale()));
}
