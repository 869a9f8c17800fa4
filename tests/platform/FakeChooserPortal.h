#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QObject>
#include <QTest>
#include <QVariantMap>

#include <gtest/gtest.h>

#include <optional>

using namespace Qt::StringLiterals;

inline const QString fakePortalService = u"org.freedesktop.portal.Desktop"_s;
inline const QString fakePortalPath = u"/org/freedesktop/portal/desktop"_s;

// The desktop's file chooser, answered from its own connection on the private session bus: it
// keeps what it was asked and answers when the test says so, as a user would.
class FakeChooserPortal : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.FileChooser")
    Q_PROPERTY(uint version READ version)

public:
    explicit FakeChooserPortal(uint version = 3)
        : m_connection(QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"fake-chooser"_s))
        , m_version(version)
    {
        EXPECT_TRUE(m_connection.registerObject(fakePortalPath, this,
                                                QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllProperties));
        EXPECT_TRUE(m_connection.registerService(fakePortalService));
    }

    ~FakeChooserPortal() override
    {
        leave();
        QDBusConnection::disconnectFromBus(m_connection.name());
    }

    [[nodiscard]] uint version() const { return m_version; }

    struct Asked {
        QString parentWindow;
        QString title;
        QVariantMap options;
    };
    std::optional<Asked> asked;

    bool waitForQuestion() { return QTest::qWaitFor([this] { return asked.has_value(); }, 5000); }

    void respond(uint code, const QStringList &uris)
    {
        QDBusMessage response = QDBusMessage::createSignal(m_handle, u"org.freedesktop.portal.Request"_s,
                                                           u"Response"_s);
        response << code << QVariantMap{{u"uris"_s, uris}};
        EXPECT_TRUE(m_connection.send(response));
    }

    void leave() { m_connection.unregisterService(fakePortalService); }

public slots:
    QDBusObjectPath OpenFile(const QString &parentWindow, const QString &title, const QVariantMap &options)
    {
        asked = Asked{parentWindow, title, options};
        const QString sender = message().service().mid(1).replace(u'.', u'_');
        m_handle = fakePortalPath + u"/request/"_s + sender + u'/' + options.value(u"handle_token"_s).toString();
        return QDBusObjectPath(m_handle);
    }

private:
    QDBusConnection m_connection;
    uint m_version;
    QString m_handle;
};
