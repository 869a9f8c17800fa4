#include "AnalyticsModel.h"
#include "Await.h"
#include "Database.h"
#include "SQLiteStatement.h"

#include <QCoreApplication>
#include <QTemporaryDir>
#include <QTimeZone>

#include <benchmark/benchmark.h>
#include <sqlite3.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int cardCount = 1'000;
constexpr int projectCount = 20;
constexpr int sessionCount = 100'000;
// The present of the benchmark, and a session every 20 minutes or so back from it: 100,000 of
// them reach about three years into the past, so the window of eight weeks holds a few thousand.
const VeltoDate now(8e8);

QString idOf(const char16_t *kind, int i)
{
    return u"%1-%2"_s.arg(QString::fromUtf16(kind)).arg(i, 8, 10, QChar(u'0'));
}

// A store of 1,000 cards over 20 projects, a tenth of them without one and a few waiting for long,
// and 100,000 finished sessions spread over the cards.
class Store {
public:
    Store() : m_database(Database::create(m_dir.filePath(u"Velto.sqlite"_s)))
    {
        await(m_database->open());
        await(m_database->run([](SQLiteConnection &connection) {
            connection.transaction([&] {
                auto project = connection.prepare(u"INSERT INTO projects (id, name, color) VALUES (?, ?, ?)"_s);
                for (int i = 0; i < projectCount; ++i) {
                    project->bind({idOf(u"PROJECT", i), u"Project %1"_s.arg(i), u"#2A78D6"_s});
                    project->step();
                    project->reset();
                }
                auto card = connection.prepare(u"INSERT INTO cards ("_s + cardColumns() + u") VALUES ("_s
                                               + QString(u"?, "_s).repeated(15) + u"?)"_s);
                for (int i = 0; i < cardCount; ++i) {
                    const bool waiting = i % 7 == 0;
                    card->bind({idOf(u"CARD", i), QByteArray(240, 'a'), u"/home/ann/Folder %1"_s.arg(i),
                                u"Folder %1"_s.arg(i), waiting ? u"waiting"_s : i % 3 == 0 ? u"complete"_s : u"in_progress"_s,
                                u"later"_s, i % 10 == 0 ? SQLiteValue(nullptr) : SQLiteValue(idOf(u"PROJECT", i % projectCount)),
                                nullptr, double(i), qint64(0), qint64(now.storedSeconds() - 86400 * (i % 60)),
                                qint64(now.storedSeconds() - 86400 * (i % 60)), nullptr, nullptr, nullptr, nullptr});
                    card->step();
                    card->reset();
                }
                auto session = connection.prepare(u"INSERT INTO time_sessions ("_s + sessionColumns()
                                                  + u") VALUES (?, ?, ?, ?, 'manual', 1.0, NULL, NULL, NULL)"_s);
                for (int i = 0; i < sessionCount; ++i) {
                    const qint64 end = now.storedSeconds() - qint64(i) * 1000;
                    session->bind({idOf(u"SESSION", i), idOf(u"CARD", i % cardCount), end - 900, end});
                    session->step();
                    session->reset();
                }
            });
        }));
    }

    Database &database() { return *m_database; }
    [[nodiscard]] QString path() const { return m_dir.filePath(u"Velto.sqlite"_s); }

private:
    QTemporaryDir m_dir;
    std::shared_ptr<Database> m_database;
};

// Steps a statement to its end, fetching each column as SQLite holds it; the number of rows.
int stepThrough(sqlite3_stmt *statement)
{
    int rows = 0;
    while (sqlite3_step(statement) == SQLITE_ROW) {
        for (int column = 0; column < sqlite3_column_count(statement); ++column) {
            switch (sqlite3_column_type(statement, column)) {
            case SQLITE_INTEGER: benchmark::DoNotOptimize(sqlite3_column_int64(statement, column)); break;
            case SQLITE_FLOAT: benchmark::DoNotOptimize(sqlite3_column_double(statement, column)); break;
            case SQLITE_NULL: break;
            default: benchmark::DoNotOptimize(sqlite3_column_blob(statement, column));
            }
        }
        ++rows;
    }
    sqlite3_reset(statement);
    return rows;
}

// The floor: the three tables the reload reads, with the same statements, stepped on a connection
// of their own; no record built, nothing computed, no thread crossed.
void bareReadOfTheThreeTables(benchmark::State &state)
{
    Store store;
    sqlite3 *connection = nullptr;
    sqlite3_open_v2(store.path().toUtf8().constData(), &connection, SQLITE_OPEN_READONLY, nullptr);
    QList<sqlite3_stmt *> statements;
    for (const QString &sql : {u"SELECT "_s + cardColumns() + u" FROM cards ORDER BY sort_order"_s,
                               u"SELECT id, name, color FROM projects ORDER BY name COLLATE NOCASE"_s,
                               u"SELECT "_s + sessionColumns() + u" FROM time_sessions ORDER BY started_at"_s}) {
        sqlite3_stmt *statement = nullptr;
        sqlite3_prepare_v2(connection, sql.toUtf8().constData(), -1, &statement, nullptr);
        statements.append(statement);
    }
    for (auto _ : state) {
        int rows = 0;
        for (sqlite3_stmt *statement : statements)
            rows += stepThrough(statement);
        if (rows != cardCount + projectCount + sessionCount)
            state.SkipWithError("the floor read the wrong number of rows");
    }
    for (sqlite3_stmt *statement : statements)
        sqlite3_finalize(statement);
    sqlite3_close_v2(connection);
}

void analyticsReload(benchmark::State &state)
{
    Store store;
    AnalyticsModel model(VeltoServices{{}, store.database().shared_from_this(), {}, {}});
    const WeekCalendar calendar{QTimeZone::utc(), Qt::Monday};
    for (auto _ : state) {
        await(model.reload(now, calendar));
        if (model.seriesNames().size() != 9 || model.errorMessage())
            state.SkipWithError("the reload did not make the expected figures");
    }
}

} // namespace

BENCHMARK(bareReadOfTheThreeTables)->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);
BENCHMARK(analyticsReload)->MeasureProcessCPUTime()->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    // The reload resumes through the application's event loop.
    QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
