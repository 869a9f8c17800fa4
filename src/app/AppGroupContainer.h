#pragma once

#include "AppGroupSources.h"

#include <QString>

#include <optional>

// The directory shared by Velto and the processes that read its database beside it, and how it
// was found. It creates that directory and does no other file work.
struct AppGroupContainer {
    enum class Route { entitlement, homeDirectoryFallback };

    QString identifier;
    QString path;
    Route route = Route::entitlement;

    bool operator==(const AppGroupContainer &) const = default;

    // Throws AppGroupError (identifierNotConfigured); creates nothing on disk.
    static AppGroupContainer resolve(const AppGroupSources &sources);
    // Creates the directory with its parents; an existing one is fine. Throws AppGroupError.
    void ensureExists() const;

    static QString configuredIdentifier(const AppGroupSources &sources);
    static bool isUsableIdentifier(const QString &value);
    static QString userHomeDirectory(const AppGroupSources &sources);
    // The container the desktop gives to an identifier: the user's data directory, when known.
    static std::optional<QString> systemContainer(const QString &identifier, const AppGroupSources &sources);
};

[[nodiscard]] QString rawValue(AppGroupContainer::Route route);
[[nodiscard]] std::optional<AppGroupContainer::Route> routeFromRawValue(const QString &raw);
