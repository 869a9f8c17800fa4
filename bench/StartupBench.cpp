#include "AppModel.h"
#include "AppearanceSetting.h"
#include "BenchBoard.h"
#include "DesktopColorScheme.h"
#include "FrameWatch.h"

#include <QApplication>
#include <QDir>
#include <QQmlApplicationEngine>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QTest>
#include <QtQml/qqmlextensionplugin.h>

#include <benchmark/benchmark.h>

#include <memory>
#include <vector>

Q_IMPORT_QML_PLUGIN(VeltoPlugin)

using namespace Qt::StringLiterals;

namespace {

constexpr int boardSize = 1'000;
const QString identifier = u"io.quillmere.Velto-startup-bench"_s;

// A data folder whose database holds `boardSize` cards over real folders, as a user's would after
// months of use.
class FilledContainer {
public:
    FilledContainer() : m_board(boardSize, databasePath()) {}

    [[nodiscard]] AppGroupSources sources() const
    {
        QProcessEnvironment environment;
        environment.insert(u"XDG_DATA_HOME"_s, m_home.path());
        return AppGroupSources{identifier, environment, m_home.path()};
    }

private:
    QString databasePath() const
    {
        const QString container = m_home.filePath(identifier);
        QDir().mkpath(container);
        return container + u"/Velto.sqlite"_s;
    }

    QTemporaryDir m_home;
    BenchBoard m_board;
};

// How long from nothing to the first frame of a window made by `load`, once `isShowing` says the
// window holds what it must; nothing if that frame never came.
template<typename Load, typename IsShowing>
std::optional<Clock::duration> timeToFirstFrame(QQmlApplicationEngine &engine, Load load, IsShowing isShowing,
                                                Clock::time_point start)
{
    load();
    if (engine.rootObjects().isEmpty())
        return std::nullopt;
    auto *window = qobject_cast<QQuickWindow *>(engine.rootObjects().constFirst());
    if (window == nullptr || !QTest::qWaitFor(isShowing, 30'000))
        return std::nullopt;
    FrameWatch watch(*window);
    watch.arm();
    window->update();
    const auto swapped = watch.waitForSwap();
    if (!swapped)
        return std::nullopt;
    return *swapped - start;
}

void report(benchmark::State &state, const std::vector<double> &times)
{
    state.counters["median_ms"] = medianMilliseconds(times);
}

// The floor: a bare window of the same size, with nothing in it, to its first frame.
void bareWindowFirstFrame(benchmark::State &state)
{
    std::vector<double> times;
    for (auto _ : state) {
        const Clock::time_point start = Clock::now();
        QQmlApplicationEngine engine;
        const auto took = timeToFirstFrame(
            engine,
            [&] {
                engine.loadData("import QtQuick\n"
                                "Window { width: 1180; height: 760; visible: true; color: \"white\" }");
            },
            [] { return true; }, start);
        if (!took) {
            state.SkipWithError("the bare window never drew a frame");
            return;
        }
        times.push_back(seconds(*took));
        state.SetIterationTime(times.back());
    }
    report(state, times);
}

// Velto's main window as `velto` makes it, from the model's construction until the first frame
// after the board has loaded every card. The process start and the application object, the same
// for both, are outside the clock.
void veltoFirstFrame(benchmark::State &state)
{
    FilledContainer container;
    QTemporaryDir settings;
    std::vector<double> times;
    for (auto _ : state) {
        const Clock::time_point start = Clock::now();
        AppModel model(container.sources(),
                       std::make_shared<QSettings>(settings.filePath(u"defaults.ini"_s), QSettings::IniFormat));
        DesktopColorScheme desktop;
        AppearanceSetting appearance(
            std::make_shared<QSettings>(settings.filePath(u"appearance.ini"_s), QSettings::IniFormat), &desktop);
        QQmlApplicationEngine engine;
        engine.addImportPath(u"qrc:/qt/qml"_s);
        engine.setInitialProperties(
            {{u"app"_s, QVariant::fromValue(&model)}, {u"appearance"_s, QVariant::fromValue(&appearance)}});
        const auto took = timeToFirstFrame(
            engine, [&] { engine.load(QUrl(u"qrc:/qt/qml/Velto/app/Main.qml"_s)); },
            [&] { return model.board() != nullptr && model.board()->cards().size() == boardSize; }, start);
        if (!took) {
            state.SkipWithError("the board never reached the screen");
            return;
        }
        times.push_back(seconds(*took));
        state.SetIterationTime(times.back());
    }
    report(state, times);
}

} // namespace

// The first of each is slower while fonts, styles and shaders are first read; the median is not
// swayed by it, and stands for a launch with the system's caches warm.
BENCHMARK(bareWindowFirstFrame)->Iterations(6)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(veltoFirstFrame)->Iterations(6)->UseManualTime()->Unit(benchmark::kMillisecond);

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QQuickStyle::setStyle(u"Fusion"_s);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
