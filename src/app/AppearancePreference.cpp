#include "AppearancePreference.h"

#include "RawValueLookup.h"

using namespace Qt::StringLiterals;

std::optional<AppearancePreference> appearancePreferenceFromRawValue(const QString &raw)
{
    return caseWithRawValue<AppearancePreference>(allAppearancePreferences, raw);
}

QString rawValue(AppearancePreference preference)
{
    switch (preference) {
    case AppearancePreference::system: return u"system"_s;
    case AppearancePreference::light: return u"light"_s;
    case AppearancePreference::dark: return u"dark"_s;
    }
    Q_UNREACHABLE();
}
