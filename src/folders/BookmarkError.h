#pragma once

#include "VeltoError.h"

#include <QString>

#include <variant>

// Why a bookmark could not be made or followed. `underlying` is the system's own description of
// the cause, as a user reads it.
class BookmarkError : public VeltoError {
public:
    struct CouldNotCreate {
        QString path;
        QString underlying;
        bool operator==(const CouldNotCreate &) const = default;
    };
    struct CouldNotResolve {
        QString underlying;
        bool operator==(const CouldNotResolve &) const = default;
    };
    // For a caller that must refuse a plain file; nothing in bookmarking itself raises it.
    struct NotADirectory {
        QString path;
        bool operator==(const NotADirectory &) const = default;
    };
    using Reason = std::variant<CouldNotCreate, CouldNotResolve, NotADirectory>;

    explicit BookmarkError(Reason reason);

    [[nodiscard]] const Reason &reason() const { return m_reason; }

private:
    Reason m_reason;
};
