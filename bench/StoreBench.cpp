#include "Await.h"
#include "CardResolution.h"
#include "Database.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int boardSize = 10'000;

Card benchCard(int i, CardStatus status)
{
    Card card;
    card.id = u"CARD-%1"_s.arg(i, 8, 10, QChar(u'0'));
    card.bookmark = QByteArray(240, char('a' + i % 26)); // about the size of a real bookmark
    card.displayName = u"Folder %1"_s.arg(i);
    card.displayPath = u"/home/ann/Projects/Clients/"_s + card.displayName;
    card.status = status;
    card.sortOrder = double(i);
    card.createdAt = VeltoDate(7e8);
    card.statusChangedAt = VeltoDate(7e8);
    if (i % 3 == 0)
        card.title = u"A title of moderate length"_s;
    if (i % 5 == 0)
        card.deadline = VeltoDate(7.2e8);
    return card;
}

// A database of `boardSize` cards, spread over the columns or all in one.
class Board {
public:
    explicit Board(bool oneColumn)
        : m_database(Database::create(m_dir.filePath(u"Velto.sqlite"_s)))
    {
        await(m_database->open());
        Task<void> last = m_database->insertCard(benchCard(0, CardStatus::notStarted));
        for (int i = 1; i < boardSize; ++i)
            last = m_database->insertCard(benchCard(i, oneColumn ? CardStatus::notStarted : allCardStatuses.at(i % 4)));
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

// The floor: the same statement stepped on a connection of its own, each column fetched as SQLite
// holds it, no record built, no thread crossed.
// With the argument 0, the rows as the table holds them: what is left of the floor once the sort is
// taken out of SQLite, as allCards takes it.
void bareStepLoop(benchmark::State &state)
{
    Board board(false);
    sqlite3 *connection = nullptr;
    sqlite3_open_v2(board.path().toUtf8().constData(), &connection, SQLITE_OPEN_READONLY, nullptr);
    const QString order = state.range(0) != 0 ? u" ORDER BY sort_order"_s : u" ORDER BY rowid"_s;
    const QByteArray sql = (u"SELECT "_s + cardColumns() + u" FROM cards"_s + order).toUtf8();
    sqlite3_stmt *statement = nullptr;
    sqlite3_prepare_v2(connection, sql.constData(), -1, &statement, nullptr);
    for (auto _ : state) {
        int rows = 0;
        while (sqlite3_step(statement) == SQLITE_ROW) {
            for (int column = 0; column < sqlite3_column_count(statement); ++column)
                fetchAsStored(statement, column);
            ++rows;
        }
        sqlite3_reset(statement);
        if (rows != boardSize)
            state.SkipWithError("the floor read the wrong number of rows");
    }
    sqlite3_finalize(statement);
    sqlite3_close_v2(connection);
    state.SetItemsProcessed(state.iterations() * boardSize);
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
        await(board.database().moveCard(benchCard(bottom, CardStatus::notStarted).id, CardStatus::notStarted, 0));
        ++moved;
    }
}

// A load with nothing to persist: it reads every card and must write nothing.
void applyResolutionsUnchanged(benchmark::State &state)
{
    Board board(false);
    QHash<QString, CardResolution> resolutions;
    for (int i = 0; i < boardSize; ++i) {
        const Card card = benchCard(i, CardStatus::notStarted);
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
