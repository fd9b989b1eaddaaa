#include <benchmark/benchmark.h>

#include "analysis/race_finder.h"
#include "long_race.h"
#include "support/simulated_regatta.h"

namespace keelview::bench {
namespace {

/// The first fixes of a track.
Track HeadOf(const Track& track, int fixes) {
    Track head;
    for (int fix = 1; fix <= std::min(fixes, track.Count()); ++fix) {
        head.TrackLat.Add(track.TrackLat[fix]);
        head.TrackLon.Add(track.TrackLon[fix]);
        head.TrackTime.Add(track.TrackTime[fix]);
    }
    return head;
}

/// A day of races of 50 boats, 20,000 fixes each, on one core.
void FindRacesOfADay(benchmark::State& state) {
    const SimulatedRegatta day({.Course = Layout::Gate, .Boats = Boats, .Races = 9});
    Tracks tracks;
    for (const Track& track : day.Boats.Boats) tracks.Boats.Add(HeadOf(track, Fixes));
    std::size_t races = 0;
    for (auto _ : state) races = FindRaces(tracks, day.Scale, FinderHints()).Races.size();
    state.counters["fixes"] = tracks.Boats[1].Count();
    state.counters["races"] = static_cast<double>(races);
}
BENCHMARK(FindRacesOfADay)->Unit(benchmark::kMillisecond);

/// The same in the tracks of the long race, which turn all the time and round everything ten times.
void FindRacesOfALongOne(benchmark::State& state) {
    Tracks tracks;
    TrackArea area;
    EarthScale scale;
    SailFleet(LongRace(), tracks, area, scale);
    for (auto _ : state) benchmark::DoNotOptimize(FindRaces(tracks, scale, FinderHints()));
}
BENCHMARK(FindRacesOfALongOne)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace keelview::bench
