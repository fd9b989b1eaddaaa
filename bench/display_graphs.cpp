#include <benchmark/benchmark.h>

#include "display_race.h"
#include "instruments/boat_graphs.h"
#include "instruments/leg_tables.h"

namespace keelview::bench {
namespace {

constexpr int WindSamples = 5000;

/// `focus`: how many boats are in focus.
void DrawGraphs(benchmark::State& state) {
    Display display(WindSamples);
    for (int row = 0; row < Boats; ++row) display.shown->Bnam[row].SetValue(row < state.range(0));
    BoatGraphs graphs(*display.app, *display.shown);
    for (auto _ : state) graphs.DrawBoatGraphs();
    state.SetItemsProcessed(state.iterations() * 2 * Boats * Fixes);
}
BENCHMARK(DrawGraphs)->ArgName("focus")->Arg(Boats)->Arg(1)->Unit(benchmark::kMillisecond);

/// `kind`: time, distance, speed, analysis.
void DrawDataPage(benchmark::State& state) {
    Display display(WindSamples);
    OptionButton* options[] = {&display.shown->Option1, &display.shown->Option4, &display.shown->Option5,
                               &display.shown->Option12};
    options[state.range(0) - 1]->SetValue(true);
    LegTables tables(*display.app, *display.shown, display.services);
    for (auto _ : state) tables.ShowLegStatistics();
}
BENCHMARK(DrawDataPage)->ArgName("kind")->DenseRange(1, 4)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace keelview::bench
