#include "AppModel.h"

#include "AppGroupError.h"
#include "ApplicationBusService.h"
#include "AssignIfChanged.h"
#include "DesktopFolderPicker.h"
#include "FileManagerReveal.h"
#include "InstanceLockError.h"
#include "VeltoAppDelegate.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QGuiApplication>
#include <QFileInfo>
#include <QPointer>
#include <QUrl>

#include <exception>

using namespace Qt::StringLiterals;

AppModel::AppModel(AppGroupSources sources, std::shared_ptr<QSettings> defaults, std::shared_ptr<FolderPicker> picker,
                   QObject *parent)
    : QObject(parent), m_sources(std::move(sources)),
      m_focus(std::make_shared<FocusSettings>(defaults ? std::move(defaults) : std::make_shared<QSettings>())),
      m_picker(picker ? std::move(picker) : std::make_shared<DesktopFolderPicker>())
{
    // Without a usable identifier there is no data folder to judge; start-up says why.
    try {
        m_dataFolder = AppGroupContainer::resolve(m_sources).path;
    } catch (const AppGroupError &) {
        return;
    }
    m_installLocation =
        InstallLocation::verdict(m_dataFolder, InstallLocation::isOnReadOnlyVolume(m_dataFolder));
}

void AppModel::revealDataFolder() const
{
    if (m_dataFolder.isEmpty())
        return;
    // The folder that holds it, or the nearest one above that exists.
    QString shown = QFileInfo(m_dataFolder).path();
    while (!QFileInfo::exists(shown) && QFileInfo(shown).path() != shown)
        shown = QFileInfo(shown).path();
    QDesktopServices::openUrl(QUrl::fromLocalFile(shown));
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

void AppModel::setBoard(std::unique_ptr<BoardModel> board)
{
    if (!board && !m_board)
        return;
    m_board = std::move(board);
    emit boardChanged();
}

void AppModel::setDiagnostics(std::unique_ptr<DiagnosticsModel> diagnostics)
{
    if (!diagnostics && !m_diagnostics)
        return;
    m_diagnostics = std::move(diagnostics);
    emit diagnosticsChanged();
}

void AppModel::setAnalytics(std::unique_ptr<AnalyticsModel> analytics)
{
    if (!analytics && !m_analytics)
        return;
    m_analytics = std::move(analytics);
    emit analyticsChanged();
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
        lockContainer(container);
        const auto notifier = DatabaseChangeNotifier::forAppGroup(container.identifier);
        const QString databasePath = container.path + u"/Velto.sqlite"_s;
        auto database = Database::create(databasePath, notifier);
        const MigrationOutcome migration = co_await database->open();
        if (!self)
            co_return;

        setServices(VeltoServices{container, database, notifier, migration});
    } catch (const std::exception &failure) {
        if (self) {
            m_handedOverFolders.clear();
            m_handoffRefusal.reset();
            m_wantsFolderChooser = false;
            setStartup(Startup::failed(QString::fromUtf8(failure.what())));
        }
        co_return;
    }
    // Nothing after this point can fail.
    setTimer(std::make_unique<TimerModel>(*m_services, m_focus));
    setBoard(std::make_unique<BoardModel>(*m_services, m_timer.get(), m_picker,
                                          [](const QUrl &url) { return revealInFileManager(url); }));
    setDiagnostics(std::make_unique<DiagnosticsModel>(*m_services));
    setAnalytics(std::make_unique<AnalyticsModel>(*m_services));
    wireApplicationDelegate();
    setStartup(Startup::ready());

    // The board appears at once and fills in when its first load ends.
    co_await m_board->reload();
    if (!self || !m_timer)
        co_return;
    // A session left running when Velto last ended is adopted once the board is on screen.
    co_await m_timer->reload();
    if (!self || !m_board)
        co_return;
    m_hasLoadedBoard = true;
    co_await addHandedOverFolders();
    if (self && std::exchange(m_wantsFolderChooser, false))
        requestAddFolders();
}

