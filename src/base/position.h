#pragma once

namespace keelview {

/// A place on earth in minutes of arc, north and east positive.
struct Position {
    double Lat = 0.0;
    double Lon = 0.0;

    friend bool operator==(const Position&, const Position&) = default;
};

/// Minutes of arc; what is farther off is no place on a globe, and would spoil the sums that follow. Any
/// slip of the unit lies below it.
inline constexpr double FarthestMinutes = 1e7;

/// True for the place that a receiver writes when it knows none: 0, 0 to the last digit.
constexpr bool IsNoPlace(double lat, double lon) {
    return lat == 0.0 && lon == 0.0;
}

}  // namespace keelview
