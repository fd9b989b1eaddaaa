#include "target.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>

namespace keelview::fuzz {

std::span<const Target> AllTargets() {
    static constexpr std::array<Target, 20> Targets{{
        {"race_display", "race_file", ReadRaceForDisplay},
        {"race_editor", "race_file", ReadRaceForEditor},
        {"race_distribution", "race_file", ReadRaceForDistribution},
        {"gps_track", "gps_track", ReadTrack},
        {"wind_file", "wind_file", ReadWind},
        {"coastline", "coastline", ReadCoast},
        {"shore_file", "shore_file", ReadShores},
        {"start_files", "start_files", ReadStartFiles},
        {"race_tree", "race_tree", ReadTree},
        {"track_file", "track_file", ReadAnyTrackFile},
        {"fit", "fit", ReadFitFile},
        {"vkx", "vkx", ReadVkxFile},
        {"gpx", "gpx", ReadGpxFile},
        {"tcx", "tcx", ReadTcxFile},
        {"kml", "kml", ReadKmlFile},
        {"geojson", "geojson", ReadGeoJsonFile},
        {"own_lines", "own_lines", ReadOwnLineTrack},
        {"nmea", "nmea", ReadNmeaTrack},
        {"igc", "igc", ReadIgcTrack},
        {"csv", "csv", ReadCsvTrack},
    }};
    return Targets;
}

const Target* FindTarget(std::string_view name) {
    const auto targets = AllTargets();
    const auto found = std::ranges::find(targets, name, &Target::Name);
    return found == targets.end() ? nullptr : &*found;
}

void Require(bool holds, const char* promise) {
    if (holds) return;
    std::fprintf(stderr, "broken promise: %s\n", promise);
    std::abort();
}

const TempTree& Tree() {
    static const TempTree tree;
    return tree;
}

std::string AsTrack(std::string_view input) {
    constexpr std::size_t smallestFile = 501;
    std::string text(input);
    if (text.size() < smallestFile) text += "\n" + std::string(smallestFile - text.size(), '#');
    return text;
}

}  // namespace keelview::fuzz
