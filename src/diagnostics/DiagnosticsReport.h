#pragma once

#include "AppGroupContainer.h"
#include "DatabaseDiagnostics.h"
#include "Schema.h"

#include <QString>

// One snapshot of everything the diagnostics window shows but the counters.
struct DiagnosticsReport {
    AppGroupContainer container;
    MigrationOutcome migration;
    DatabaseDiagnostics database;
    QString notificationName;

    bool operator==(const DiagnosticsReport &) const = default;
};
