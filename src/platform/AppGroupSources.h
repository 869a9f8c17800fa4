#pragma once

#include <QProcessEnvironment>
#include <QString>

#include <optional>

// What the operating system tells Velto about where its shared container is: the identifier
// compiled into the build, the process environment, and the account's home directory. Tests
// hand in their own.
struct AppGroupSources {
    std::optional<QString> bundleValue;
    QProcessEnvironment environment;
    // The account database's home directory (getpwuid), empty when it has none.
    QString accountHome;

    static AppGroupSources ofThisProcess();

    [[nodiscard]] std::optional<QString> variable(const QString &name) const;
};
