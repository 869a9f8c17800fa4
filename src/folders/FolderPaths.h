#pragma once

#include <QString>

#include <optional>

// Plain-text arithmetic on absolute local paths, component by component, without touching the disk.
namespace FolderPaths {

// The last component ("/" for the root itself), as a URL's last path component reads.
[[nodiscard]] QString lastComponent(const QString &path);

// The path without its last component; the root is its own parent.
[[nodiscard]] QString parent(const QString &path);

// `path` below `ancestor`, as the part after it ("" when they are equal); absent when `path` does
// not lie at or below `ancestor`. "/a/bc" does not lie below "/a/b".
[[nodiscard]] std::optional<QString> relativeTo(const QString &path, const QString &ancestor);

// `relative` (as relativeTo gives it) put back below `directory`.
[[nodiscard]] QString joined(const QString &directory, const QString &relative);

} // namespace FolderPaths
