#pragma once

#include <QByteArray>
#include <QUrl>

#include <optional>

// Where a bookmark led, and the blob to store in its place when the old one had gone stale and a
// new one could be made.
struct ResolvedBookmark {
    QUrl url;
    std::optional<QByteArray> refreshedData;
    // Whether the bookmarked item, confirmed at `url` while resolving, is a folder; absent when
    // what stands at `url` was not confirmed to be it. Spares a caller a second look at the disk.
    std::optional<bool> isDirectory;
    // When what was confirmed at `url` last changed (see FileIdentity::modified); absent, like
    // `isDirectory`, when it was not confirmed there.
    std::optional<qint64> modified;

    bool operator==(const ResolvedBookmark &) const = default;
};
