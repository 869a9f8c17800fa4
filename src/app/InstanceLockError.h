#pragma once

#include "VeltoError.h"

#include <QString>

#include <variant>

// Why this process may not write to the container's database.
class InstanceLockError : public VeltoError {
public:
    struct HeldElsewhere {
        QString container;
    };
    struct Unusable {
        QString path;
        QString underlying;
    };
    using Reason = std::variant<HeldElsewhere, Unusable>;

    explicit InstanceLockError(Reason reason);

    [[nodiscard]] const Reason &reason() const { return m_reason; }

private:
    Reason m_reason;
};
