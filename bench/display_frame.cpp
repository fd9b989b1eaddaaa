#include <benchmark/benchmark.h>

#include <cmath>
#include <numbers>

#include "display_race.h"
#include "map/auto_trace.h"
#include "map/instruments.h"
#include "map/replay_frame.h"

namespace keelview::bench {
namespace {

constexpr int CoastPoints = 100000;
constexpr double StepSeconds = 0.16;

/// A jagged coast all round, of which one part in a hundred lies on the map.
void LayCoast(Coast& coast) {
    coast.CoastCount = CoastPoints;
    for (int i = 0; i < CoastPoints; ++i) {
        const double turn = i * 2 * std::numbers::pi / CoastPoints;
        const double away = 1.0 + 40 * (1 - std::cos(turn)) + 0.01 * std::sin(i * 0.7);
        const double lat = MiddleLat + away * std::cos(turn / 2);
        coast.CoastLat.push_back(i % 100 == 0 ? -lat : lat);
        coast.CoastLon.push_back(MiddleLon + away * std::sin(turn / 2));
    }
}

/// The film on a display that is shown: what the person sees is painted too, by Refresh.
struct Film : Display {
    Film() : Display(5000) {
        LayCoast(app->coast);
        shown->Check5.SetValue(true);
        shown->Check9.SetValue(true);
        shown->ShowNow();
        app->clock.ReplayStep = StepSeconds;
        app->clock.ReplayTime = 600;
        frame.DrawFrame();
    }
    Chart chart{*app, *shown, services};
    Instruments instruments{*app, *shown};
    ReplayFrame frame{*app, *shown, services, chart, instruments};
};

const auto FrameStatistics = [](benchmark::internal::Benchmark* bench) {
    bench->Unit(benchmark::kMillisecond)->Repetitions(15)->ReportAggregatesOnly()->MinTime(0.1);
};

/// One tick in auto trace: the view follows, the chart is drawn anew, 50 boats with names and wakes.
void AutoTraceFrame(benchmark::State& state) {
    Film film;
    for (auto _ : state) {
        film.app->clock.ReplayTime += StepSeconds;
        AutoTrace(*film.app, *film.shown, film.chart);
        film.frame.DrawFrame();
    }
}
BENCHMARK(AutoTraceFrame)->Apply(FrameStatistics);

/// The same with what reaches the screen.
void AutoTraceFrameShown(benchmark::State& state) {
    Film film;
    for (auto _ : state) {
        film.app->clock.ReplayTime += StepSeconds;
        AutoTrace(*film.app, *film.shown, film.chart);
        film.frame.DrawFrame();
        film.shown->Picture1.Refresh();
    }
}
BENCHMARK(AutoTraceFrameShown)->Apply(FrameStatistics);

/// One tick on a map that stands still: the boats move over it.
void PlainFrame(benchmark::State& state) {
    Film film;
    film.shown->Check5.SetValue(false);
    film.chart.DrawAll();
    for (auto _ : state) {
        film.app->clock.ReplayTime += StepSeconds;
        film.frame.DrawFrame();
    }
}
BENCHMARK(PlainFrame)->Apply(FrameStatistics);

/// The whole chart with the tracks of all boats.
void ChartWithTracks(benchmark::State& state) {
    Film film;
    film.shown->Check5.SetValue(false);
    for (auto _ : state) film.chart.DrawAll();
}
BENCHMARK(ChartWithTracks)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace keelview::bench
