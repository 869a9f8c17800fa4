#pragma once

#include <QList>
#include <QString>
#include <QStringList>
#include <QUrl>

#include <optional>

// Folders given to Velto from outside the window, such as `velto FOLDER...` or the file manager's
// "Open With". Only folders are taken; what else was given is left out.
struct FolderHandoff {
    QList<QUrl> folders;
    // Why nothing could be taken, in the user's words; absent when a folder was found.
    std::optional<QString> refusal;

    // Relative paths are read against `workingDirectory`.
    [[nodiscard]] static FolderHandoff fromArguments(const QStringList &paths, const QString &workingDirectory);

    bool operator==(const FolderHandoff &) const = default;
};
