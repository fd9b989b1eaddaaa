#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "base/dates.h"
#include "racedata/limits.h"
#include "racedata/race_control.h"

namespace keelview {

/// Size of a minute of arc at the race area; one pair of numbers serves the whole race.
struct EarthScale {
    double MetresPerLatMinute = 0.0;
    double MetresPerLonMinute = 0.0;
    double LonScale = 1.0;  ///< MetresPerLonMinute / MetresPerLatMinute
};

/// The tracks of all boats, by boat (1 to BoatCount) and point (1 to TrackPointCount). Index 0 exists in
/// both directions and reads as 0; every per-boat array holds TrackPointCount + 1 elements, and a boat
/// without points holds the one of index 0. Distance, speed and course do so from DeriveTracks on.
struct Tracks {
    using Doubles = std::vector<double>;

    std::vector<Doubles> TrackLat;                     ///< minutes of arc, north positive
    std::vector<Doubles> TrackLon;                     ///< minutes of arc, east positive
    std::vector<std::vector<std::int32_t>> TrackTime;  ///< seconds from the start, strictly usable as a key
    std::vector<Doubles> TrackDist;                    ///< nautical miles sailed up to the point
    std::vector<Doubles> TrackSpeed;                   ///< knots from the point to the next
    std::vector<Doubles> TrackCourse;                  ///< degrees true from the point to the next
    std::array<int, MaxBoats + 1> TrackPointCount{};
    double TypicalSpeed = 0.0;              ///< knots, mean of boat 1 over the first half of the race
    std::optional<CivilTime> FirstGpsTime;  ///< local time of the first fix of the first file
    std::optional<CivilTime> LastGpsTime;   ///< local time of the last fix parsed in the last file
};

/// The box of all track points and the home view that follows from it. A point with latitude 0 or longitude
/// 0 does not count.
struct TrackArea {
    double TrackMinLat = 200000.0;  ///< minutes of arc
    double TrackMaxLat = -200000.0;
    double TrackMinLon = 200000.0;
    double TrackMaxLon = -200000.0;
    double HomeCentreLat = 0.0;  ///< middle of the box
    double HomeCentreLon = 0.0;
    double AreaSpan = 0.1;  ///< larger side of the box in minutes of latitude, at least 0.1
};

/// Called before each file is read, with the boat (from 1).
using TrackProgress = std::function<void(int boat)>;

/// The path of a boat's track file, found without regard to case.
std::filesystem::path TrackPath(const std::filesystem::path& appPath, const std::string& boatFile);

/// Reads the tracks of all boats of the race below `appPath`/gpsdat. Allocates `tracks` anew; DataFromTime,
/// DataToTime, StartTimeText and FinishTimeText of `race` are read, and worked out from the first track
/// where the start is not given (four minutes after the first fix). `area` and `scale` are those of the box
/// of all tracks. Returns the path of the first track file that does not exist, with which reading stops;
/// empty when all were there. A file of 500 bytes or fewer, or with another extension than TRK, DTR, trk or
/// dtr, gives no points.
std::filesystem::path LoadAllTracks(const std::filesystem::path& appPath, RaceControl& race, Tracks& tracks,
                                    TrackArea& area, EarthScale& scale, const TrackProgress& progress);

}  // namespace keelview
