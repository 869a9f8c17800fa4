#include "AppModel.h"

#include "AssignIfChanged.h"

#include <QPointer>

#include <exception>

using namespace Qt::StringLiterals;

AppModel::AppModel(AppGroupSources sources, std::shared_ptr<QSettings> defaults, QObject *parent)
    : QObject(parent), m_sources(std::move(sources)),
      m_focus(std::make_shared<FocusSettings>(defaults ? std::move(defaults) : std::make_shared<QSettings>()))
{
}

AppModel::~AppModel() = default;

void AppModel::setStartup(const Startup &startup)
{
    if (assignIfChanged(m_startup, startup))
        emit startupChanged();
}

void AppModel::setServices(std::optional<VeltoServices> services)
{
    if (!services && !m_services)
        return;
    m_services = std::move(services);
    emit servicesChanged();
}

void AppModel::setTimer(std::unique_ptr<TimerModel> timer)
{
    if (!timer && !m_timer)
        return;
    m_timer = std::move(timer);
    emit timerChanged();
}

Task<> AppModel::start()
{
    if (m_services)
        co_return;
    // A host process running automated checks must never touch the shared container.
    if (m_sources.environment.contains(u"XCTestConfigurationFilePath"_s))
        co_return;
    setStartup(Startup::starting());

    QPointer<AppModel> self(this);
    try {
        const auto container = AppGroupContainer::resolve(m_sources);
        container.ensureExists();
        const auto notifier = DatabaseChangeNotifier::forAppGroup(container.identifier);
        const QString databasePath = container.path + u"/Velto.sqlite"_s;
        auto database = Database::create(databasePath, notifier);
        const MigrationOutcome migration = co_await database->open();
        if (!self)
            co_return;

        setServices(VeltoServices{container, database, notifier, migration});
    } catch (const std::exception &failure) {
        if (self)
            setStartup(Startup::failed(QString::fromUtf8(failure.what())));
        co_return;
    }
    // Nothing after this point can fail. The board, diagnostics and analytics join the timer here,
    // in that order, as they are built.
    setTimer(std::make_unique<TimerModel>(*m_services, m_focus));
    setStartup(Startup::ready());

    // A session left running when Velto last ended is adopted once the board is on screen.
    co_await m_timer->reload();
}

Task<> AppModel::retry()
{
    setServices(std::nullopt);
    setTimer(nullptr);
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
