#include <benchmark/benchmark.h>

#include "base/kept_memory.h"

int main(int argc, char** argv) {
    keelview::KeepMemory();  // as the programs do
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
