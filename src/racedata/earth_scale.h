#pragma once

namespace keelview {

inline constexpr double MetresPerNauticalMile = 1852.0;

/// Size of a minute of arc at the race area; one pair of numbers serves the whole race.
struct EarthScale {
    double MetresPerLatMinute = 0.0;
    double MetresPerLonMinute = 0.0;
    double LonScale = 1.0;  ///< MetresPerLonMinute / MetresPerLatMinute
};

/// Size of a minute of arc at a latitude (minutes of arc), from the meridian radius of curvature and that
/// of the prime vertical; flattening of GRS 80, semi-major axis 6378136 m, each with the house factor that
/// brings it to the scale of the charts. At latitude 35 degrees a minute is 1846.3 m by 1518.3 m. Also sets
/// LonScale. Beyond 85 degrees it is the scale of 85, so that a minute of longitude never shrinks to
/// nothing.
EarthScale ComputeEarthScale(double latitude);

}  // namespace keelview
