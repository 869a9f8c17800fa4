#pragma once

#include "AppearancePreference.h"
#include "DesktopColorScheme.h"

#include <QObject>
#include <QSettings>
#include <QString>
#include <QtQml/qqmlregistration.h>

#include <memory>

// The user's choice of appearance, kept in the application's settings store, and whether Velto is
// dark as a result of it: a fixed choice holds whatever the desktop does, the system choice follows
// the desktop as it changes.
class AppearanceSetting : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application makes its one AppearanceSetting")
    // The raw value, "system", "light" or "dark"; another word written here is ignored.
    Q_PROPERTY(QString preference READ preferenceRawValue WRITE setPreferenceRawValue NOTIFY preferenceChanged)
    Q_PROPERTY(bool isDark READ isDark NOTIFY isDarkChanged)

public:
    // `desktop` must outlive this setting.
    AppearanceSetting(std::shared_ptr<QSettings> defaults, DesktopColorScheme *desktop, QObject *parent = nullptr);

    [[nodiscard]] AppearancePreference preference() const { return m_preference; }
    [[nodiscard]] QString preferenceRawValue() const { return rawValue(m_preference); }
    [[nodiscard]] bool isDark() const { return m_isDark; }

    // Always stores the raw value and applies it, even when nothing changed, so the store holds
    // the word even if it was missing or damaged.
    void setPreference(AppearancePreference preference);
    void setPreferenceRawValue(const QString &raw);

signals:
    void preferenceChanged();
    void isDarkChanged();

private:
    void apply();
    [[nodiscard]] bool resolvesToDark() const;

    std::shared_ptr<QSettings> m_defaults;
    DesktopColorScheme *m_desktop;
    AppearancePreference m_preference;
    bool m_isDark = false;
};
