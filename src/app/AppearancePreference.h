#pragma once

#include <QString>

#include <array>
#include <optional>

// Which appearance Velto takes: the desktop's, or always light, or always dark. The raw values are
// the words kept in the settings store.
enum class AppearancePreference { system, light, dark };

inline constexpr std::array allAppearancePreferences{AppearancePreference::system, AppearancePreference::light,
                                                     AppearancePreference::dark};

[[nodiscard]] std::optional<AppearancePreference> appearancePreferenceFromRawValue(const QString &raw);
[[nodiscard]] QString rawValue(AppearancePreference preference);
