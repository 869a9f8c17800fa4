#pragma once

#include <QByteArray>
#include <QUrl>

#include <optional>

// Where a bookmark led, and the blob to store in its place when the old one had gone stale and a
// new one could be made.
struct ResolvedBookmark {
    QUrl url;
    std::optional<QByteArray> refreshedData;

    bool operator==(const ResolvedBookmark &) const = default;
};
