#include <benchmark/benchmark.h>

#include <cmath>
#include <memory>

#include "analysis/time_bar.h"
#include "analysis/wind_panel.h"
#include "base/angles.h"
#include "display/race_disp.h"
#include "map/boat_sprite.h"
#include "map/chart.h"
#include "map/overview.h"
#include "session/app_state.h"

namespace keelview {
namespace {

constexpr int Boats = 50;
constexpr int Fixes = 20000;
constexpr int WindSamples = 10000;

/// A fleet that beats and runs for five and a half hours, a fix a second, with a wind file.
std::unique_ptr<AppState> LongRace() {
    auto app = std::make_unique<AppState>();
    app->settings.UseEnglish = true;
    RaceControl& race = app->race;
    race.BoatCount = Boats;
    race.RaceDuration = Fixes;
    race.ReplaySpan = Fixes + 240;
    race.WindFileName = "long.csv";
    Tracks& tracks = app->tracks;
    tracks.TrackLat.resize(Boats + 1);
    tracks.TrackLon.resize(Boats + 1);
    tracks.TrackTime.resize(Boats + 1);
    tracks.TrackCourse.resize(Boats + 1);
    for (std::size_t boat = 1; boat <= Boats; ++boat) {
        tracks.TrackPointCount[boat] = Fixes;
        for (auto* column : {&tracks.TrackLat[boat], &tracks.TrackLon[boat], &tracks.TrackCourse[boat]})
            column->resize(Fixes + 1);
        tracks.TrackTime[boat].resize(Fixes + 1);
        for (std::size_t i = 1; i <= Fixes; ++i) {
            const double turn = static_cast<double>(i) / 700 + static_cast<double>(boat) / 10;
            tracks.TrackLat[boat][i] = 2100 + 2 * std::sin(turn);
            tracks.TrackLon[boat][i] = 8400 + std::sin(turn * 7);
            tracks.TrackTime[boat][i] = static_cast<std::int32_t>(i);
            tracks.TrackCourse[boat][i] = std::cos(turn) > 0 ? 40 + 20 * std::sin(turn * 50) : 200;
        }
    }
    app->area.HomeCentreLat = 2100;
    app->area.HomeCentreLon = 8400;
    app->area.AreaSpan = 4;
    app->scale = ComputeEarthScale(2100);
    WindData& wind = app->wind;
    wind.WindCount = WindSamples;
    for (int i = 1; i <= WindSamples; ++i) {
        wind.WindTimes.push_back(i * 2);
        wind.WindSpeeds.emplace_back(10 + std::sin(i / 50.0));
        wind.WindDirections.push_back(WrapDirection(5 + 15 * std::sin(i / 300.0)));
    }
    return app;
}

/// The race display with its instruments.
struct Display {
    std::unique_ptr<AppState> app = LongRace();
    RaceDisp form{app->settings};
    Overview overview{*app, form};
    TimeBar timeBar{*app, form};
    WindPanel windPanel{*app, form};

    Display() {
        form.LayoutPanels(app->settings, Boats);
        Chart::SetBoatPalette(app->display);
        CreateBoatControls(*app, form);
    }
};

void OverviewAndTimeBar(benchmark::State& state) {
    Display display;
    for (auto _ : state) {
        display.overview.DrawOverviewMap();
        display.timeBar.DrawTimeBar();
    }
    state.SetItemsProcessed(state.iterations() * Boats * Fixes);
}
BENCHMARK(OverviewAndTimeBar)->Unit(benchmark::kMillisecond);

/// At the beginning, in the midst and at the end of a wind file, and jumping about in it.
void WindPanelUpdate(benchmark::State& state) {
    Display display;
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
    Display display;
    for (auto _ : state) display.windPanel.DrawWindGraph();
}
BENCHMARK(WindGraph)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace keelview
