#pragma once

#include <vector>

#include "analysis/found_tracks.h"
#include "racedata/earth_scale.h"

namespace keelview {

/// Why a boat is left out of a race that is planned.
enum class LeftOut {
    No,
    OtherTime,   ///< it was not on the water with the fleet
    OtherPlace,  ///< it was elsewhere at the time of the fleet
    TooShort,    ///< less than a minute or than ten fixes
    TooMany      ///< a race holds no more boats
};

/// How a track lies to the fleet.
struct FleetPlace {
    LeftOut Why = LeftOut::No;
    double Away = 0.0;  ///< OtherTime: seconds before (negative) or behind it; OtherPlace: nautical miles
};

/// Metres between two places by the scale of their water, good for some miles.
double MetresBetween(const EarthScale& scale, const Position& from, const Position& to);

/// True for one recording that was handed in twice, be it in two formats or cut out of the other: it goes
/// on for nine tenths of the shorter one, and there both are at the same places, to five metres.
bool IsSameTrack(const FoundTrack& track, const FoundTrack& other);

/// Which tracks are of one fleet. Two boats meet that are on the water together, for ten minutes or half of
/// the shorter time, and then come within three miles of each other; the fleet is the largest set of boats
/// that meet, one by way of another, of equal ones that with the longest tracks together.
std::vector<FleetPlace> FindFleet(const std::vector<const FoundTrack*>& tracks);

}  // namespace keelview
