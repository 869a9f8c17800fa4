#pragma once

#include "DatabaseChangeNotifier.h"
#include "Offload.h"
#include "SQLiteConnection.h"
#include "Schema.h"
#include "Task.h"

#include <QString>
#include <QThread>

#include <memory>
#include <optional>
#include <type_traits>

// The single owner of the one read-write connection. Its operations run one at a time, in the
// order they were issued, on a worker thread of its own; the awaiting coroutine resumes on the
// application's thread with the result or the failure.
class Database : public std::enable_shared_from_this<Database> {
public:
    // Opens the connection (on the calling thread) and starts the worker; throws SQLiteError.
    // Without a notifier the database tells no other process of its writes.
    static std::shared_ptr<Database> create(const QString &path,
                                            std::optional<DatabaseChangeNotifier> notifier = std::nullopt);
    ~Database();

    Database(const Database &) = delete;
    Database &operator=(const Database &) = delete;

    [[nodiscard]] const QString &path() const { return m_path; }

    // Tells the other processes that something changed. A write job calls it last, after its
    // commit and only on success, so that whoever wakes on it reads the change.
    void postChange() const;

    // Configures the connection and brings the file to the current schema.
    Task<MigrationOutcome> open();

    // Runs `job` with the connection on the worker thread.
    template <typename Job>
    auto run(Job job) -> Task<std::invoke_result_t<Job, SQLiteConnection &>>
    {
        using Result = std::invoke_result_t<Job, SQLiteConnection &>;
        auto self = shared_from_this(); // the waiting task keeps the database alive
        return awaitOffload(Offload<Result>(
            [self](std::function<void()> work) { self->dispatch(std::move(work)); },
            [self, job = std::move(job)]() mutable { return job(*self->m_connection); }));
    }

private:
    Database(QString path, std::shared_ptr<SQLiteConnection> connection, std::optional<DatabaseChangeNotifier> notifier);
    void dispatch(std::function<void()> work);

    QString m_path;
    std::shared_ptr<SQLiteConnection> m_connection;
    std::optional<DatabaseChangeNotifier> m_notifier;
    QThread m_thread;
    std::unique_ptr<QObject> m_worker;
};
