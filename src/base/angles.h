#pragma once

#include <cmath>
#include <numbers>

namespace keelview {

/// Radians per degree.
inline constexpr double DegToRad = std::numbers::pi / 180.0;

/// An angle difference brought into -180 to 180 degrees by one test each way.
constexpr double WrapDifference(double degrees) {
    if (degrees < -180.0) degrees += 360.0;
    if (degrees > 180.0) degrees -= 360.0;
    return degrees;
}

/// The shortest turn from one direction to another in degrees, -180 to 180, however far off either lies.
inline double TurnBetween(double from, double to) {
    const double turn = to - from;
    return std::abs(turn) < 180.0 ? turn
                                  : std::remainder(turn, 360.0);  // as it is, without a library's walk
}

/// A direction brought into 0 up to below 360 degrees by one test each way.
constexpr double WrapDirection(double degrees) {
    if (degrees < 0.0) degrees += 360.0;
    if (degrees >= 360.0) degrees -= 360.0;
    return degrees;
}

/// Minutes of arc all round the earth.
inline constexpr double MinutesRound = 360.0 * 60.0;

/// A longitude in minutes of arc as it is written and shown: within 180 degrees of Greenwich.
inline double WrapLongitude(double minutes) {
    return std::remainder(minutes, MinutesRound);
}

/// The same longitude counted on from another one, in minutes of arc: at most half a turn from it. So what
/// lies on both sides of the date line is one piece of water, with ordinary differences.
inline double LongitudeNear(double minutes, double other) {
    return minutes - MinutesRound * std::round((minutes - other) / MinutesRound);
}

/// The bearing of the vector (east, north) in degrees, 0 up to below 360. A vector without a north part
/// points to 90 when east is 0 or more, else to 270, so a vector of no length has the bearing 90.
inline double BearingOf(double east, double north) {
    if (north == 0.0) return east >= 0.0 ? 90.0 : 270.0;
    double bearing = std::atan(east / north) / DegToRad;
    if (north < 0.0) bearing += 180.0;
    return WrapDirection(bearing);
}

}  // namespace keelview
