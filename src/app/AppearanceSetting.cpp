#include "AppearanceSetting.h"

#include "AssignIfChanged.h"

#include <QVariant>

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView preferenceKey = u"appearancePreference";

// Anything but one of the three words, including a list or no value at all, means the desktop's.
AppearancePreference storedPreference(const QVariant &value)
{
    if (value.typeId() != QMetaType::QString)
        return AppearancePreference::system;
    return appearancePreferenceFromRawValue(value.toString()).value_or(AppearancePreference::system);
}

} // namespace

AppearanceSetting::AppearanceSetting(std::shared_ptr<QSettings> defaults, DesktopColorScheme *desktop, QObject *parent)
    : QObject(parent)
    , m_defaults(std::move(defaults))
    , m_desktop(desktop)
    , m_preference(storedPreference(m_defaults->value(preferenceKey)))
{
    connect(m_desktop, &DesktopColorScheme::prefersDarkChanged, this, &AppearanceSetting::apply);
    apply();
}

void AppearanceSetting::setPreference(AppearancePreference preference)
{
    const bool changed = assignIfChanged(m_preference, preference);
    m_defaults->setValue(preferenceKey, rawValue(preference));
    if (changed)
        emit preferenceChanged();
    apply();
}

void AppearanceSetting::setPreferenceRawValue(const QString &raw)
{
    if (const auto preference = appearancePreferenceFromRawValue(raw))
        setPreference(*preference);
}

void AppearanceSetting::apply()
{
    if (assignIfChanged(m_isDark, resolvesToDark()))
        emit isDarkChanged();
}

bool AppearanceSetting::resolvesToDark() const
{
    switch (m_preference) {
    case AppearancePreference::system: return m_desktop->prefersDark();
    case AppearancePreference::light: return false;
    case AppearancePreference::dark: return true;
    }
    Q_UNREACHABLE();
}
