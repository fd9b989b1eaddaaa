#include <benchmark/benchmark.h>

#include "analysis/race_finder.h"
#include "long_race.h"

namespace keelview::bench {
namespace {

/// Looking for races in the tracks of the long race, on one core.
void FindRacesOfADay(benchmark::State& state) {
    Tracks tracks;
    TrackArea area;
    EarthScale scale;
    SailFleet(LongRace(), tracks, area, scale);
    for (auto _ : state) benchmark::DoNotOptimize(FindRaces(tracks, scale, FinderHints()));
}
BENCHMARK(FindRacesOfADay)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace keelview::bench
