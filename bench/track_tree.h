#pragma once

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "long_race.h"

namespace keelview::bench {

/// A tree with a track file for each boat of a long race, `fixes` long, gone with its owner.
struct TrackTree {
    std::filesystem::path Root = std::filesystem::temp_directory_path() / "keelview-bench-tracks";
    RaceControl Race;

    explicit TrackTree(int fixes, int boats = Boats) : Race(LongRace(boats)) {
        std::filesystem::create_directories(Root / "gpsdat");
        for (int boat = 1; boat <= boats; ++boat) {
            const std::string name = std::to_string(boat) + ".trk";
            Race.Boats[boat].BoatFile = name;
            std::ofstream file(Root / "gpsdat" / name);
            file << "H  SOFTWARE\r\nM  WGS 84\r\nU  LAT LON DM\r\n";
            for (int second = 0; second < fixes; ++second) WriteFix(file, boat, second);
        }
    }
    ~TrackTree() { std::filesystem::remove_all(Root); }
    TrackTree(const TrackTree&) = delete;
    TrackTree& operator=(const TrackTree&) = delete;

    /// Reads all tracks, the whole of them, and derives what follows.
    void Load(Tracks& tracks, TrackArea& area, EarthScale& scale) const {
        RaceControl race = Race;
        race.TimeDiff = 9;
        race.Start = {};  // the whole track, whatever its date
        LoadAllTracks(Root, race, tracks, area, scale, {});
        DeriveTracks(race, scale, tracks);
    }

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

}  // namespace keelview::bench
