#pragma once

#include <QString>

// How Velto's identifier becomes names the session bus accepts.
namespace BusName {

// One element of a bus or interface name: characters outside [A-Za-z0-9_] become "_", and an
// element that is empty or starts with a digit gets a leading "_".
[[nodiscard]] QString validElement(QString element);

// The identifier with each of its dot-separated elements made valid.
[[nodiscard]] QString fromIdentifier(const QString &identifier);

// The object path the desktop expects for an application's bus name: its dots become slashes.
[[nodiscard]] QString objectPath(const QString &busName);

} // namespace BusName