Task<> AppModel::retry()
{
    m_hasLoadedBoard = false;
    m_wantsFolderChooser = false;
    setServices(std::nullopt);
    setBoard(nullptr);
    setDiagnostics(nullptr);
    setTimer(nullptr);
    setAnalytics(nullptr);
    co_await start();
}

AppModel::ContainerClaim AppModel::claimContainer()
{
    if (m_sources.environment.contains(u"XCTestConfigurationFilePath"_s))
        return {};
    ContainerClaim claim;
    try {
        const auto container = AppGroupContainer::resolve(m_sources);
        claim.identifier = container.identifier;
        container.ensureExists();
        lockContainer(container);
    } catch (const InstanceLockError &failure) {
        claim.heldElsewhere = std::holds_alternative<InstanceLockError::HeldElsewhere>(failure.reason());
    } catch (const std::exception &) {
        // start() meets the same failure and shows it.
    }
    return claim;
}

void AppModel::lockContainer(const AppGroupContainer &container)
{
    const QString path = container.path + u"/Velto.lock"_s;
    if (m_instanceLock && m_instanceLock->path() == path)
        return;
    m_instanceLock = InstanceLock::take(path);
    if (!m_instanceLock)
        throw InstanceLockError(InstanceLockError::HeldElsewhere{container.path});
}

void AppModel::handOver(const FolderHandoff &handoff)
{
    m_handedOverFolders.append(handoff.folders);
    if (handoff.refusal)
        m_handoffRefusal = handoff.refusal;
    if (m_hasLoadedBoard)
        addHandedOverFolders();
}

void AppModel::handOverURIs(const QStringList &uris)
{
    // Launches send absolute URIs, so no working directory of this process is read into them.
    handOver(FolderHandoff::fromArguments(uris, QDir::rootPath()));
}

void AppModel::requestAddFolders()
{
    if (m_hasLoadedBoard && m_board)
        m_board->requestAddFoldersFromPanel();
    else
        m_wantsFolderChooser = true;
}

void AppModel::runAction(const QString &name)
{
    emit activationRequested();
    if (name == addFolderAction())
        requestAddFolders();
}

void AppModel::answerLaunches(ApplicationBusService &launches)
{
    connect(&launches, &ApplicationBusService::activationRequested, this, &AppModel::activationRequested);
    connect(&launches, &ApplicationBusService::openRequested, this, &AppModel::handOverURIs);
    connect(&launches, &ApplicationBusService::actionRequested, this, &AppModel::runAction);
}

Task<> AppModel::addHandedOverFolders()
{
    QPointer<AppModel> self(this);
    const QList<QUrl> folders = std::exchange(m_handedOverFolders, {});
    const std::optional<QString> refusal = std::exchange(m_handoffRefusal, std::nullopt);
    if (!folders.isEmpty() && m_board)
        co_await m_board->addFolders(folders);
    if (!self || !refusal || !m_board)
        co_return;
    // A file manager's action leaves its own window in front, where the banner would go unseen.
    if (m_notification && QGuiApplication::focusWindow() == nullptr)
        m_notification->post(*refusal);
    else // after the adding, whose reload would clear the banner
        m_board->showMessage(*refusal);
}

void AppModel::wireApplicationDelegate()
{
    VeltoAppDelegate *delegate = VeltoAppDelegate::of(QCoreApplication::instance());
    if (delegate == nullptr)
        return;
    const QPointer<AppModel> weak(this);
    delegate->setHooks([weak] { return weak && weak->m_timer && weak->m_timer->hasRunningSession(); },
                       [weak] { return stopTimerOf(weak); });
}

Task<> AppModel::stopTimerOf(QPointer<AppModel> app)
{
    if (app && app->m_timer)
        co_await app->m_timer->stopSilently();
}

void AppModel::requestStart()
{
    start();
}

void AppModel::requestRetry()
{
    retry();
}
