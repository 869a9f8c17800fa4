#include "ApplicationBusService.h"

#include "ApplicationBusAdaptor.h"
#include "BusName.h"

using namespace Qt::StringLiterals;

ApplicationBusService::ApplicationBusService(QDBusConnection bus, QObject *parent)
    : QObject(parent), m_bus(std::move(bus))
{
    new ApplicationBusAdaptor(this);
}

ApplicationBusService::~ApplicationBusService()
{
    if (!m_name.isEmpty())
        m_bus.unregisterService(m_name);
    if (!m_path.isEmpty())
        m_bus.unregisterObject(m_path);
}

bool ApplicationBusService::publish(const QString &identifier)
{
    const QString name = BusName::fromIdentifier(identifier);
    const QString path = BusName::objectPath(name);
    if (!m_bus.registerObject(path, this, QDBusConnection::ExportAdaptors))
        return false;
    m_path = path;
    if (!m_bus.registerService(name))
        return false;
    m_name = name;
    return true;
}

QString ApplicationBusService::interfaceName()
{
    return u"org.freedesktop.Application"_s;
}
