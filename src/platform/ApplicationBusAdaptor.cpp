#include "ApplicationBusAdaptor.h"

#include "ApplicationBusService.h"

ApplicationBusAdaptor::ApplicationBusAdaptor(ApplicationBusService *service)
    : QDBusAbstractAdaptor(service), m_service(service)
{
}

void ApplicationBusAdaptor::Activate(const QVariantMap &)
{
    emit m_service->activationRequested();
}

void ApplicationBusAdaptor::Open(const QStringList &uris, const QVariantMap &)
{
    emit m_service->openRequested(uris);
    emit m_service->activationRequested();
}

void ApplicationBusAdaptor::ActivateAction(const QString &actionName, const QVariantList &, const QVariantMap &)
{
    emit m_service->actionRequested(actionName);
}
