#pragma once

#include <QDBusAbstractAdaptor>
#include <QStringList>
#include <QVariantList>
#include <QVariantMap>

class ApplicationBusService;

// The desktop's standard interface for applications, as ApplicationBusService exports it. The
// calls' names are the interface's own, so they break this code's naming habit.
class ApplicationBusAdaptor : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")
    Q_CLASSINFO("D-Bus Introspection",
                "  <interface name=\"org.freedesktop.Application\">\n"
                "    <method name=\"Activate\">\n"
                "      <arg type=\"a{sv}\" name=\"platform_data\" direction=\"in\"/>\n"
                "    </method>\n"
                "    <method name=\"Open\">\n"
                "      <arg type=\"as\" name=\"uris\" direction=\"in\"/>\n"
                "      <arg type=\"a{sv}\" name=\"platform_data\" direction=\"in\"/>\n"
                "    </method>\n"
                "    <method name=\"ActivateAction\">\n"
                "      <arg type=\"s\" name=\"action_name\" direction=\"in\"/>\n"
                "      <arg type=\"av\" name=\"parameter\" direction=\"in\"/>\n"
                "      <arg type=\"a{sv}\" name=\"platform_data\" direction=\"in\"/>\n"
                "    </method>\n"
                "  </interface>\n")

public:
    explicit ApplicationBusAdaptor(ApplicationBusService *service);

public slots:
    // Platform data (a startup notification id, an activation token) is left unread.
    void Activate(const QVariantMap &platformData);
    void Open(const QStringList &uris, const QVariantMap &platformData);
    // The action's parameters are left unread: Velto's actions take none.
    void ActivateAction(const QString &actionName, const QVariantList &parameter, const QVariantMap &platformData);

private:
    ApplicationBusService *m_service;
};
