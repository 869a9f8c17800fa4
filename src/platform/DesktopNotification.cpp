#include "DesktopNotification.h"

#include <QDBusMessage>
#include <QVariantMap>

using namespace Qt::StringLiterals;

DesktopNotification::DesktopNotification(QDBusConnection bus) : m_bus(std::move(bus))
{
}

QDBusPendingCall DesktopNotification::post(const QString &sentence) const
{
    QDBusMessage call = QDBusMessage::createMethodCall(u"org.freedesktop.Notifications"_s,
                                                       u"/org/freedesktop/Notifications"_s,
                                                       u"org.freedesktop.Notifications"_s, u"Notify"_s);
    // The sentence is the summary: it says all there is, and servers show a summary in any case.
    // The desktop entry lets the server show Velto's name and icon.
    const QVariantMap hints{{u"desktop-entry"_s, u"io.quillmere.Velto"_s}};
    call << u"Velto"_s << 0U << u"io.quillmere.Velto"_s << sentence << QString() << QStringList() << hints << -1;
    return m_bus.asyncCall(call);
}
