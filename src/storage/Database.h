#pragma once

#include "Card.h"
#include "CardTextColumn.h"
#include "ChecklistItem.h"
#include "ChecklistProgress.h"
#include "DatabaseChangeNotifier.h"
#include "DatabaseDiagnostics.h"
#include "Offload.h"
#include "Project.h"
#include "SQLiteConnection.h"
#include "Schema.h"
#include "Tag.h"
#include "Task.h"
#include "TimeSession.h"
#include "VeltoDate.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QSet>
#include <QString>
#include <QThread>
#include <QUrl>

#include <memory>
#include <optional>
#include <type_traits>

struct CardResolution;

// The single owner of the one read-write connection. Its operations run one at a time, in the
// order they were issued, on a worker thread of its own; the awaiting coroutine resumes on the
// application's thread with the result or the failure.
class Database : public std::enable_shared_from_this<Database> {
public:
    // Opens the connection (on the calling thread) and starts the worker; throws SQLiteError, or
    // ReadOnlyDatabaseError when the file or its folder refuses writes. Without a notifier the
    // database tells no other process of its writes.
    static std::shared_ptr<Database> create(const QString &path,
                                            std::optional<DatabaseChangeNotifier> notifier = std::nullopt);
    ~Database();

    Database(const Database &) = delete;
    Database &operator=(const Database &) = delete;

    [[nodiscard]] const QString &path() const { return m_path; }

    // Tells the other processes that something changed. A write job calls it last, after its
    // commit and only on success, so that whoever wakes on it reads the change.
    void postChange() const;

    // Configures the connection and brings the file to the current schema; a folder that refuses
    // the journal files fails here as ReadOnlyDatabaseError.
    Task<MigrationOutcome> open();

    // A snapshot of the file and its settings as this connection sees them; reads only.
    Task<DatabaseDiagnostics> diagnostics();

    // A write below posts once after it succeeded, unless its comment says otherwise; a failed
    // one posts nothing and leaves the tables as they were. A read fails whole on a malformed row.

    // cards
    Task<QList<Card>> allCards();
    Task<std::optional<Card>> card(QString id);
    Task<void> insertCard(Card card);
    // Inserts the card at the bottom of its column, with one more than the highest order there,
    // or 0 in an empty column, and gives it back as stored. The order is read under the same write
    // lock as the insert, so that another writer adding a card meanwhile cannot take it too.
    Task<Card> appendCard(Card card);
    // Puts the card at `position` among the cards of `status` as they stand before the move,
    // renumbering the column once if its orders ran out of room or two of them are equal. `now`
    // becomes the card's status_changed_at when the status changes.
    Task<void> moveCard(QString id, CardStatus status, qint64 position, VeltoDate now = VeltoDate::now());
    Task<void> relinkCard(QString id, QUrl folder, QByteArray bookmark);
    Task<void> setPriority(Priority priority, QString id);
    Task<void> setProject(std::optional<QString> projectID, QString id);
    Task<void> setDeadline(std::optional<VeltoDate> deadline, QString id);
    // Stores the value trimmed, or NULL when nothing is left of it.
    Task<void> setCardText(CardTextColumn column, std::optional<QString> value, QString id);
    // Silent: no other process shows the count, and it is written whenever a card is opened.
    Task<void> setLastSeenFileCount(qint64 count, QString id);
    // Records which status tag this program put on the card's folder; silent as well.
    Task<void> setFinderTag(std::optional<QString> tag, QString id);
    Task<void> deleteCard(QString id);
    // Rewrites only the cards that differ from their resolution, in one transaction, and posts
    // only if there was one.
    Task<void> applyResolutions(QHash<QString, CardResolution> resolutions);

    // checklist_items
    Task<QHash<QString, ChecklistProgress>> checklistProgress();
    Task<QList<ChecklistItem>> checklistItems(QString cardID);
    Task<void> insertChecklistItem(ChecklistItem item);
    // Inserts the item after the last of its card's checklist, under one write lock as with
    // appendCard, and gives it back as stored.
    Task<ChecklistItem> appendChecklistItem(ChecklistItem item);
    Task<void> setChecklistItemDone(bool isDone, QString id);
    Task<void> deleteChecklistItem(QString id);

    // projects
    Task<QList<Project>> allProjects();
    Task<void> insertProject(Project project);
    Task<void> updateProject(Project project);
    Task<void> deleteProject(QString id);

    // tags and card_tags
    Task<QList<Tag>> allTags();
    // Card id to the ids of its tags; a card with no tag has no entry.
    Task<QHash<QString, QSet<QString>>> tagLinks();
    // The tag of that name whatever its case, or a new one coloured by how many tags exist;
    // posts only when it made one. Looking up and making are one write, so that two writers
    // asking for the same name at once end with one tag.
    Task<Tag> findOrCreateTag(QString name);
    Task<void> attachTag(QString cardID, QString tagID);
    Task<void> detachTag(QString cardID, QString tagID);
    Task<void> recolorTag(QString color, QString id);
    Task<void> deleteTag(QString id);

    // time_sessions
    Task<QList<TimeSession>> allSessions();
    // Newest first.
    Task<QList<TimeSession>> sessions(QString cardID);
    Task<std::optional<TimeSession>> runningSession();
    Task<void> insertSession(TimeSession session);
    // Changes the start, end and note, and the mood only when asked to.
    Task<void> updateSession(TimeSession session, bool includingMood);
    Task<void> deleteSession(QString id);
    // Closes every open session at `at` and inserts `session`, as one change.
    Task<void> startSession(TimeSession session, VeltoDate at);
    // Closes the latest open session, never before its start; absent, and silent, when none was
    // closed.
    Task<std::optional<TimeSession>> stopRunningSession(VeltoDate at);

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
