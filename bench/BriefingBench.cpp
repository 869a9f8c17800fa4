#include "CardBriefing.h"

#include <QStringList>
#include <QTimeZone>

#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int entryCount = 10'000;

QStringList entryNames()
{
    QStringList names;
    for (int i = 0; i < entryCount; ++i)
        names.append(u"Report draft %1.docx"_s.arg(i, 5, 10, QChar(u'0')));
    return names;
}

// The least any rendering of the folder has to do: its names joined into one text.
void joinNamesFloor(benchmark::State &state)
{
    const QStringList names = entryNames();
    for (auto _ : state)
        benchmark::DoNotOptimize(names.join(u'\n'));
    state.SetItemsProcessed(state.iterations() * entryCount);
}

// A card with everything a briefing can say: a long goal, 40 key files and a large folder, of which
// only the first 40 entries are listed but all are counted.
void renderBriefing(benchmark::State &state)
{
    CardBriefing::Input input;
    input.card.id = u"CARD"_s;
    input.card.displayName = u"Client work"_s;
    input.card.displayPath = u"/home/ana/Work/Client work"_s;
    input.card.title = u"Quarterly report"_s;
    input.card.goal = u"## Scope\n\n- [ ] draft\n- [ ] review\n"_s.repeated(20);
    input.card.deadline = VeltoDate(800'000'000);
    input.folderPath = input.card.displayPath;
    input.project = Project{u"P"_s, u"Client"_s, u"#2A78D6"_s};
    input.tags = {Tag{u"T1"_s, u"urgent"_s, {}}, Tag{u"T2"_s, u"review"_s, {}}};
    for (int i = 0; i < 40; ++i) {
        ChecklistItem item;
        item.displayName = u"Key file %1.pdf"_s.arg(i);
        item.isMissing = i % 7 == 0;
        input.keyFiles.append(item);
    }
    for (const QString &name : entryNames())
        input.contents.append({QUrl::fromLocalFile(input.card.displayPath + u'/' + name), name, false});
    const QTimeZone zone = QTimeZone::systemTimeZone();
    for (auto _ : state)
        benchmark::DoNotOptimize(CardBriefing::render(input, VeltoDate(799'000'000), zone));
    state.SetItemsProcessed(state.iterations() * entryCount);
}

} // namespace

BENCHMARK(joinNamesFloor)->Unit(benchmark::kMicrosecond);
BENCHMARK(renderBriefing)->Unit(benchmark::kMicrosecond);

BENCHMARK_MAIN();
