#include <benchmark/benchmark.h>

#include "analysis/mark_rounding.h"
#include "long_race.h"

namespace keelview::bench {
namespace {

struct Sailed {
    RaceControl race = LongRace();
    Tracks tracks;
    TrackArea area;
    EarthScale scale;
    MarkPasses passes;
    Sailed() { SailFleet(race, tracks, area, scale); }
};

/// Twenty entries that every boat rounds.
void MarkRoundings(benchmark::State& state) {
    Sailed sailed;
    for (auto _ : state) FindMarkPassTimes(sailed.race, sailed.tracks, sailed.scale, sailed.passes);
    if (!sailed.passes.FirstPassTime[Entries]) state.SkipWithError("nobody got round");
}
BENCHMARK(MarkRoundings)->Unit(benchmark::kMillisecond);

/// Twenty entries that nobody comes near: each is searched for to the end of every track, twice.
void MarksNobodyReaches(benchmark::State& state) {
    Sailed sailed;
    for (Mark& mark : sailed.race.Marks) mark.MarkLon = TextNumber(MiddleLon + 60);
    for (auto _ : state) FindMarkPassTimes(sailed.race, sailed.tracks, sailed.scale, sailed.passes);
    if (sailed.passes.FirstPassTime[Entries]) state.SkipWithError("somebody got round");
}
BENCHMARK(MarksNobodyReaches)->Unit(benchmark::kMillisecond);

/// The same course with a last mark that nobody reached: the times of all boats are put in order anew, with
/// those of ten laps to choose from.
void RoundingsOutOfOrder(benchmark::State& state) {
    Sailed sailed;
    sailed.race.Marks.Add({TextNumber(MiddleLat), TextNumber(MiddleLon + 60)});
    sailed.race.CourseOrder[Entries] = "MK3";
    for (auto _ : state) FindAllPasses(sailed.race, sailed.tracks, sailed.scale, sailed.passes);
    if (!sailed.passes.FirstPassTime[Entries - 1]) state.SkipWithError("nobody got round");
}
BENCHMARK(RoundingsOutOfOrder)->Unit(benchmark::kMillisecond);

void PassDistances(benchmark::State& state) {
    Sailed sailed;
    FindMarkPassTimes(sailed.race, sailed.tracks, sailed.scale, sailed.passes);
    for (auto _ : state) ComputeMarkPassDist(sailed.race, sailed.tracks, sailed.passes);
}
BENCHMARK(PassDistances)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace keelview::bench
