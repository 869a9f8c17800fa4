#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QUrl>

#include <optional>

// The tags of one file or folder as the desktop's file managers keep them: the extended attribute
// "user.xdg.tags", UTF-8 tags joined by commas. An element of a tag list is a tag's name,
// optionally followed by a line feed and a colour number where a format keeps colours. Failures
// are FinderTagError.
namespace FolderTagAttribute {

inline constexpr char attributeName[] = "user.xdg.tags";

// Tags apart at each comma, blanks around them trimmed and empty ones dropped; absent unless
// `value` is UTF-8.
[[nodiscard]] std::optional<QStringList> decode(const QByteArray &value);
[[nodiscard]] QByteArray encode(const QStringList &tags);

// What stands before an element's last line feed, or the whole element.
[[nodiscard]] QString tagName(const QString &element);

// The elements after taking every copy of `previous` off and putting `desired` on at the end
// unless already there; absent when the names stay the same, so nothing need be written. Every
// other element keeps its place and colour, duplicates included; a new name is written bare.
[[nodiscard]] std::optional<QStringList> updatedElements(const QStringList &elements,
                                                         const std::optional<QString> &desired,
                                                         const std::optional<QString> &previous);

// The elements on the file at `path`; none when it has no attribute. An attribute that changes
// while it is read is read again, three times at most.
[[nodiscard]] QStringList readTags(const QByteArray &path);
void writeTags(const QByteArray &path, const QStringList &elements);

// Replaces the tag `previous` with `desired` on the folder at `url`, leaving every other tag as it
// is; writes nothing when the folder already has the right names, and never writes over an
// attribute it cannot read.
void applyTag(const std::optional<QString> &desired, const std::optional<QString> &previous, const QUrl &url);

} // namespace FolderTagAttribute
