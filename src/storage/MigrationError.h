#pragma once

#include "VeltoError.h"

#include <variant>

// Why a migration run refused to start: a database from a newer build, or a list out of order.
class MigrationError : public VeltoError {
public:
    struct DatabaseIsNewerThanApp {
        qint64 databaseVersion;
        qint64 app;
        bool operator==(const DatabaseIsNewerThanApp &) const = default;
    };
    struct MigrationsOutOfOrder {
        qint64 previous;
        qint64 next;
        bool operator==(const MigrationsOutOfOrder &) const = default;
    };
    using Reason = std::variant<DatabaseIsNewerThanApp, MigrationsOutOfOrder>;

    explicit MigrationError(Reason reason);

    [[nodiscard]] const Reason &reason() const { return m_reason; }

private:
    Reason m_reason;
};
