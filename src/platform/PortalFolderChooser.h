#pragma once

#include "FolderPicker.h"
#include "Task.h"

#include <QDBusConnection>
#include <QList>
#include <QString>
#include <QUrl>
#include <QVariantMap>

#include <optional>

// The desktop's own folder chooser, asked through its portal on the session bus.
namespace PortalFolderChooser {

// The oldest chooser that can be told to show folders only.
constexpr uint firstVersionWithFolders = 3;

// What the request asks for: folders only, one or several, the prompt on the accepting button, the
// folder to start in, and the token that names the request's answer.
[[nodiscard]] QVariantMap options(const FolderPickerRequest &request, const QString &handleToken);

// The chosen folders, none when the user cancelled, or absent when no portal that can choose
// folders answered. `parentWindow` is the portal's handle of the window to stay above, or empty.
Task<std::optional<QList<QUrl>>> choose(QDBusConnection bus, FolderPickerRequest question, QString parentWindow);

} // namespace PortalFolderChooser
