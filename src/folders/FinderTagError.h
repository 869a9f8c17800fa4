#pragma once

#include "VeltoError.h"

#include <QString>
#include <QUrl>

#include <variant>

// Why the status tag could not be put on, or taken off, one folder.
class FinderTagError : public VeltoError {
public:
    struct TagContainsNewline {
        QString tag;
        bool operator==(const TagContainsNewline &) const = default;
    };
    // The attribute separates its tags with commas and has no way to escape one.
    struct TagContainsComma {
        QString tag;
        bool operator==(const TagContainsComma &) const = default;
    };
    struct PathUnrepresentable {
        QUrl url;
        bool operator==(const PathUnrepresentable &) const = default;
    };
    struct WriteFailed {
        int code;
        bool operator==(const WriteFailed &) const = default;
    };
    struct ReadFailed {
        int code;
        bool operator==(const ReadFailed &) const = default;
    };
    struct TagsUnreadable {
        bool operator==(const TagsUnreadable &) const = default;
    };
    using Reason = std::variant<TagContainsNewline, TagContainsComma, PathUnrepresentable, WriteFailed, ReadFailed,
                                TagsUnreadable>;

    explicit FinderTagError(Reason reason);

    [[nodiscard]] const Reason &reason() const { return m_reason; }

    // `text` in double quotes, with quotes, backslashes and control characters escaped, so that a
    // line feed or a tab inside a tag can be seen.
    [[nodiscard]] static QString quoted(const QString &text);

private:
    Reason m_reason;
};
