#include <benchmark/benchmark.h>

#include <cmath>

#include "display_race.h"

namespace keelview::bench {
namespace {

constexpr int WindSamples = 10000;

void OverviewAndTimeBar(benchmark::State& state) {
    const Display display(WindSamples);
    for (auto _ : state) {
        display.desk->overview.Repaint(Changed::Race);
        display.desk->timeBar.Repaint(Changed::Race);
    }
    state.SetItemsProcessed(state.iterations() * Boats * Fixes);
}
BENCHMARK(OverviewAndTimeBar)->Unit(benchmark::kMillisecond);

/// At the beginning, in the midst and at the end of a wind file, and jumping about in it.
void WindPanelUpdate(benchmark::State& state) {
    const Display display(WindSamples);
    Moment now;
    double jump = 0;
    for (auto _ : state) {
        now.Time = static_cast<double>(state.range(0)) + jump;
        if (state.range(1) != 0) jump = std::fmod(jump + 7919, Fixes);
        now.WindNow = WindAt(display.app->race, display.app->wind, now.Time);
        display.desk->windPanel.Repaint(Changed::Colours);  // draws it at each call
        display.desk->windPanel.Show(now);
    }
}
BENCHMARK(WindPanelUpdate)
    ->ArgNames({"time", "jumps"})
    ->Args({-200, 0})
    ->Args({Fixes / 2, 0})
    ->Args({Fixes + 100, 0})
    ->Args({0, 1})
    ->Unit(benchmark::kMicrosecond);

/// The side panel with its order of all boats as the film runs on, by so many tenths of a second a frame.
void SidePanelFrame(benchmark::State& state) {
    const Display display(WindSamples);
    AppState& app = *display.app;
    FindAllPasses(app.race, app.tracks, app.scale, app.passes);
    if (!display.Form().SidePanelHasRoom()) display.Form().SlideSidePanel(true);
    display.desk->sidePanel.Repaint(Changed::Size);
    while (display.desk->session.TheCoach().Answers() == nullptr) display.Form().Timer5.OnTimer();
    app.clock.ReplayTime = 1000;
    display.ShowMoment();
    for (auto _ : state) {
        app.clock.ReplayTime += static_cast<double>(state.range(0)) / 10;
        if (app.clock.ReplayTime > Fixes - 1000) app.clock.ReplayTime = 1000;
        app.now.Time = app.clock.ReplayTime;
        display.desk->sidePanel.Show(app.now);
    }
}
BENCHMARK(SidePanelFrame)->ArgName("tenths")->Arg(2)->Arg(10)->Unit(benchmark::kMicrosecond);

void WindGraph(benchmark::State& state) {
    const Display display(WindSamples);
    for (auto _ : state) display.desk->windPanel.Repaint(Changed::Wind);
}
BENCHMARK(WindGraph)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace keelview::bench
