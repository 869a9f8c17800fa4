#pragma once

#include "Await.h"
#include "BoardModel.h"
#include "Database.h"
#include "FocusSettings.h"
#include "SecurityScopedBookmark.h"
#include "SettledFolder.h"
#include "TimerModel.h"

#include <QDir>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>

#include <memory>

// Real folders, each with its card, spread over the four columns, in a fresh database, with the
// board and the timer the application would put on screen over them.
class BenchBoard {
public:
    // The database is made at `databasePath` when one is given, else beside the folders.
    explicit BenchBoard(int count, const QString &databasePath = {})
        : m_databasePath(databasePath.isEmpty() ? m_dir.filePath(QStringLiteral("Velto.sqlite")) : databasePath),
          m_database(Database::create(m_databasePath))
    {
        await(m_database->open());
        QDir().mkpath(m_dir.filePath(QStringLiteral("folders")));
        addCards(count);
        const VeltoServices services{AppGroupContainer{}, m_database, DatabaseChangeNotifier{}, MigrationOutcome{}};
        m_timer = std::make_unique<TimerModel>(
            services, std::make_shared<FocusSettings>(std::make_shared<QSettings>(
                          m_dir.filePath(QStringLiteral("settings.ini")), QSettings::IniFormat)));
        m_board = std::make_unique<BoardModel>(services, m_timer.get(), nullptr,
                                               [](const QUrl &) -> Task<bool> { co_return true; });
    }

    // Writes `count` more cards to the database; the board shows them after its next reload.
    void addCards(int count)
    {
        if (count == 0)
            return;
        const int first = int(m_paths.size());
        Task<void> last = m_database->insertCard(card(first));
        for (int i = first + 1; i < first + count; ++i)
            last = m_database->insertCard(card(i));
        await(std::move(last)); // the executor is serial: the last one done means all are
    }

    // Deletes the folders of `count` cards spread evenly over the board, for good.
    void deleteFolders(int count)
    {
        if (count == 0)
            return;
        const qsizetype step = m_paths.size() / count;
        for (int i = 0; i < count; ++i)
            QDir().rmdir(QFile::decodeName(m_paths.at(i * step)));
    }

    // Makes new folders where `deleteFolders` deleted the same `count`.
    void makeDeletedFoldersAgain(int count)
    {
        const qsizetype step = m_paths.size() / count;
        for (int i = 0; i < count; ++i)
            QDir().mkdir(QFile::decodeName(m_paths.at(i * step)));
    }

    BoardModel &board() { return *m_board; }
    TimerModel &timer() { return *m_timer; }
    [[nodiscard]] const QString &databasePath() const { return m_databasePath; }
    [[nodiscard]] const QList<QByteArray> &paths() const { return m_paths; }

private:
    Card card(int i)
    {
        const QString path = m_dir.filePath(QStringLiteral("folders/Client work %1").arg(i, 5, 10, QChar(u'0')));
        QDir().mkdir(path);
        settleFolder(path);
        m_paths.append(QFile::encodeName(path));
        Card card;
        card.id = QStringLiteral("CARD-%1").arg(i, 8, 10, QChar(u'0'));
        card.bookmark = SecurityScopedBookmark::create(QUrl::fromLocalFile(path));
        card.displayPath = path;
        card.displayName = path.section(u'/', -1);
        card.status = allCardStatuses.at(i % 4);
        card.priority = allPriorities.at(i % 5);
        card.sortOrder = double(i);
        card.createdAt = card.statusChangedAt = VeltoDate(7e8);
        if (i % 3 == 0)
            card.title = QStringLiteral("Quarterly report for Ökonomie team %1").arg(i);
        return card;
    }

    QTemporaryDir m_dir;
    QString m_databasePath;
    std::shared_ptr<Database> m_database;
    QList<QByteArray> m_paths;
    std::unique_ptr<TimerModel> m_timer;
    std::unique_ptr<BoardModel> m_board;
};
