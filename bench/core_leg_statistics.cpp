#include <benchmark/benchmark.h>

#include "analysis/leg_statistics.h"

namespace keelview {
namespace {

constexpr int Boats = 50;
constexpr int Entries = 20;

/// A full fleet over a long course, no two boats alike.
struct Fleet50 {
    RaceControl race;
    MarkPasses passes;
    Fleet50() {
        for (int boat = 1; boat <= Boats; ++boat) race.Boats.Add({});
        for (int entry = 1; entry <= Entries; ++entry) race.CourseOrder.Add("MK1");
        passes.MarkPassTime.Assign(Boats, OneBased<std::optional<int>>(Entries));
        passes.MarkPassDist.Assign(Boats, OneBased<double>(Entries));
        for (int boat = 1; boat <= Boats; ++boat) {
            for (int entry = 1; entry <= Entries; ++entry) {
                passes.MarkPassTime[boat][entry] = entry * 300 + boat * (7 + entry % 3);
                passes.MarkPassDist[boat][entry] = entry * 0.5 + boat * 0.003;
            }
        }
    }
};

void AllTablesAndAnalysis(benchmark::State& state) {
    const Fleet50 fleet;
    for (auto _ : state) {
        for (const StatKind kind : {StatKind::Time, StatKind::Distance, StatKind::Speed})
            benchmark::DoNotOptimize(ComputeLegStatistics(fleet.race, fleet.passes, kind));
        benchmark::DoNotOptimize(AnalyseFactors(fleet.race, fleet.passes));
    }
}
BENCHMARK(AllTablesAndAnalysis)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace keelview
