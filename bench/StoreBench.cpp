#include "Await.h"
#include "CardResolution.h"
#include "Database.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <chrono>
#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int boardSize = 10'000;

Card benchCard(int i, CardStatus status, double order)
{
    Card card;
    card.id = u"CARD-%1"_s.arg(i, 8, 10, QChar(u'0'));
    card.bookmark = QByteArray(240, char('a' + i % 26)); // about the size of a real bookmark
    card.displayName = u"Folder %1"_s.arg(i);
    card.displayPath = u"/home/ann/Projects/Clients/"_s + card.displayName;
    card.status = status;
    card.sortOrder = order;
    card.createdAt = VeltoDate(7e8);
    card.statusChangedAt = VeltoDate(7e8);
    if (i % 3 == 0)
        card.title = u"A title of moderate length"_s;
    if (i % 5 == 0)
        card.deadline = VeltoDate(7.2e8);
    return card;
}

// A database of `boardSize` cards, spread over the columns in orders they were not added in, as a
// board's come to be once cards move; or all in one column in the order added.
class Board {
public:
    explicit Board(bool oneColumn)
        : m_database(Database::create(m_dir.filePath(u"Velto.sqlite"_s)))
    {
        await(m_database->open());
        Task<void> last = m_database->insertCard(benchCard(0, CardStatus::notStarted, 0));
        for (int i = 1; i < boardSize; ++i) {
            last = oneColumn ? m_database->insertCard(benchCard(i, CardStatus::notStarted, double(i)))
                             : m_database->insertCard(
                                   benchCard(i, allCardStatuses.at(i % 4), double(i * 7'919 % boardSize)));
        }
        await(std::move(last)); // the executor is serial: the last one done means all are
    }

    Database &database() { return *m_database; }
    [[nodiscard]] QString path() const { return m_dir.filePath(u"Velto.sqlite"_s); }

    [[nodiscard]] int totalChanges()
    {
        return await(
            m_database->run([](SQLiteConnection &connection) { return sqlite3_total_changes(connection.handle()); }));
    }

private:
    QTemporaryDir m_dir;
    std::shared_ptr<Database> m_database;
};

// One column's value in its stored type, with no conversion and no copy.
void fetchAsStored(sqlite3_stmt *statement, int column)
{
    switch (sqlite3_column_type(statement, column)) {
    case SQLITE_INTEGER: benchmark::DoNotOptimize(sqlite3_column_int64(statement, column)); break;
    case SQLITE_FLOAT: benchmark::DoNotOptimize(sqlite3_column_double(statement, column)); break;
    case SQLITE_NULL: break;
    default:
        benchmark::DoNotOptimize(sqlite3_column_blob(statement, column));
        benchmark::DoNotOptimize(sqlite3_column_bytes(statement, column));
    }
}

// Steps through every row, each column fetched as SQLite holds it, no record built; the number
// of rows.
int stepEveryRow(sqlite3_stmt *statement)
{
    int rows = 0;
    while (sqlite3_step(statement) == SQLITE_ROW) {
        for (int column = 0; column < sqlite3_column_count(statement); ++column)
            fetchAsStored(statement, column);
        ++rows;
    }
    sqlite3_reset(statement);
    return rows;
}

// The statement of allCards, on a connection of its own; with `isSorted` false, the rows as the
// table holds them: what is left of the floor once the sort is taken out of SQLite, as allCards
// takes it.
class BareRead {
public:
    BareRead(const QString &path, bool isSorted)
    {
        sqlite3_open_v2(path.toUtf8().constData(), &m_connection, SQLITE_OPEN_READONLY, nullptr);
        const QString order = isSorted ? u" ORDER BY sort_order"_s : u" ORDER BY rowid"_s;
        const QByteArray sql = (u"SELECT "_s + cardColumns() + u" FROM cards"_s + order).toUtf8();
        sqlite3_prepare_v2(m_connection, sql.constData(), -1, &m_statement, nullptr);
    }
    ~BareRead()
    {
        sqlite3_finalize(m_statement);
        sqlite3_close_v2(m_connection);
    }
    BareRead(const BareRead &) = delete;
    BareRead &operator=(const BareRead &) = delete;

    [[nodiscard]] int stepEveryRow() { return ::stepEveryRow(m_statement); }

private:
    sqlite3 *m_connection = nullptr;
    sqlite3_stmt *m_statement = nullptr;
};

// The floor: the same statement stepped, no thread crossed. The argument 1 sorts in SQLite.
void bareStepLoop(benchmark::State &state)
{
    Board board(false);
    BareRead read(board.path(), state.range(0) != 0);
    for (auto _ : state) {
        if (read.stepEveryRow() != boardSize)
            state.SkipWithError("the floor read the wrong number of rows");
    }
    state.SetItemsProcessed(state.iterations() * boardSize);
}

// allCards and its floor taken in turn, so that both meet the same machine: on one whose speed
// drifts from second to second, the ratio of their totals holds where two separate runs do not.
// Wall time, so allCards also pays its crossing to the database's thread and back.
void allCardsBesideFloor(benchmark::State &state)
{
    using Clock = std::chrono::steady_clock;
    Board board(false);
    BareRead read(board.path(), state.range(0) != 0);
    Clock::duration floor{};
    Clock::duration cards{};
    for (auto _ : state) {
        const auto start = Clock::now();
        const int rows = read.stepEveryRow();
        const auto between = Clock::now();
        const qsizetype cardCount = await(board.database().allCards()).size();
        const auto end = Clock::now();
        if (rows != boardSize || cardCount != boardSize)
            state.SkipWithError("a read gave the wrong number of rows");
        floor += between - start;
        cards += end - between;
        state.SetIterationTime(std::chrono::duration<double>(end - start).count());
    }
    const double iterations = double(state.iterations());
    state.counters["floor_ms"] = std::chrono::duration<double, std::milli>(floor).count() / iterations;
    state.counters["cards_ms"] = std::chrono::duration<double, std::milli>(cards).count() / iterations;
    state.counters["ratio"] = double(cards.count()) / double(floor.count());
}

void allCards(benchmark::State &state)
{
    Board board(false);
    for (auto _ : state) {
        if (await(board.database().allCards()).size() != boardSize)
            state.SkipWithError("allCards read the wrong number of cards");
    }
    state.SetItemsProcessed(state.iterations() * boardSize);
}

// Each iteration takes the bottom card of a column of 10,000 to the top: one row written, and
// never a renumbering.
void moveCardInLargeColumn(benchmark::State &state)
{
    Board board(true);
    int moved = 0;
    for (auto _ : state) {
        const int bottom = boardSize - 1 - moved % boardSize;
        await(board.database().moveCard(benchCard(bottom, CardStatus::notStarted, 0).id, CardStatus::notStarted, 0));
        ++moved;
    }
}

// A load with nothing to persist: it reads every card and must write nothing.
void applyResolutionsUnchanged(benchmark::State &state)
{
    Board board(false);
    QHash<QString, CardResolution> resolutions;
    for (int i = 0; i < boardSize; ++i) {
        const Card card = benchCard(i, CardStatus::notStarted, 0);
        resolutions.insert(card.id, {card.id, QUrl::fromLocalFile(card.displayPath),
                                     CardResolution::Availability::available, card.displayName, card.displayPath,
                                     std::nullopt, std::nullopt});
    }
    const int changesBefore = board.totalChanges();
    for (auto _ : state)
        await(board.database().applyResolutions(resolutions));
    if (board.totalChanges() != changesBefore)
        state.SkipWithError("applyResolutions wrote rows that had not changed");
    state.SetItemsProcessed(state.iterations() * boardSize);
}

} // namespace

BENCHMARK(bareStepLoop)->Arg(1)->Arg(0)->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);
BENCHMARK(allCards)->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);
BENCHMARK(allCardsBesideFloor)->Arg(1)->Arg(0)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(moveCardInLargeColumn)->MeasureProcessCPUTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(applyResolutionsUnchanged)->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    // Operations resume their callers through the application's event loop.
    QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
