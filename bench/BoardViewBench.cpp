#include "BenchBoard.h"
#include "BoardHostWindow.h"
#include "FrameWatch.h"

#include <QFile>
#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QTest>
#include <QtQml/qqmlextensionplugin.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <optional>
#include <vector>

Q_IMPORT_QML_PLUGIN(VeltoPlugin)

using namespace Qt::StringLiterals;

namespace {

// The board view as the main window shows it, at a common laptop size, exposed on screen.
class BoardWindow {
public:
    explicit BoardWindow(BenchBoard &bench)
    {
        QString failure;
        m_window = makeBoardHostWindow(
            m_engine, "BoardView { anchors.fill: parent; board: host.board; timer: host.timer }", bench.board(),
            bench.timer(), failure);
        if (!m_window) {
            m_failure = failure.toUtf8();
            return;
        }
        m_window->resize(1280, 800);
        if (!QTest::qWaitForWindowExposed(m_window.get()))
            m_failure = "the window never came on screen";
    }

    // Empty once the window is on screen; otherwise why it is not.
    [[nodiscard]] const QByteArray &failure() const { return m_failure; }
    QQuickWindow &window() { return *m_window; }

private:
    QQmlEngine m_engine;
    std::unique_ptr<QQuickWindow> m_window;
    QByteArray m_failure;
};

// A board of `count` cards, loaded, in a window on screen with its first frame drawn.
struct ShownBoard {
    explicit ShownBoard(int count) : bench(count)
    {
        await(bench.board().reload());
        view = std::make_unique<BoardWindow>(bench);
        if (view->failure().isEmpty()) {
            watch = std::make_unique<FrameWatch>(view->window());
            redraw();
        }
    }

    // Draws the window again with nothing changed; how long until that frame was swapped, or
    // nothing if it never was.
    std::optional<Clock::duration> redraw()
    {
        const Clock::time_point start = Clock::now();
        watch->arm();
        view->window().update();
        const auto swapped = watch->waitForSwap();
        if (!swapped)
            return std::nullopt;
        return *swapped - start;
    }

    // Declared before the views, so that the views go first: they read the models to their end.
    BenchBoard bench;
    std::unique_ptr<BoardWindow> view;
    std::unique_ptr<FrameWatch> watch;
};

// The resident set of this process, in MiB, as the kernel reports it.
double residentMiB()
{
    QFile status(u"/proc/self/status"_s);
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (QByteArray line = status.readLine(); !line.isEmpty(); line = status.readLine()) {
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').constFirst().toDouble() / 1024;
    }
    return 0;
}

bool skippedForFailure(benchmark::State &state, const BoardWindow &view)
{
    if (view.failure().isEmpty())
        return false;
    state.SkipWithError(view.failure().constData());
    return true;
}

// One frame with nothing changed: the least any visible change can cost.
void frameFloor(benchmark::State &state)
{
    ShownBoard shown(int(state.range(0)));
    if (skippedForFailure(state, *shown.view))
        return;
    std::vector<double> times;
    for (auto _ : state) {
        const auto took = shown.redraw();
        if (!took) {
            state.SkipWithError("no frame came after an update");
            break;
        }
        times.push_back(seconds(*took));
        state.SetIterationTime(times.back());
    }
    state.counters["median_ms"] = medianMilliseconds(times);
}

// The top card of its column dropped at the head of another column, back and forth, timed from
// the drop until the first frame that shows the board reloaded with the card moved.
void dropToFrame(benchmark::State &state)
{
    ShownBoard shown(int(state.range(0)));
    if (skippedForFailure(state, *shown.view))
        return;
    BoardModel &board = shown.bench.board();
    const Card moving = board.cards().constFirst();
    const CardStatus away = moving.status == allCardStatuses.at(0) ? allCardStatuses.at(1) : allCardStatuses.at(0);
    FrameWatch &watch = *shown.watch;

    std::vector<double> times;
    std::vector<double> publishTimes;
    bool there = false;
    for (auto _ : state) {
        const CardStatus target = there ? moving.status : away;
        Clock::time_point publishedAt;
        const QMetaObject::Connection published =
            QObject::connect(&board, &BoardModel::cardsChanged, &board, [&watch, &publishedAt] {
                publishedAt = Clock::now();
                watch.arm();
            });
        const Clock::time_point start = Clock::now();
        Task<> drop = board.acceptDrop(DropContents{{moving.id}, {}}, target, 0, ProjectFilter{});
        const auto swapped = watch.waitForSwap();
        QObject::disconnect(published);
        // The rest of the reload finishes outside the clock, so each drop starts on a quiet board.
        await(std::move(drop));
        if (!swapped) {
            state.SkipWithError("the moved card never reached the screen");
            break;
        }
        times.push_back(seconds(*swapped - start));
        publishTimes.push_back(seconds(publishedAt - start));
        state.SetIterationTime(times.back());
        there = !there;
    }
    state.counters["median_ms"] = medianMilliseconds(times);
    // The part until the board published the moved card, with its views' first handling of that.
    state.counters["published_median_ms"] = medianMilliseconds(publishTimes);
}

// The resident set with the board view on screen over no cards, then over the same view once its
// board has reloaded with the cards added: the first is what the window costs before any card. The
// larger board runs second, over a heap the first has grown, so its floor is only a guide.
void residentMemory(benchmark::State &state)
{
    ShownBoard shown(0);
    if (skippedForFailure(state, *shown.view))
        return;
    const double empty = residentMiB();
    shown.bench.addCards(int(state.range(0)));
    await(shown.bench.board().reload());
    if (!shown.redraw()) {
        state.SkipWithError("no frame came after the reload");
        return;
    }
    double full = 0;
    for (auto _ : state)
        full = residentMiB();
    state.counters["rss_MiB"] = full;
    state.counters["rss_floor_MiB"] = empty;
}

} // namespace

// First, so that no earlier benchmark has grown the heap under the floor.
BENCHMARK(residentMemory)->Arg(1'000)->Arg(10'000)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(frameFloor)->Arg(100)->Arg(1'000)->Iterations(60)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(dropToFrame)->Arg(100)->Arg(1'000)->Iterations(60)->UseManualTime()->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    // The board's operations resume through the application's event loop, and the view draws
    // with the same controls style the application uses.
    QGuiApplication application(argc, argv);
    QQuickStyle::setStyle(u"Fusion"_s);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
