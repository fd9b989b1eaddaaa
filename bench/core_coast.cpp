#include <benchmark/benchmark.h>

#include "racedata/coastline.h"

namespace keelview::bench {
namespace {

/// The coast of a race with its middle at `lat`, `lon` (minutes) that spans so many minutes.
void ReadCoast(benchmark::State& state) {
    const CoastArea area{static_cast<double>(state.range(0)), static_cast<double>(state.range(1)),
                         static_cast<double>(state.range(2)), 0.7};
    Coast coast;
    for (auto _ : state) coast = LoadCoastlines(KEELVIEW_DATA, CoastCells(area), area);
    state.counters["points"] = CoastPoints(coast);
}
BENCHMARK(ReadCoast)
    ->ArgNames({"lat", "lon", "span"})
    ->Args({-2031, 9075, 4})     // Sydney harbour
    ->Args({3606, 1194, 30})     // the skerries of Aland
    ->Args({-2300, 9000, 600})   // from Sydney to Hobart
    ->Args({2400, -2400, 3600})  // over the Atlantic
    ->Args({0, 0, 20000})        // all round the earth
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace keelview::bench
