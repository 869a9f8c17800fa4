#include "Await.h"
#include "BoardModel.h"
#include "Database.h"
#include "SecurityScopedBookmark.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <sqlite3.h>
#include <sys/stat.h>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

// `count` real folders, each with its card, spread over the four columns, in a fresh database.
class BenchBoard {
public:
    explicit BenchBoard(int count) : m_database(Database::create(m_dir.filePath(u"Velto.sqlite"_s)))
    {
        await(m_database->open());
        QDir().mkpath(m_dir.filePath(u"folders"_s));
        Task<void> last = m_database->insertCard(card(0));
        for (int i = 1; i < count; ++i)
            last = m_database->insertCard(card(i));
        await(std::move(last)); // the executor is serial: the last one done means all are
        const VeltoServices services{AppGroupContainer{}, m_database, DatabaseChangeNotifier{}, MigrationOutcome{}};
        m_board = std::make_unique<BoardModel>(services, nullptr, nullptr, [](const QUrl &) {});
    }

    BoardModel &board() { return *m_board; }
    [[nodiscard]] QString databasePath() const { return m_dir.filePath(u"Velto.sqlite"_s); }
    [[nodiscard]] const QList<QByteArray> &paths() const { return m_paths; }

private:
    Card card(int i)
    {
        const QString path = m_dir.filePath(u"folders/Client work %1"_s.arg(i, 5, 10, QChar(u'0')));
        QDir().mkdir(path);
        m_paths.append(QFile::encodeName(path));
        Card card;
        card.id = u"CARD-%1"_s.arg(i, 8, 10, QChar(u'0'));
        card.bookmark = SecurityScopedBookmark::create(QUrl::fromLocalFile(path));
        card.displayPath = path;
        card.displayName = path.section(u'/', -1);
        card.status = allCardStatuses.at(i % 4);
        card.priority = allPriorities.at(i % 5);
        card.sortOrder = double(i);
        card.createdAt = card.statusChangedAt = VeltoDate(7e8);
        if (i % 3 == 0)
            card.title = u"Quarterly report for Ökonomie team %1"_s.arg(i);
        return card;
    }

    QTemporaryDir m_dir;
    std::shared_ptr<Database> m_database;
    QList<QByteArray> m_paths;
    std::unique_ptr<BoardModel> m_board;
};

// What a load cannot do without: read every row of the cards once, and stat every folder once.
void reloadFloor(benchmark::State &state)
{
    BenchBoard board(int(state.range(0)));
    sqlite3 *connection = nullptr;
    sqlite3_open_v2(QFile::encodeName(board.databasePath()).constData(), &connection, SQLITE_OPEN_READONLY, nullptr);
    for (auto _ : state) {
        sqlite3_stmt *statement = nullptr;
        sqlite3_prepare_v2(connection, "SELECT * FROM cards ORDER BY sort_order", -1, &statement, nullptr);
        while (sqlite3_step(statement) == SQLITE_ROW) {
            for (int column = 0; column < sqlite3_column_count(statement); ++column)
                benchmark::DoNotOptimize(sqlite3_column_blob(statement, column));
        }
        sqlite3_finalize(statement);
        for (const QByteArray &path : board.paths()) {
            struct stat status {};
            benchmark::DoNotOptimize(stat(path.constData(), &status));
        }
    }
    sqlite3_close(connection);
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void boardReload(benchmark::State &state)
{
    BenchBoard board(int(state.range(0)));
    for (auto _ : state)
        await(board.board().reload());
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

// One column of the largest board, as drawn while the user types a search.
void columnCardsWithSearch(benchmark::State &state)
{
    BenchBoard board(10'000);
    await(board.board().reload());
    BoardFilter filter;
    filter.searchText = u"okonomie 12"_s;
    board.board().setFilter(filter);
    for (auto _ : state)
        benchmark::DoNotOptimize(board.board().columnCards(CardStatus::inProgress, {}));
    state.SetItemsProcessed(state.iterations() * 10'000);
}

} // namespace

BENCHMARK(reloadFloor)->Arg(100)->Arg(1'000)->Arg(10'000)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(boardReload)->Arg(100)->Arg(1'000)->Arg(10'000)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(columnCardsWithSearch)->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    // The board's operations resume through the application's event loop.
    QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
