#pragma once

#include <QDBusConnection>
#include <QDBusVariant>
#include <QObject>
#include <QVariant>

// Whether the desktop asks applications to be dark, as its settings portal says, followed live.
// Without a portal or a session bus the answer is light, and stays so.
class DesktopColorScheme : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool prefersDark READ prefersDark NOTIFY prefersDarkChanged)

public:
    // Starts the first read and returns at once; the answer arrives later through the signal.
    explicit DesktopColorScheme(QDBusConnection bus = QDBusConnection::sessionBus(), QObject *parent = nullptr);

    [[nodiscard]] bool prefersDark() const { return m_prefersDark; }

    // Whether a colour-scheme value from the portal means dark: 1 is dark; 0 (no preference), 2
    // (light) and anything that isn't a whole number are light. The value may come wrapped in
    // variants, once in a change signal and twice in the reply of a read.
    [[nodiscard]] static bool meansDark(const QVariant &value);

signals:
    void prefersDarkChanged();

private slots:
    void settingChanged(const QString &group, const QString &key, const QDBusVariant &value);

private:
    void readInitialValue(QDBusConnection &bus);
    void setPrefersDark(bool prefersDark);

    bool m_prefersDark = false;
    // A change signal is newer than any read still on its way, so once one is heard the read's
    // answer no longer counts.
    bool m_heardChange = false;
};
