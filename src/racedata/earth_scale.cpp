#include "racedata/earth_scale.h"

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
constexpr double FarthestDegrees = 85.0;

}  // namespace

EarthScale ComputeEarthScale(double latitude) {
    constexpr double e2 = 2.0 * Flattening - Flattening * Flattening;
    const double radians = std::clamp(latitude / 60.0, -FarthestDegrees, FarthestDegrees) * DegToRad;
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

}  // namespace keelview
