#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QStringList>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

// The desktop's file manager on the private session bus, remembering what it was asked to show.
class FakeFileManager : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")

public:
    FakeFileManager() : m_connection(QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"fake-files"_s))
    {
        EXPECT_TRUE(m_connection.registerObject(u"/org/freedesktop/FileManager1"_s, this,
                                                QDBusConnection::ExportAllSlots));
        EXPECT_TRUE(m_connection.registerService(u"org.freedesktop.FileManager1"_s));
    }
    ~FakeFileManager() override
    {
        m_connection.unregisterService(u"org.freedesktop.FileManager1"_s);
        QDBusConnection::disconnectFromBus(m_connection.name());
    }

    QStringList shown;

public slots:
    void ShowItems(const QStringList &uris, const QString &) { shown += uris; }

private:
    QDBusConnection m_connection;
};
