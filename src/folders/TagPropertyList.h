#pragma once

#include <QByteArray>
#include <QStringList>

#include <optional>

// The property-list form in which macOS keeps a file's tags, in the attribute
// "com.apple.metadata:_kMDItemUserTags": a root array of strings, each a tag's name, optionally
// followed by a line feed and a colour number. Any of the three forms of a property list is read
// (binary, XML, old-style text); the binary form, version 00, is written.
namespace TagPropertyList {

// Absent unless `data` is a property list whose root is an array of strings.
[[nodiscard]] std::optional<QStringList> decode(const QByteArray &data);

[[nodiscard]] QByteArray encode(const QStringList &tags);

} // namespace TagPropertyList
