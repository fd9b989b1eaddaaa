#include "editor/track_files.h"

#include <algorithm>
#include <string>
#include <utility>

#include "base/files.h"
#include "base/strings.h"
#include "racedata/track_reading.h"
#include "racedata/tracks/formats.h"

namespace keelview {

namespace fs = std::filesystem;

namespace {

/// "a.gpx", "a 2.gpx", "a 3.gpx".
std::string Numbered(const fs::path& name, int number) {
    if (number == 1) return name.string();
    return name.stem().string() + " " + std::to_string(number) + name.extension().string();
}

/// The name in gpsdat of a file with these bytes, which is written there where it does not lie yet.
std::string PlaceInGpsdat(const fs::path& appPath, const fs::path& file, const std::string& bytes,
                          std::error_code& error) {
    const fs::path folder = FindBelow(appPath, "gpsdat");
    std::error_code noFolder;
    if (fs::equivalent(file.parent_path(), folder, noFolder)) return file.filename().string();
    for (int number = 1;; ++number) {
        std::string name = Numbered(file.filename(), number);
        const fs::path place = FindBelow(folder, name);
        if (ReadWholeFile(place) == bytes) return place.filename().string();
        if (IsFile(place)) continue;
        error = WriteFileAtomically(place, bytes);
        return name;
    }
}

/// A name that fits in a line.
std::string OneLine(std::string name) {
    std::ranges::replace_if(
        name, [](unsigned char letter) { return letter < ' '; }, ' ');
    return std::string(Trim(name));
}

}  // namespace

BroughtTracks BringTracks(const fs::path& appPath, const fs::path& file) {
    BroughtTracks brought;
    std::string bytes;
    brought.Why = FetchTrackFile(file, bytes);
    if (brought.Why != Refusal::None) return brought;
    const TrackFileContent content = ReadTrackFile(bytes, file.filename().string());
    const std::size_t count = content.Recordings.size();
    brought.Why = content.Refused;
    if (count == 0) return brought;
    const std::string name = PlaceInGpsdat(appPath, file, bytes, brought.Error);
    if (brought.Error) return brought;
    const std::string stem = file.stem().string();
    if (count == 1) brought.Boats.push_back({.BoatFile = name, .BoatName = stem});
    for (std::size_t i = 1; count > 1 && i <= count; ++i) {
        const std::string number = std::to_string(i);
        std::string boat = OneLine(content.Recordings[i - 1].Boat);
        if (boat.empty()) boat.append(stem).append(" ").append(number);
        std::string recording = name;
        recording.append("#").append(number);
        brought.Boats.push_back({.BoatFile = std::move(recording), .BoatName = std::move(boat)});
    }
    return brought;
}

}  // namespace keelview
