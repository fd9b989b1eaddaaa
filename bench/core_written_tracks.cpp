// Files of XML and JSON, from their bytes to fixes; items are fixes.

#include <benchmark/benchmark.h>

#include <array>
#include <cstdio>
#include <string>

#include "racedata/tracks/formats.h"

namespace keelview::bench {
namespace {

constexpr int FixCount = 86'400;  // a day at 1 Hz

/// One fix a second, each written by a pattern that takes its time, latitude and longitude.
std::string File(const char* head, const char* pattern, const char* tail) {
    std::string file = head;
    for (int second = 0; second < FixCount; ++second) {
        std::array<char, 32> time{};
        std::snprintf(time.data(), time.size(), "2026-10-03T%02d:%02d:%02d.000Z", second / 3600,
                      second / 60 % 60, second % 60);
        std::array<char, 512> fix{};
        const double lat = 35.25 + second * 1e-6, lon = 139.5 - second * 1e-6;
        file.append(fix.data(),
                    std::size_t(std::snprintf(fix.data(), fix.size(), pattern, time.data(), lat, lon)));
    }
    return file + tail;
}

void Read(benchmark::State& state, const std::string& file) {
    std::size_t fixes = 0;
    for (auto _ : state) fixes = ReadTrackFile(file).Recordings.at(0).Fixes.size();
    if (fixes != FixCount) state.SkipWithError("not all fixes were read");
    state.SetItemsProcessed(state.iterations() * FixCount);
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(file.size()));
}

/// As most trackers write it.
void ReadPlainGpx(benchmark::State& state) {
    Read(state, File("<gpx><trk><trkseg>\n",
                     "<trkpt lat=\"%2$.7f\" lon=\"%3$.7f\"><ele>3.2</ele><time>%1$s</time></trkpt>\n",
                     "</trkseg></trk></gpx>"));
}
BENCHMARK(ReadPlainGpx)->Unit(benchmark::kMillisecond);

/// As a watch exports it, with pulse and temperature.
void ReadGpx(benchmark::State& state) {
    Read(state,
         File("<gpx><trk><trkseg>",
              "\n      <trkpt lat=\"%2$.20f\" lon=\"%3$.20f\">\n        <ele>-500</ele>\n"
              "        <time>%1$s</time>\n        <extensions>\n          <ns3:TrackPointExtension>\n"
              "            <ns3:atemp>33.0</ns3:atemp>\n            <ns3:hr>110</ns3:hr>\n"
              "          </ns3:TrackPointExtension>\n        </extensions>\n      </trkpt>",
              "</trkseg></trk></gpx>"));
}
BENCHMARK(ReadGpx)->Unit(benchmark::kMillisecond);

void ReadTcx(benchmark::State& state) {
    Read(state, File("<TrainingCenterDatabase><Activity><Track>",
                     "<Trackpoint><Time>%s</Time><Position><LatitudeDegrees>%.7f</LatitudeDegrees>"
                     "<LongitudeDegrees>%.7f</LongitudeDegrees></Position></Trackpoint>\n",
                     "</Track></Activity></TrainingCenterDatabase>"));
}
BENCHMARK(ReadTcx)->Unit(benchmark::kMillisecond);

void ReadKml(benchmark::State& state) {
    Read(state,
         File("<kml><Placemark><gx:Track>", "<when>%1$s</when>\n<gx:coord>%3$.7f %2$.7f 0</gx:coord>\n",
              "</gx:Track></Placemark></kml>"));
}
BENCHMARK(ReadKml)->Unit(benchmark::kMillisecond);

void ReadGeoJson(benchmark::State& state) {
    Read(state, File(R"({"type":"FeatureCollection","features":[)",
                     R"({"type":"Feature","properties":{"time":"%1$s"},)"
                     R"("geometry":{"type":"Point","coordinates":[%3$.7f,%2$.7f]}},)",
                     "{}]}"));
}
BENCHMARK(ReadGeoJson)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace keelview::bench
