#include "DesktopColorScheme.h"

#include "AssignIfChanged.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView portalService = u"org.freedesktop.portal.Desktop";
constexpr QStringView portalPath = u"/org/freedesktop/portal/desktop";
constexpr QStringView settingsInterface = u"org.freedesktop.portal.Settings";
constexpr QStringView appearanceGroup = u"org.freedesktop.appearance";
constexpr QStringView colorSchemeKey = u"color-scheme";

constexpr uint darkScheme = 1;

// The portal sends an unsigned number; a signed one of the same value is taken alike.
bool isDarkNumber(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::UInt:
    case QMetaType::Int:
        return value.toLongLong() == darkScheme;
    default:
        return false;
    }
}

} // namespace

DesktopColorScheme::DesktopColorScheme(QDBusConnection bus, QObject *parent) : QObject(parent)
{
    if (!bus.isConnected())
        return;
    // Should subscribing fail, the first answer still counts; it just isn't followed.
    bus.connect(portalService.toString(), portalPath.toString(), settingsInterface.toString(), u"SettingChanged"_s,
                this, SLOT(settingChanged(QString,QString,QDBusVariant)));
    readInitialValue(bus);
}

bool DesktopColorScheme::meansDark(const QVariant &value)
{
    QVariant unwrapped = value;
    while (unwrapped.metaType() == QMetaType::fromType<QDBusVariant>())
        unwrapped = unwrapped.value<QDBusVariant>().variant();
    return isDarkNumber(unwrapped);
}

void DesktopColorScheme::readInitialValue(QDBusConnection &bus)
{
    QDBusMessage read = QDBusMessage::createMethodCall(portalService.toString(), portalPath.toString(),
                                                       settingsInterface.toString(), u"Read"_s);
    read << appearanceGroup.toString() << colorSchemeKey.toString();
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(read), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher *finished) {
        finished->deleteLater();
        const QDBusPendingReply<QDBusVariant> reply = *finished;
        // No portal, or one without this setting: the answer stays light.
        if (reply.isError() || m_heardChange)
            return;
        setPrefersDark(meansDark(QVariant::fromValue(reply.value())));
    });
}

void DesktopColorScheme::settingChanged(const QString &group, const QString &key, const QDBusVariant &value)
{
    if (group != appearanceGroup || key != colorSchemeKey)
        return;
    m_heardChange = true;
    setPrefersDark(meansDark(value.variant()));
}

void DesktopColorScheme::setPrefersDark(bool prefersDark)
{
    if (assignIfChanged(m_prefersDark, prefersDark))
        emit prefersDarkChanged();
}
