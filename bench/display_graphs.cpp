#include <benchmark/benchmark.h>

#include "display_race.h"

namespace keelview::bench {
namespace {

constexpr int WindSamples = 5000;

/// `focus`: how many boats are in focus.
void DrawGraphs(benchmark::State& state) {
    const Display display(WindSamples);
    for (int boat = 1; boat <= Boats; ++boat) display.Form().Ticks[boat].InFocus = boat <= state.range(0);
    display.app->shown.ViewMode = ViewKind::Graph;
    display.desk->graphs.Repaint(Changed::Mode);
    for (auto _ : state) display.desk->graphs.Repaint(Changed::Focus);
    state.SetItemsProcessed(state.iterations() * 2 * Boats * Fixes);
}
BENCHMARK(DrawGraphs)->ArgName("focus")->Arg(Boats)->Arg(1)->Unit(benchmark::kMillisecond);

/// Their lines put together as well, as for another size of the window.
void PutGraphsTogether(benchmark::State& state) {
    const Display display(WindSamples);
    display.app->shown.ViewMode = ViewKind::Graph;
    for (auto _ : state) display.desk->graphs.Repaint(Changed::Size);
}
BENCHMARK(PutGraphsTogether)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();

/// `kind`: time, distance, speed, analysis.
void DrawDataPage(benchmark::State& state) {
    const Display display(WindSamples);
    FindAllPasses(display.app->race, display.app->tracks, display.app->scale, display.app->passes);
    RaceDisp& form = display.Form();
    OptionButton* options[] = {&form.Option1, &form.Option4, &form.Option5, &form.Option12};
    options[state.range(0) - 1]->SetValue(true);
    display.app->shown.ViewMode = ViewKind::Data;
    for (auto _ : state) display.desk->tables.Repaint(Changed::Mode);
}
BENCHMARK(DrawDataPage)->ArgName("kind")->DenseRange(1, 4)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace keelview::bench
