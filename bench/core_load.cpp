#include <benchmark/benchmark.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "long_race.h"

namespace keelview::bench {
namespace {

/// A tree with a track file for each boat, gone with its owner.
struct TrackTree {
    std::filesystem::path Root = std::filesystem::temp_directory_path() / "keelview-bench-tracks";
    RaceControl Race = LongRace();

    explicit TrackTree(int fixes) {
        std::filesystem::create_directories(Root / "gpsdat");
        for (int boat = 1; boat <= Boats; ++boat) {
            Race.BoatFile[boat] = std::to_string(boat) + ".trk";
            std::ofstream file(Root / "gpsdat" / Race.BoatFile[boat]);
            file << "H  SOFTWARE\r\nM  WGS 84\r\nU  LAT LON DM\r\n";
            for (int second = 0; second < fixes; ++second) WriteFix(file, boat, second);
        }
    }
    ~TrackTree() { std::filesystem::remove_all(Root); }
    TrackTree(const TrackTree&) = delete;
    TrackTree& operator=(const TrackTree&) = delete;

  private:
    static std::string Coordinate(char mark, double minutes) {
        const int degrees = static_cast<int>(minutes / 60);
        char text[32];
        std::snprintf(text, sizeof text, "%c%d%08.5f", mark, degrees, minutes - degrees * 60);
        return text;
    }
    static void WriteFix(std::ofstream& file, int boat, int second) {
        const Position at = PlaceAt(boat, second);
        char clock[40];
        std::snprintf(clock, sizeof clock, "26/10/03 %02d:%02d:%02d", second / 3600 + 3, second / 60 % 60,
                      second % 60);
        file << "T  " << Coordinate('N', at.Lat) << ' ' << Coordinate('E', at.Lon) << ' ' << clock
             << " 0\r\n";
    }
};

long ResidentKilobytes() {
    std::ifstream file("/proc/self/statm");
    long pages = 0;
    file >> pages >> pages;
    return pages * 4;
}

/// `fixes` of each of 50 boats, read and derived; `bytes_a_fix` is what the process grew by.
void LoadAndDerive(benchmark::State& state) {
    const int fixes = static_cast<int>(state.range(0));
    TrackTree tree(fixes);
    const long before = ResidentKilobytes();
    Tracks tracks;
    TrackArea area;
    EarthScale scale;
    for (auto _ : state) {
        RaceControl race = tree.Race;
        race.TimeDiff = 9;
        race.StartTimeText.clear();  // the whole track, whatever its date
        LoadAllTracks(tree.Root, race, tracks, area, scale, {});
        DeriveTracks(race, scale, tracks);
    }
    const double all = static_cast<double>(Boats) * fixes;
    if (tracks.TrackPointCount[Boats] != fixes) state.SkipWithError("not all fixes were read");
    state.SetItemsProcessed(static_cast<std::int64_t>(all) * state.iterations());
    state.counters["bytes_a_fix"] = static_cast<double>(ResidentKilobytes() - before) * 1024 / all;
}
BENCHMARK(LoadAndDerive)->ArgName("fixes")->Arg(10000)->Arg(Fixes)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace keelview::bench
