#include "analysis/track_derivation.h"

#include <algorithm>
#include <cmath>

#include "base/angles.h"

namespace keelview {
namespace {

// The earth model of the charts: flattening of GRS 80, and factors that bring the geodetic lengths of a
// minute of arc to the scale of the charts.
constexpr double Flattening = 1.0 / 298.257222101;
constexpr double SemiMajorAxis = 6378136.0;  // metres
constexpr double LatFactor = 0.99854;
constexpr double LonFactor = 0.99794;

constexpr double SpeedBarPixels = 70.0;
constexpr double SpeedBarHeadroom = 1.6;  // a full bar in typical speeds
constexpr double UsualSpeed = 5.0;        // knots, where the tracks give none

/// Seconds that the start of a race is taken to need before its typical speed is measured.
constexpr double StartAllowance = 120.0;

void DeriveTrack(std::size_t boat, int pointCount, const EarthScale& scale, Tracks& tracks) {
    const Tracks::Doubles& lat = tracks.TrackLat[boat];
    const Tracks::Doubles& lon = tracks.TrackLon[boat];
    const std::vector<std::int32_t>& time = tracks.TrackTime[boat];
    const std::size_t last = static_cast<std::size_t>(pointCount);
    Tracks::Doubles& dist = tracks.TrackDist[boat];
    Tracks::Doubles& speed = tracks.TrackSpeed[boat];
    Tracks::Doubles& course = tracks.TrackCourse[boat];
    for (auto* derived : {&dist, &speed, &course}) derived->assign(last + 1, 0.0);

    const double milesPerMinute = scale.MetresPerLatMinute / MetresPerNauticalMile;
    double total = 0.0;
    for (std::size_t point = 1; point < last; ++point) {
        const double north = lat[point + 1] - lat[point];
        const double east = (lon[point + 1] - lon[point]) * scale.LonScale;
        const double leg = std::sqrt(east * east + north * north) * milesPerMinute;
        total += leg;
        dist[point + 1] = total;
        course[point] = BearingOf(east, north);
        const double seconds = static_cast<double>(time[point + 1]) - time[point];
        if (seconds > 0.0) speed[point] = leg / seconds * 3600.0;
    }
}

/// The last point at or before a moment whose next point lies behind it; 0 if there is none.
std::size_t PointBefore(const std::vector<std::int32_t>& times, double moment) {
    for (std::size_t point = 1; point + 1 < times.size(); ++point) {
        if (times[point] <= moment && times[point + 1] > moment) return point;
    }
    return 0;
}

double ComputeTypicalSpeed(int raceDuration, const Tracks& tracks) {
    const double half = (raceDuration - StartAllowance) / 2;
    const Tracks::Doubles& dist = tracks.TrackDist[1];
    const std::size_t from = PointBefore(tracks.TrackTime[1], 0.0);
    const std::size_t to = PointBefore(tracks.TrackTime[1], half);
    return (dist[to] - dist[from]) / half * 3600.0;
}

}  // namespace

EarthScale ComputeEarthScale(double latitude) {
    constexpr double e2 = 2.0 * Flattening - Flattening * Flattening;
    const double radians = latitude / 60.0 * DegToRad;
    const double sine = std::sin(radians);
    const double w2 = 1.0 - e2 * sine * sine;
    const double meridian = SemiMajorAxis / std::pow(w2, 1.5);
    const double primeVertical = SemiMajorAxis / std::sqrt(w2);
    EarthScale scale;
    scale.MetresPerLatMinute = DegToRad / 60.0 * meridian * (1.0 - e2) * LatFactor;
    scale.MetresPerLonMinute = DegToRad / 60.0 * primeVertical * std::cos(radians) * LonFactor;
    scale.LonScale = scale.MetresPerLonMinute / scale.MetresPerLatMinute;
    return scale;
}

void DeriveTracks(const RaceControl& race, const EarthScale& scale, Tracks& tracks) {
    const int boatCount = std::min(race.BoatCount, static_cast<int>(tracks.TrackLat.size()) - 1);
    for (int boat = 1; boat <= boatCount; ++boat) {
        const auto at = static_cast<std::size_t>(boat);
        DeriveTrack(at, tracks.TrackPointCount.at(at), scale, tracks);
    }
    tracks.TypicalSpeed = boatCount > 0 ? ComputeTypicalSpeed(race.RaceDuration, tracks) : 0.0;
}

double SpeedBarScale(double typicalSpeed) {
    const bool usable = std::isfinite(typicalSpeed) && typicalSpeed > 0.0;
    return SpeedBarPixels / ((usable ? typicalSpeed : UsualSpeed) * SpeedBarHeadroom);
}

}  // namespace keelview
