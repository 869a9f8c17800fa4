#include "CardResolution.h"
#include "FolderLook.h"
#include "SecurityScopedBookmark.h"
#include "SettledFolder.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

// `count` folders side by side in a fresh directory, each with a card holding its bookmark.
class Board {
public:
    explicit Board(int count)
    {
        QDir().mkpath(m_dir.filePath(u"cards"_s));
        for (int i = 0; i < count; ++i) {
            const QString path = m_dir.filePath(u"cards/Folder %1"_s.arg(i, 5, 10, QChar(u'0')));
            QDir().mkdir(path);
            settleFolder(path);
            Card card;
            card.id = u"C%1"_s.arg(i);
            card.bookmark = SecurityScopedBookmark::create(QUrl::fromLocalFile(path));
            card.displayPath = path;
            card.displayName = path.section(u'/', -1);
            m_cards.append(card);
            m_paths.append(QFile::encodeName(path));
        }
    }

    [[nodiscard]] const QList<Card> &cards() const { return m_cards; }
    [[nodiscard]] const QList<QByteArray> &paths() const { return m_paths; }
    [[nodiscard]] QString path(const QString &relative) const { return m_dir.filePath(relative); }

private:
    QTemporaryDir m_dir;
    QList<Card> m_cards;
    QList<QByteArray> m_paths;
};

void statFloor(benchmark::State &state)
{
    const Board board(int(state.range(0)));
    for (auto _ : state) {
        for (const QByteArray &path : board.paths()) {
            struct stat status {};
            benchmark::DoNotOptimize(stat(path.constData(), &status));
        }
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void resolveAll(benchmark::State &state)
{
    const Board board(int(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(CardResolution::resolveAll(board.cards()));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

// The same work on one thread, to show what the parallel map buys.
void resolveEachInTurn(benchmark::State &state)
{
    const Board board(int(state.range(0)));
    for (auto _ : state) {
        const ResolutionContext context = ResolutionContext::current();
        for (const Card &card : board.cards())
            benchmark::DoNotOptimize(CardResolution::resolve(card, context));
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

// The look a reload takes at folders that all stayed put since its last; with the second argument
// 1, through a watch on the folders, as the board looks.
void lookAgain(benchmark::State &state)
{
    const Board board(int(state.range(0)));
    const auto folders = state.range(1) != 0 ? std::make_shared<FolderWatch>() : nullptr;
    FolderLook::Earlier earlier{std::make_shared<FailedSearches>(), std::make_shared<MountWatch>(), folders, {}, {},
                                {}, {}};
    const FolderLook first = FolderLook::of(board.cards(), earlier);
    earlier.verdicts = first.verdicts.known;
    earlier.confirmed = first.verdicts.confirmed;
    earlier.reads = first.readsAtRows;
    earlier.withoutFile = first.withoutFile;
    for (auto _ : state)
        benchmark::DoNotOptimize(FolderLook::of(board.cards(), earlier));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

// One of 10,000 folders moved into a sibling folder, the one numbered by the argument; every
// iteration searches again, since the renewed bookmark is not kept.
void findMovedIntoSibling(benchmark::State &state)
{
    const Board board(10'000);
    const Card &moved = board.cards().at(5'000);
    const QString sibling = u"cards/Folder %1/"_s.arg(state.range(0), 5, 10, QChar(u'0'));
    QDir().rename(moved.displayPath, board.path(sibling) + moved.displayName);
    for (auto _ : state) {
        const CardResolution resolution = CardResolution::resolve(moved);
        if (resolution.displayPath == moved.displayPath)
            state.SkipWithError("the moved folder was not found");
    }
}

// What a folder deleted for good costs: the search spends its whole budget.
void missingAmong10000(benchmark::State &state)
{
    const Board board(10'000);
    const Card &deleted = board.cards().at(5'000);
    QDir(deleted.displayPath).removeRecursively();
    for (auto _ : state)
        benchmark::DoNotOptimize(CardResolution::resolve(deleted));
}

} // namespace

BENCHMARK(statFloor)->Arg(1'000)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(resolveAll)->Arg(1'000)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(lookAgain)->ArgsProduct({{1'000, 10'000}, {0, 1}})->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(resolveEachInTurn)->Arg(1'000)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(findMovedIntoSibling)->Arg(1)->Arg(9'999)->Unit(benchmark::kMillisecond);
BENCHMARK(missingAmong10000)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
