#include "Await.h"
#include "CardDetailModel.h"
#include "Database.h"
#include "SecurityScopedBookmark.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <dirent.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int fileCount = 10'000;

// A card over a folder of 10,000 files, in a fresh database.
class LargeFolder {
public:
    LargeFolder() : m_database(Database::create(m_dir.filePath(u"Velto.sqlite"_s)))
    {
        await(m_database->open());
        m_path = m_dir.filePath(u"Client work"_s);
        QDir().mkpath(m_path);
        for (int i = 0; i < fileCount; ++i) {
            QFile file(m_path + u"/Report draft %1.docx"_s.arg(i, 5, 10, QChar(u'0')));
            file.open(QIODevice::WriteOnly);
        }
        m_card.id = u"CARD"_s;
        m_card.bookmark = SecurityScopedBookmark::create(QUrl::fromLocalFile(m_path));
        m_card.displayPath = m_path;
        m_card.displayName = u"Client work"_s;
        m_card.createdAt = m_card.statusChangedAt = VeltoDate(7e8);
        await(m_database->insertCard(m_card));
    }

    [[nodiscard]] QByteArray path() const { return QFile::encodeName(m_path); }
    [[nodiscard]] const Card &card() const { return m_card; }
    [[nodiscard]] VeltoServices services() const
    {
        return {AppGroupContainer{}, m_database, DatabaseChangeNotifier{}, MigrationOutcome{}};
    }

private:
    QTemporaryDir m_dir;
    std::shared_ptr<Database> m_database;
    QString m_path;
    Card m_card;
};

LargeFolder &largeFolder()
{
    static LargeFolder folder;
    return folder;
}

// The least an opening of the pane must do: read the folder's names once.
void readdirFloor(benchmark::State &state)
{
    const QByteArray path = largeFolder().path();
    for (auto _ : state) {
        DIR *directory = opendir(path.constData());
        int names = 0;
        while (const dirent *entry = readdir(directory))
            names += entry->d_name[0] != '.';
        closedir(directory);
        benchmark::DoNotOptimize(names);
    }
    state.SetItemsProcessed(state.iterations() * fileCount);
}

// Opening the card's pane: the row read again, the folder resolved, the checklist and sessions
// read, the top level listed and the file count stored.
void openPane(benchmark::State &state)
{
    CardDetailModel model(largeFolder().services());
    for (auto _ : state)
        await(model.load(largeFolder().card()));
    state.SetItemsProcessed(state.iterations() * fileCount);
}

} // namespace

BENCHMARK(readdirFloor)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(openPane)->UseRealTime()->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    // The model's operations resume through the application's event loop.
    QCoreApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
