#include "AppModel.h"

#include "AssignIfChanged.h"
#include "FileManagerReveal.h"

#include <QPointer>

#include <exception>

using namespace Qt::StringLiterals;

AppModel::AppModel(AppGroupSources sources, std::shared_ptr<QSettings> defaults, std::shared_ptr<FolderPicker> picker,
                   QObject *parent)
    : QObject(parent), m_sources(std::move(sources)),
      m_focus(std::make_shared<FocusSettings>(defaults ? std::move(defaults) : std::make_shared<QSettings>())),
      m_folderDialog(picker ? nullptr : std::make_shared<DialogFolderPicker>()),
      m_picker(picker ? std::move(picker) : m_folderDialog)
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

void AppModel::setBoard(std::unique_ptr<BoardModel> board)
{
    if (!board && !m_board)
        return;
    m_board = std::move(board);
    emit boardChanged();
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
        if (self) {
            m_handedOverFolders.clear();
            setStartup(Startup::failed(QString::fromUtf8(failure.what())));
        }
        co_return;
    }
    // Nothing after this point can fail. Diagnostics and analytics join the timer and the board
    // here, in that order, as they are built.
    setTimer(std::make_unique<TimerModel>(*m_services, m_focus));
    setBoard(std::make_unique<BoardModel>(*m_services, m_timer.get(), m_picker, revealInFileManager));
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
}

Task<> AppModel::retry()
{
    m_hasLoadedBoard = false;
    setServices(std::nullopt);
    setBoard(nullptr);
    setTimer(nullptr);
    co_await start();
}

void AppModel::handOverFolders(const QList<QUrl> &folders)
{
    m_handedOverFolders.append(folders);
    if (m_hasLoadedBoard)
        addHandedOverFolders();
}

Task<> AppModel::addHandedOverFolders()
{
    const QList<QUrl> folders = std::exchange(m_handedOverFolders, {});
    if (!folders.isEmpty() && m_board)
        co_await m_board->addFolders(folders);
}

void AppModel::requestStart()
{
    start();
}

void AppModel::requestRetry()
{
    retry();
}
