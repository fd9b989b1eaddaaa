#include <benchmark/benchmark.h>

#include "film.h"

namespace keelview::bench {
namespace {

const auto FrameStatistics = [](benchmark::internal::Benchmark* bench) {
    bench->Unit(benchmark::kMillisecond)->Repetitions(15)->ReportAggregatesOnly()->MinTime(0.1);
};

void AutoTraceFrame(benchmark::State& state) {
    Film film;
    for (auto _ : state) film.Tick();
}
BENCHMARK(AutoTraceFrame)->Apply(FrameStatistics);

/// The same with what reaches the screen.
void AutoTraceFrameShown(benchmark::State& state) {
    Film film;
    for (auto _ : state) {
        film.Tick();
        film.Form().Picture1.Refresh();
    }
}
BENCHMARK(AutoTraceFrameShown)->Apply(FrameStatistics);

/// One tick on a map that stands still: the boats move over it.
void PlainFrame(benchmark::State& state) {
    Film film;
    film.Form().Check5.SetValue(false);
    film.ShowMoment();
    for (auto _ : state) film.Tick();
}
BENCHMARK(PlainFrame)->Apply(FrameStatistics);

/// The whole chart with the tracks of all boats.
void ChartWithTracks(benchmark::State& state) {
    Film film;
    film.Form().Check5.SetValue(false);
    for (auto _ : state) film.desk->chart.Repaint(Changed::Layers);
}
BENCHMARK(ChartWithTracks)->Unit(benchmark::kMillisecond);

/// A step of a drag with the tracks of all boats, all that it changes on its way to the screen.
void DragStep(benchmark::State& state) {
    Film film;
    film.Form().Check5.SetValue(false);
    film.ShowMoment();
    AppState& app = *film.app;
    const Position held = app.view.Centre();
    double step = 0;
    for (auto _ : state) {
        step = std::fmod(step + 3, 90);
        BringUnder(held, {400 + step, 450 - step}, app.area, app.scale, app.view);
        film.desk->session.TheStage().Repaint(Changed::View);
        film.ShowMoment();
        for (Surface* picture : {&film.Form().Picture1, &film.Form().Picture6}) picture->Refresh();
    }
}
BENCHMARK(DragStep)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace keelview::bench
