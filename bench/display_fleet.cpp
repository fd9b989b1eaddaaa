#include <benchmark/benchmark.h>

#include "film.h"

namespace keelview::bench {
namespace {

// The largest fleet: what a person who opens it waits for.

void FleetFrame(benchmark::State& state) {
    const Film film(LargestFleet);
    for (auto _ : state) film.Tick();
}
BENCHMARK(FleetFrame)->Unit(benchmark::kMillisecond);

void FleetPlainFrame(benchmark::State& state) {
    const Film film(LargestFleet);
    film.Form().Check5.SetValue(false);
    film.ShowMoment();
    for (auto _ : state) film.Tick();
}
BENCHMARK(FleetPlainFrame)->Unit(benchmark::kMillisecond);

/// `kind`: time, distance, speed, analysis.
void FleetDataPage(benchmark::State& state) {
    const Display display(0, LargestFleet);
    FindAllPasses(display.app->race, display.app->tracks, display.app->scale, display.app->passes);
    RaceDisp& form = display.Form();
    OptionButton* options[] = {&form.Option1, &form.Option4, &form.Option5, &form.Option12};
    options[state.range(0) - 1]->SetValue(true);
    display.app->shown.ViewMode = ViewKind::Data;
    for (auto _ : state) display.desk->tables.Repaint(Changed::Mode);
}
BENCHMARK(FleetDataPage)->ArgName("kind")->Arg(1)->Arg(4)->Unit(benchmark::kMillisecond);

/// One row further in the boat list.
void FleetListScrolled(benchmark::State& state) {
    const Film film(LargestFleet);
    ScrollBar& bar = film.Form().VScroll1;
    for (auto _ : state) {
        bar.SetValue(bar.Value() < bar.Max() ? bar.Value() + 1 : 0);
        film.Form().Refresh();
    }
}
BENCHMARK(FleetListScrolled)->Unit(benchmark::kMillisecond);

/// The display of a race of so many boats is made, laid out and drawn for the first time.
void OpenDisplay(benchmark::State& state) {
    Display display(0, static_cast<int>(state.range(0)));
    for (auto _ : state) {
        display.desk = std::make_unique<RaceDesk>(*display.app, display.services);
        display.LayOut();
    }
}
BENCHMARK(OpenDisplay)
    ->ArgName("boats")
    ->Arg(8)
    ->Arg(Boats)
    ->Arg(LargestFleet)
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace keelview::bench
