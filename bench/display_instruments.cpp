#include <benchmark/benchmark.h>

#include <cmath>

#include "display_race.h"
#include "instruments/overview.h"
#include "instruments/time_bar.h"
#include "instruments/wind_panel.h"

namespace keelview::bench {
namespace {

constexpr int WindSamples = 10000;

/// The race display with its instruments.
struct Panel : Display {
    Panel() : Display(WindSamples) {}
    Overview overview{*app, *shown};
    TimeBar timeBar{*app, *shown};
    WindPanel windPanel{*app, *shown};
};

void OverviewAndTimeBar(benchmark::State& state) {
    Panel display;
    for (auto _ : state) {
        display.overview.DrawOverviewMap();
        display.timeBar.DrawTimeBar();
    }
    state.SetItemsProcessed(state.iterations() * Boats * Fixes);
}
BENCHMARK(OverviewAndTimeBar)->Unit(benchmark::kMillisecond);

/// At the beginning, in the midst and at the end of a wind file, and jumping about in it.
void WindPanelUpdate(benchmark::State& state) {
    Panel display;
    display.windPanel.ShowForRace();
    double jump = 0;
    for (auto _ : state) {
        display.app->clock.ReplayTime = static_cast<double>(state.range(0)) + jump;
        if (state.range(1) != 0) jump = std::fmod(jump + 7919, Fixes);
        display.windPanel.UpdateWindPanel();
    }
}
BENCHMARK(WindPanelUpdate)
    ->ArgNames({"time", "jumps"})
    ->Args({-200, 0})
    ->Args({Fixes / 2, 0})
    ->Args({Fixes + 100, 0})
    ->Args({0, 1})
    ->Unit(benchmark::kMicrosecond);

void WindGraph(benchmark::State& state) {
    Panel display;
    for (auto _ : state) display.windPanel.DrawWindGraph();
}
BENCHMARK(WindGraph)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace keelview::bench
