#include "Database.h"

#include "ReadOnlyDatabaseError.h"

#include <QFile>
#include <QFileInfo>
#include <QMetaObject>

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

// SQLite makes its journal files beside the database; in a folder that refuses new files it
// fails with a bare "unable to open" or "readonly" on the first statement. This tells the user
// why instead. The rights asked about are the ones the process holds now, not those it started
// with.
void throwIfFolderReadOnly(const QString &databasePath)
{
    const QString folder = QFileInfo(databasePath).absolutePath();
    if (::faccessat(AT_FDCWD, QFile::encodeName(folder).constData(), W_OK | X_OK, AT_EACCESS) == 0)
        return;
    if (errno == EACCES || errno == EROFS)
        throw ReadOnlyDatabaseError(ReadOnlyDatabaseError::FolderReadOnly{folder});
}

} // namespace

std::shared_ptr<Database> Database::create(const QString &path, std::optional<DatabaseChangeNotifier> notifier)
{
    std::shared_ptr<SQLiteConnection> connection;
    try {
        connection = SQLiteConnection::open(path, SQLiteConnection::Access::readWrite);
    } catch (const SQLiteError &) {
        throwIfFolderReadOnly(path);
        throw;
    }
    // Better said now than by the first save.
    if (connection->isReadOnly())
        throw ReadOnlyDatabaseError(ReadOnlyDatabaseError::FileReadOnly{path});
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
    // Returned, not awaited here: gcc 12 destroys a capturing lambda twice when it is a temporary
    // inside a co_await.
    return run([path = m_path](SQLiteConnection &connection) {
        try {
            connection.configure();
        } catch (const SQLiteError &) {
            throwIfFolderReadOnly(path);
            throw;
        }
        return Schema::migrate(connection);
    });
}

Task<DatabaseDiagnostics> Database::diagnostics()
{
    return run([path = m_path](SQLiteConnection &connection) { return DatabaseDiagnostics::take(connection, path); });
}
