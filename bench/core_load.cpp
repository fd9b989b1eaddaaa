#include <benchmark/benchmark.h>
#include <sys/resource.h>

#include <fstream>

#include "track_tree.h"

namespace keelview::bench {
namespace {

long ResidentKilobytes() {
    std::ifstream file("/proc/self/statm");
    long pages = 0;
    file >> pages >> pages;
    return pages * 4;
}

long PageFaults() {
    rusage used{};
    getrusage(RUSAGE_SELF, &used);
    return used.ru_minflt;
}

/// `fixes` of each of so many boats, read and derived; `bytes_a_fix` is what the process grew by,
/// `first_faults` and `later_faults` how often it asked the system for memory in the first load and in each
/// one after it.
void Load(benchmark::State& state, int boats) {
    const int fixes = static_cast<int>(state.range(0));
    const TrackTree tree(fixes, boats);
    const long before = ResidentKilobytes();
    Tracks tracks;
    TrackArea area;
    EarthScale scale;
    long start = PageFaults(), first = 0, later = 0;
    for (auto _ : state) {
        tree.Load(tracks, area, scale);
        (first == 0 ? first : later) += PageFaults() - start;
        start = PageFaults();
    }
    const double all = static_cast<double>(boats) * fixes;
    if (tracks.Boats[boats].Count() != fixes) state.SkipWithError("not all fixes were read");
    state.SetItemsProcessed(static_cast<std::int64_t>(all) * state.iterations());
    state.counters["first_faults"] = static_cast<double>(first);
    if (state.iterations() > 1)
        state.counters["later_faults"] =
            static_cast<double>(later) / static_cast<double>(state.iterations() - 1);
    state.counters["bytes_a_fix"] = static_cast<double>(ResidentKilobytes() - before) * 1024 / all;
}

// The work of all threads, and the time that a person waits for it.
void LoadAndDerive(benchmark::State& state) {
    Load(state, Boats);
}
BENCHMARK(LoadAndDerive)
    ->ArgName("fixes")
    ->Arg(10000)
    ->Arg(Fixes)
    ->MeasureProcessCPUTime()
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

void LoadLargestFleet(benchmark::State& state) {
    Load(state, LargestFleet);
}
BENCHMARK(LoadLargestFleet)
    ->ArgName("fixes")
    ->Arg(Fixes)
    ->MeasureProcessCPUTime()
    ->UseRealTime()
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace keelview::bench
