#include <benchmark/benchmark.h>

#include <cmath>
#include <memory>
#include <string>

#include "analysis/boat_graphs.h"
#include "analysis/leg_tables.h"
#include "base/angles.h"
#include "display/fake_platform.h"
#include "display/race_disp.h"
#include "map/boat_sprite.h"
#include "map/chart.h"
#include "session/app_state.h"

namespace keelview {
namespace {

constexpr int Boats = 50;
constexpr int Fixes = 20000;
constexpr int Entries = 20;
constexpr int WindSamples = 5000;

void SailTracks(Tracks& tracks) {
    tracks.TrackTime.resize(Boats + 1);
    tracks.TrackSpeed.resize(Boats + 1);
    tracks.TrackCourse.resize(Boats + 1);
    for (int boat = 1; boat <= Boats; ++boat) {
        tracks.TrackPointCount[boat] = Fixes;
        tracks.TrackTime[boat].resize(Fixes + 1);
        tracks.TrackSpeed[boat].resize(Fixes + 1);
        tracks.TrackCourse[boat].resize(Fixes + 1);
        for (int i = 1; i <= Fixes; ++i) {
            const double moment = i + boat * 13.0;
            tracks.TrackTime[boat][i] = i - 60;
            tracks.TrackSpeed[boat][i] = 5 + 2 * std::sin(moment / 40) + std::sin(moment * 1.7);
            // Tacks every few minutes, with the yaw of each fix.
            const double tack = std::sin(moment / 200) > 0 ? 40 : -40;
            tracks.TrackCourse[boat][i] = WrapDirection(210 + tack + 8 * std::sin(moment * 1.3));
        }
    }
}

/// A race of five and a half hours, a fix a second, with passes at every entry and a wind file.
std::unique_ptr<AppState> LongRace() {
    auto app = std::make_unique<AppState>();
    app->settings.UseEnglish = true;
    RaceControl& race = app->race;
    race.BoatCount = Boats;
    race.CourseCount = Entries;
    race.RaceDuration = Fixes;
    race.ReplaySpan = Fixes + 240;
    race.WindDirection = 210;
    race.WindFileName = "long.csv";
    for (int boat = 1; boat <= Boats; ++boat) {
        race.BoatName[boat] = "JPN " + std::to_string(4000 + boat);
        for (int entry = 1; entry <= Entries; ++entry) {
            race.CourseOrder[entry] = "MK" + std::to_string(entry % 4 + 1);
            app->passes.MarkPassTime[boat][entry] = entry * 900 + boat * (7 + entry % 3);
            app->passes.MarkPassDist[boat][entry] = entry * 1.5 + boat * 0.003;
        }
    }
    app->passes.StatsReady = true;
    SailTracks(app->tracks);
    app->wind.WindCount = WindSamples;
    for (int i = 1; i <= WindSamples; ++i) {
        app->wind.WindTimes.push_back(i * 4);
        app->wind.WindSpeeds.emplace_back(10 + std::sin(i / 50.0));
        app->wind.WindDirections.push_back(210 + 15 * std::sin(i / 300.0));
    }
    return app;
}

struct Display {
    std::unique_ptr<AppState> app = LongRace();
    FakePlatform platform;
    ScriptedDialogs dialogs;
    Services services{platform, dialogs};
    RaceDisp form{app->settings};

    Display() {
        form.LayoutPanels(app->settings, Boats);
        Chart::SetBoatPalette(app->display);
        CreateBoatControls(*app, form);
    }
};

/// `focus`: how many boats are in focus.
void DrawGraphs(benchmark::State& state) {
    Display display;
    for (int row = 0; row < Boats; ++row) display.form.Bnam[row].SetValue(row < state.range(0));
    BoatGraphs graphs(*display.app, display.form);
    for (auto _ : state) graphs.DrawBoatGraphs();
    state.SetItemsProcessed(state.iterations() * 2 * Boats * Fixes);
}
BENCHMARK(DrawGraphs)->ArgName("focus")->Arg(Boats)->Arg(1)->Unit(benchmark::kMillisecond);

/// `kind`: time, distance, speed, analysis.
void DrawDataPage(benchmark::State& state) {
    Display display;
    OptionButton* options[] = {&display.form.Option1, &display.form.Option4, &display.form.Option5,
                               &display.form.Option12};
    options[state.range(0) - 1]->SetValue(true);
    LegTables tables(*display.app, display.form, display.services);
    for (auto _ : state) tables.ShowLegStatistics();
}
BENCHMARK(DrawDataPage)->ArgName("kind")->DenseRange(1, 4)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace keelview
