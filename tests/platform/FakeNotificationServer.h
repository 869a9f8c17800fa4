#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

// The desktop's notification server on the private session bus, remembering each summary.
class FakeNotificationServer : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    FakeNotificationServer()
        : m_connection(QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"fake-notifications"_s))
    {
        EXPECT_TRUE(m_connection.registerObject(u"/org/freedesktop/Notifications"_s, this,
                                                QDBusConnection::ExportAllSlots));
        EXPECT_TRUE(m_connection.registerService(u"org.freedesktop.Notifications"_s));
    }
    ~FakeNotificationServer() override
    {
        m_connection.unregisterService(u"org.freedesktop.Notifications"_s);
        QDBusConnection::disconnectFromBus(m_connection.name());
    }

    QStringList summaries;
    QStringList applications;

public slots:
    uint Notify(const QString &application, uint, const QString &, const QString &summary, const QString &,
                const QStringList &, const QVariantMap &, int)
    {
        applications.append(application);
        summaries.append(summary);
        return uint(summaries.size());
    }

private:
    QDBusConnection m_connection;
};
