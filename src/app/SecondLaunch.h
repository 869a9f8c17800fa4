#pragma once

#include <QDBusConnection>
#include <QString>
#include <QStringList>

#include <optional>

// What a launch does when another Velto already holds the board: it hands its arguments to that
// one and ends, without opening the database.
namespace SecondLaunch {

// How long the running Velto has to answer, in milliseconds.
constexpr int answerTimeout = 10000;

// The arguments as the URIs the running Velto reads: paths made absolute against
// `workingDirectory`, since the running Velto has a working directory of its own.
[[nodiscard]] QStringList urisOf(const QStringList &arguments, const QString &workingDirectory);

// Hands the arguments to the Velto that answers on `bus` under `identifier`, or only brings it
// forward when there are none. Nothing when it took them; otherwise the one sentence saying so.
[[nodiscard]] std::optional<QString> handOver(QDBusConnection bus, const QString &identifier,
                                              const QStringList &arguments, const QString &workingDirectory);

// Asks the Velto that answers on `bus` under `identifier` to run a launcher's action. Nothing when
// it took it; otherwise the one sentence saying so.
[[nodiscard]] std::optional<QString> activateAction(QDBusConnection bus, const QString &identifier,
                                                    const QString &action);

} // namespace SecondLaunch
