#pragma once

#include <cmath>
#include <cstdint>
#include <numbers>
#include <string>

#include "analysis/track_derivation.h"
#include "base/angles.h"
#include "base/position.h"
#include "racedata/gps_track.h"
#include "racedata/race_control.h"
#include "racedata/wind_file.h"

namespace keelview::bench {

// The race that all benchmarks speak of: a large fleet, five and a half hours, a fix a second.
inline constexpr int Boats = 50;
inline constexpr int LargestFleet = MaxBoats;
inline constexpr int Fixes = 20000;
inline constexpr int Entries = 20;
inline constexpr double MiddleLat = 2100;  // minutes of arc
inline constexpr double MiddleLon = 8400;
inline constexpr double HalfBeat = 1;       // minutes of arc from the middle to either mark
inline constexpr double LapSeconds = 1900;  // up and down once; ten laps and a bit

/// Where a boat is at a second: up and down between two marks, each boat a little later and wider than the
/// one before it, tacking on the way.
inline Position PlaceAt(int boat, int second) {
    const double turn = (second - boat * 3) / LapSeconds * 2 * std::numbers::pi;
    const double tack = 0.2 * std::asin(std::sin(turn * 7)) * std::sin(turn);
    return {MiddleLat - (HalfBeat + 0.01) * std::cos(turn),
            MiddleLon + tack + (0.03 + 0.0005 * boat) * std::sin(turn)};
}

/// A start line below the lower mark, then up and down: L1, MK1, MK2, MK1, and so on.
inline void SetCourse(RaceControl& race, int entries) {
    const TextNumber lineLat(MiddleLat - 0.9 * HalfBeat);
    race.Marks = {{TextNumber(MiddleLat + HalfBeat), TextNumber(MiddleLon)},
                  {TextNumber(MiddleLat - HalfBeat), TextNumber(MiddleLon)}};
    race.Lines = {{lineLat, TextNumber(MiddleLon - 0.1), lineLat, TextNumber(MiddleLon + 0.15)}};
    race.CourseOrder = {"L1"};
    for (int entry = 2; entry <= entries; ++entry) race.CourseOrder.Add(entry % 2 == 0 ? "MK1" : "MK2");
}

/// The race of so many boats with their course, without a wind file.
inline RaceControl LongRace(int boats = Boats) {
    RaceControl race;
    race.RaceFileName = "long.txt";
    race.Start = RaceTime("2026/10/03 12:30:00");
    race.RaceDuration = Fixes;
    race.WindDirection = 5;
    for (int boat = 1; boat <= boats; ++boat) race.Boats.Add({"", "JPN " + std::to_string(4000 + boat)});
    SetCourse(race, Entries);
    return race;
}

/// The tracks of all boats, derived.
inline void SailFleet(const RaceControl& race, Tracks& tracks, TrackArea& area, EarthScale& scale) {
    tracks = {};
    tracks.Boats.Resize(race.Boats.Count());
    for (int boat = 1; boat <= tracks.Boats.Count(); ++boat) {
        Track& track = tracks.Boats[boat];
        for (int second = 1; second <= Fixes; ++second) {
            const Position at = PlaceAt(boat, second);
            track.TrackLat.Add(at.Lat);
            track.TrackLon.Add(at.Lon);
            track.TrackTime.Add(second - 60);
        }
    }
    area = {};
    area.HomeCentreLat = MiddleLat;
    area.HomeCentreLon = MiddleLon;
    area.AreaSpan = 2 * HalfBeat + 0.02;
    scale = ComputeEarthScale(MiddleLat);
    DeriveTracks(race, scale, tracks);
}

/// Wind samples over the whole race, from north, to and fro.
inline void BlowWind(int samples, RaceControl& race, WindData& wind) {
    race.WindFileName = "long.csv";
    wind = {};
    for (int i = 1; i <= samples; ++i)
        wind.Add({static_cast<std::int32_t>(std::int64_t{i} * Fixes / samples), 10 + std::sin(i / 50.0),
                  WrapDirection(5 + 15 * std::sin(i / 300.0))});
}

}  // namespace keelview::bench
