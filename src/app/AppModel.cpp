#include "AppModel.h"

#include <exception>

using namespace Qt::StringLiterals;

AppModel::AppModel(AppGroupSources sources, QObject *parent) : QObject(parent), m_sources(std::move(sources)) {}

void AppModel::setStartup(const Startup &startup)
{
    if (m_startup == startup)
        return;
    m_startup = startup;
    emit startupChanged();
}

void AppModel::setServices(std::optional<VeltoServices> services)
{
    if (!services && !m_services)
        return;
    m_services = std::move(services);
    emit servicesChanged();
}

Task<> AppModel::start()
{
    if (m_services)
        co_return;
    // A host process running automated checks must never touch the shared container.
    if (m_sources.environment.contains(u"XCTestConfigurationFilePath"_s))
        co_return;
    setStartup(Startup::starting());

    try {
        const auto container = AppGroupContainer::resolve(m_sources);
        container.ensureExists();
        const auto notifier = DatabaseChangeNotifier::forAppGroup(container.identifier);
        const QString databasePath = container.path + u"/Velto.sqlite"_s;
        auto database = Database::create(databasePath, notifier);
        const MigrationOutcome migration = co_await database->open();

        setServices(VeltoServices{container, database, notifier, migration});
    } catch (const std::exception &failure) {
        setStartup(Startup::failed(QString::fromUtf8(failure.what())));
        co_return;
    }
    // The timer, the board, diagnostics and analytics are built here, in that order, once they
    // exist; nothing after this point can fail.
    setStartup(Startup::ready());
}

Task<> AppModel::retry()
{
    setServices(std::nullopt);
    co_await start();
}

void AppModel::requestStart()
{
    start();
}

void AppModel::requestRetry()
{
    retry();
}
