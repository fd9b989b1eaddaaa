#include "analysis/found_race_entry.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "analysis/found_tracks.h"
#include "base/numbers.h"
#include "racedata/gps_track.h"

namespace keelview {

namespace {

constexpr int Decimals = 5;  // of minutes of arc: two centimetres

TextNumber LatOf(const Position& at) {
    return TextNumber(RoundDecimals(at.Lat, Decimals));
}

TextNumber LonOf(const Position& at) {
    return TextNumber::Longitude(RoundDecimals(at.Lon, Decimals));
}

/// Gun and line as devices of the race were told them, on the race's clock.
void TakeFileHints(const std::filesystem::path& tree, const RaceControl& race, FinderHints& hints) {
    std::vector<std::filesystem::path> paths;
    for (const BoatEntry& boat : race.Boats) paths.push_back(TrackPath(tree, boat.BoatFile));
    const auto files = FindTracksIn(HandedFiles(paths), {});
    if (!files) return;
    std::vector<int> guns;
    const auto placeOf = [](const NamedPlace& place) { return Position{place.Lat * 60, place.Lon * 60}; };
    for (const FoundFile& file : *files) {
        if (file.Hints.Gun)
            guns.push_back(static_cast<int>(static_cast<double>(*file.Hints.Gun) / 1000 +
                                            race.TimeDiff.value_or(0) * 3600 -
                                            static_cast<double>(hints.Clock)));
        if (file.Hints.LinePin && file.Hints.LineBoat && !hints.Line)
            hints.Line = std::pair(placeOf(*file.Hints.LinePin), placeOf(*file.Hints.LineBoat));
    }
    std::ranges::sort(guns);
    if (!guns.empty()) hints.Gun = guns[guns.size() / 2];
}

}  // namespace

void TakeFoundRace(const FoundRace& found, CivilTime clock, RaceControl& race) {
    race.Start = RaceTime(clock + found.Gun);
    race.Finish = RaceTime();
    if (found.Finish) {
        const CivilTime last = clock + *found.Finish;
        race.Finish = RaceTime(last + 60 - last % 60);
    }
    race.Marks.Clear();
    for (const Position& at : found.Marks) race.Marks.Add({LatOf(at), LonOf(at)});
    race.Lines.Clear();
    for (const auto& [left, right] : found.Lines)
        race.Lines.Add({LatOf(left), LonOf(left), LatOf(right), LonOf(right)});
    race.CourseOrder.Clear();
    for (const std::string& entry : found.Course) race.CourseOrder.Add(entry);
    race.HandPasses.Clear();
    if (found.Wind) race.WindDirection = WrapDirection(std::round(*found.Wind));
}

const FoundRace* DayFinding::Surest() const {
    const auto surest = std::ranges::max_element(Found.Races, {}, &FoundRace::Confidence);
    return surest == Found.Races.end() ? nullptr : &*surest;
}

DayFinding FindRacesOf(const std::filesystem::path& appPath, const RaceControl& race) {
    RaceControl day = race;
    day.Start = day.Finish = RaceTime();
    day.DataFromTime = day.DataToTime = std::nullopt;
    Tracks tracks;
    TrackArea area;
    EarthScale scale;
    LoadAllTracks(appPath, day, tracks, area, scale, {});
    FinderHints hints;
    hints.Clock = day.Start.At().value_or(0);
    if (race.WindDirection != 0) hints.Wind = race.WindDirection;
    TakeFileHints(appPath, day, hints);
    return {FindRaces(tracks, scale, hints), hints.Clock};
}

}  // namespace keelview
