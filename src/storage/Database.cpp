#include "Database.h"

#include <QMetaObject>

using namespace Qt::StringLiterals;

std::shared_ptr<Database> Database::create(const QString &path, std::optional<DatabaseChangeNotifier> notifier)
{
    auto connection = SQLiteConnection::open(path, SQLiteConnection::Access::readWrite);
    return std::shared_ptr<Database>(new Database(path, std::move(connection), std::move(notifier)));
}

Database::Database(QString path, std::shared_ptr<SQLiteConnection> connection,
                   std::optional<DatabaseChangeNotifier> notifier)
    : m_path(std::move(path)), m_connection(std::move(connection)), m_notifier(std::move(notifier)),
      m_worker(std::make_unique<QObject>())
{
    m_thread.setObjectName(u"Velto database"_s);
    m_worker->moveToThread(&m_thread);
    m_thread.start();
}

Database::~Database()
{
    m_thread.quit();
    m_thread.wait();
}

void Database::postChange() const
{
    if (m_notifier)
        m_notifier->post();
}

void Database::dispatch(std::function<void()> work)
{
    // Queued calls to one object are delivered in order, one at a time: the worker's event
    // queue is the serial executor.
    QMetaObject::invokeMethod(m_worker.get(), std::move(work), Qt::QueuedConnection);
}

Task<MigrationOutcome> Database::open()
{
    co_return co_await run([](SQLiteConnection &connection) {
        connection.configure();
        return Schema::migrate(connection);
    });
}
