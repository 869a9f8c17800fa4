#pragma once

#include "AppGroupContainer.h"
#include "VeltoError.h"

#include <variant>

// Why the shared container could not be used.
class AppGroupError : public VeltoError {
public:
    struct ContainerUnreachable {
        AppGroupContainer container;
        QString underlying;
    };
    struct IdentifierNotConfigured {};
    using Reason = std::variant<ContainerUnreachable, IdentifierNotConfigured>;

    explicit AppGroupError(Reason reason);

    [[nodiscard]] const Reason &reason() const { return m_reason; }

private:
    Reason m_reason;
};
