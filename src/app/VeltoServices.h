#pragma once

#include "AppGroupContainer.h"
#include "Database.h"
#include "DatabaseChangeNotifier.h"
#include "Schema.h"

#include <memory>

// What every model needs from a successful start-up; only AppModel builds it.
struct VeltoServices {
    AppGroupContainer container;
    std::shared_ptr<Database> database;
    DatabaseChangeNotifier notifier;
    MigrationOutcome migration;
};
