#include <benchmark/benchmark.h>

#include <cstdlib>

#include "base/kept_memory.h"
#include "display/application.h"

// Pictures are drawn on images, so a screen is not needed; QT_QPA_PLATFORM chooses one all the same.
int main(int argc, char** argv) {
    keelview::KeepMemory();
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    const keelview::Application application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
