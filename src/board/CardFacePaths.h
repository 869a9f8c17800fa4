#pragma once

#include <QString>

// How a card's folder path is told on the card face.
namespace CardFacePaths {

// Where the folder stands rather than the folder itself: the path without the home directory in
// front and without its last piece, the folder's own name. A path with one piece or none, once the
// home directory is off, is left as it is.
[[nodiscard]] QString shortPath(const QString &displayPath, const QString &homePath);

} // namespace CardFacePaths
