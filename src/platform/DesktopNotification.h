#pragma once

#include <QDBusConnection>
#include <QDBusPendingCall>
#include <QString>

// A sentence shown by the desktop's notification server, for when no window of Velto is in front
// to show it. Without a server nothing is shown and nothing fails.
class DesktopNotification {
public:
    explicit DesktopNotification(QDBusConnection bus = QDBusConnection::sessionBus());

    // Sends at once and does not wait for the server; a process about to end waits on the call.
    QDBusPendingCall post(const QString &sentence) const;

private:
    QDBusConnection m_bus;
};
