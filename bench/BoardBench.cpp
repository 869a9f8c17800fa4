#include "BenchBoard.h"

#include <QCoreApplication>
#include <QFile>

#include <benchmark/benchmark.h>
#include <chrono>
#include <sqlite3.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

// What a load cannot do without: read every row of the cards once, and stat every folder once.
void readRowsAndStatFolders(sqlite3 *connection, const QList<QByteArray> &paths)
{
    sqlite3_stmt *statement = nullptr;
    sqlite3_prepare_v2(connection, "SELECT * FROM cards ORDER BY sort_order", -1, &statement, nullptr);
    while (sqlite3_step(statement) == SQLITE_ROW) {
        for (int column = 0; column < sqlite3_column_count(statement); ++column)
            benchmark::DoNotOptimize(sqlite3_column_blob(statement, column));
    }
    sqlite3_finalize(statement);
    for (const QByteArray &path : paths) {
        struct stat status {};
        benchmark::DoNotOptimize(stat(path.constData(), &status));
    }
}

sqlite3 *openReadOnly(const QString &path)
{
    sqlite3 *connection = nullptr;
    sqlite3_open_v2(QFile::encodeName(path).constData(), &connection, SQLITE_OPEN_READONLY, nullptr);
    return connection;
}

void reloadFloor(benchmark::State &state)
{
    BenchBoard board(int(state.range(0)));
    sqlite3 *connection = openReadOnly(board.databasePath());
    for (auto _ : state)
        readRowsAndStatFolders(connection, board.paths());
    sqlite3_close(connection);
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

// Every folder's mode set to what it was: nothing a look finds changes, but the kernel notes each.
void flagEveryFolder(const QList<QByteArray> &paths)
{
    for (const QByteArray &path : paths) {
        struct stat status {};
        if (stat(path.constData(), &status) == 0)
            chmod(path.constData(), status.st_mode & 07777);
    }
}

// The floor and a reload taken in turn, so that both meet the same machine: on one whose speed
// drifts from second to second, the ratio of their totals holds where two separate runs do not.
// With the second argument 1, the kernel has noted something of every folder before each reload,
// so that the reload cannot skip the look at any.
void reloadBesideFloor(benchmark::State &state)
{
    using Clock = std::chrono::steady_clock;
    BenchBoard board(int(state.range(0)));
    sqlite3 *connection = openReadOnly(board.databasePath());
    await(board.board().reload());
    Clock::duration floor{};
    Clock::duration reload{};
    const bool isEveryFolderFlagged = state.range(1) != 0;
    for (auto _ : state) {
        if (isEveryFolderFlagged)
            flagEveryFolder(board.paths());
        const auto start = Clock::now();
        readRowsAndStatFolders(connection, board.paths());
        const auto between = Clock::now();
        await(board.board().reload());
        const auto end = Clock::now();
        floor += between - start;
        reload += end - between;
        state.SetIterationTime(std::chrono::duration<double>(end - start).count());
    }
    sqlite3_close(connection);
    const double iterations = double(state.iterations());
    state.counters["floor_ms"] = std::chrono::duration<double, std::milli>(floor).count() / iterations;
    state.counters["reload_ms"] = std::chrono::duration<double, std::milli>(reload).count() / iterations;
    state.counters["ratio"] = double(reload.count()) / double(floor.count());
}

void boardReload(benchmark::State &state)
{
    BenchBoard board(int(state.range(0)));
    for (auto _ : state)
        await(board.board().reload());
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

// A board of 1,000 whose 20 folders were deleted for good, some loads after the one that first
// missed them; beside it the same board with nothing deleted.
void boardReloadWithVanished(benchmark::State &state)
{
    BenchBoard board(1'000);
    board.deleteFolders(int(state.range(0)));
    await(board.board().reload());
    for (auto _ : state)
        await(board.board().reload());
    state.SetItemsProcessed(state.iterations() * 1'000);
}

// Its 20 folders deleted, searched for in vain, and made again: the history of a board with
// vanished folders, without them.
void vanishAndComeBack(BenchBoard &board)
{
    board.deleteFolders(20);
    await(board.board().reload());
    await(board.board().reload());
    board.makeDeletedFoldersAgain(20);
    await(board.board().reload());
}

// Two boards of 1,000 reloaded in turn, one with 20 folders deleted for good some loads earlier,
// the other whole: the ratio of their totals is what the vanished folders cost. With the argument
// 1 the whole board has been through the same search and rewritten rows, so that only the
// folders' being gone differs.
void vanishedBesideWhole(benchmark::State &state)
{
    using Clock = std::chrono::steady_clock;
    BenchBoard whole(1'000);
    BenchBoard vanished(1'000);
    vanished.deleteFolders(20);
    if (state.range(0) != 0)
        vanishAndComeBack(whole);
    await(whole.board().reload());
    await(vanished.board().reload());
    Clock::duration wholeTime{};
    Clock::duration vanishedTime{};
    for (auto _ : state) {
        const auto start = Clock::now();
        await(whole.board().reload());
        const auto between = Clock::now();
        await(vanished.board().reload());
        const auto end = Clock::now();
        wholeTime += between - start;
        vanishedTime += end - between;
        state.SetIterationTime(std::chrono::duration<double>(end - start).count());
    }
    const double iterations = double(state.iterations());
    state.counters["whole_ms"] = std::chrono::duration<double, std::milli>(wholeTime).count() / iterations;
    state.counters["vanished_ms"] = std::chrono::duration<double, std::milli>(vanishedTime).count() / iterations;
    state.counters["ratio"] = double(vanishedTime.count()) / double(wholeTime.count());
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
BENCHMARK(reloadBesideFloor)->ArgsProduct({{1'000, 10'000}, {0, 1}})->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(boardReload)->Arg(100)->Arg(1'000)->Arg(10'000)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(boardReloadWithVanished)->Arg(0)->Arg(20)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(vanishedBesideWhole)->Arg(0)->Arg(1)->UseManualTime()->Unit(benchmark::kMillisecond);
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
