#pragma once

#include <QString>

#include <array>
#include <optional>

// How a finished focus session felt. The raw values are the only words the system has for them.
enum class Mood { deep, focused, ok, scattered, interrupted };

inline constexpr std::array allMoods{Mood::deep, Mood::focused, Mood::ok, Mood::scattered,
                                     Mood::interrupted};

[[nodiscard]] std::optional<Mood> moodFromRawValue(const QString &raw);
[[nodiscard]] QString rawValue(Mood mood);
