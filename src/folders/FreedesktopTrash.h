#pragma once

#include <QString>
#include <QStringList>

// Where the desktop's Trash keeps what was thrown away: the user's home Trash, and the two places
// a volume may keep one at its top directory.
namespace FreedesktopTrash {

// $XDG_DATA_HOME/Trash/files, with $HOME/.local/share standing in for an unset or relative
// XDG_DATA_HOME; empty when neither is known.
[[nodiscard]] QString homeFilesDirectory();

// $topdir/.Trash/$uid/files and $topdir/.Trash-$uid/files.
[[nodiscard]] QStringList volumeFilesDirectories(const QString &topDirectory, uint userID);

// Whether `path` lies in a Trash, judged from its text alone: a component exactly ".Trash" or
// ".Trashes", a place inside the home Trash's files, or inside the files of a volume's
// ".Trash-$uid".
[[nodiscard]] bool holds(const QString &path, const QString &homeFilesDirectory, uint userID);

} // namespace FreedesktopTrash
