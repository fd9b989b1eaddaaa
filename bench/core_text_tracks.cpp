// Recordings that are lines of text, from their bytes to fixes; items are fixes.

#include <benchmark/benchmark.h>

#include <array>
#include <cstdio>
#include <string>

#include "racedata/tracks/formats.h"

namespace keelview::bench {
namespace {

constexpr int FixCount = 80'000;  // most of a day at 1 Hz

/// A line each second, by a pattern of hours, minutes, seconds, and what changes in a place.
std::string Lines(const char* head, const char* pattern) {
    std::string file = head;
    for (int second = 0; second < FixCount; ++second) {
        std::array<char, 256> line{};
        const int size = std::snprintf(line.data(), line.size(), pattern, second / 3600, second / 60 % 60,
                                       second % 60, 10000 + second % 50000);
        file.append(line.data(), static_cast<std::size_t>(size));
    }
    return file;
}

void ReadLines(benchmark::State& state, const char* head, const char* pattern) {
    const std::string file = Lines(head, pattern);
    std::size_t fixes = 0;
    for (auto _ : state) fixes = ReadTrackFile(file).Recordings.at(0).Fixes.size();
    if (fixes != FixCount) state.SkipWithError("not all fixes were read");
    state.SetItemsProcessed(state.iterations() * FixCount);
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(file.size()));
}

BENCHMARK_CAPTURE(ReadLines, own, "", "T N3517.%4$05d E13928.%4$05d 21/06/25 %1$02d:%2$02d:%3$02d 0\r\n")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ReadLines, nmea, "",
                  "$GPRMC,%1$02d%2$02d%3$02d.00,A,3517.%4$05d,N,13928.%4$05d,E,6.52,271.4,210625,,,A\r\n")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ReadLines, igc, "HFDTE210625\r\n",
                  "B%1$02d%2$02d%3$02d35%4$05dN139%4$05dEA0000000000\r\n")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ReadLines, csv, "time,lat,lon,sog,cog\n",
                  "2025-06-21T%1$02d:%2$02d:%3$02d.000Z,35.%4$05d12,139.%4$05d34,6.52,271.4\n")
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace keelview::bench
