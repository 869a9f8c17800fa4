#pragma once

#include "VeltoError.h"

#include <QString>

#include <variant>

// Why a stored row could not become a record, or why an operation found no row to act on.
class RepositoryError : public VeltoError {
public:
    struct MalformedRow {
        QString table;
        QString id;
        QString detail;
        bool operator==(const MalformedRow &) const = default;
    };
    struct NotFound {
        QString table;
        QString id;
        bool operator==(const NotFound &) const = default;
    };
    using Reason = std::variant<MalformedRow, NotFound>;

    explicit RepositoryError(Reason reason);

    [[nodiscard]] const Reason &reason() const { return m_reason; }

private:
    Reason m_reason;
};
