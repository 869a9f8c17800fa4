#include "MigrationError.h"

using namespace Qt::StringLiterals;

namespace {

QString describe(const MigrationError::Reason &reason)
{
    if (auto newer = std::get_if<MigrationError::DatabaseIsNewerThanApp>(&reason))
        return u"This database is at schema version %1 but this build only understands version %2. "
               u"It was written by a newer version of Velto."_s.arg(newer->databaseVersion).arg(newer->app);
    const auto &order = std::get<MigrationError::MigrationsOutOfOrder>(reason);
    return u"Schema.migrations is not strictly increasing: %1 then %2"_s.arg(order.previous).arg(order.next);
}

} // namespace

MigrationError::MigrationError(Reason reason) : VeltoError(describe(reason)), m_reason(reason) {}
