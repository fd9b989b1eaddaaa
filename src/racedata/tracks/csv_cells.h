#pragma once

#include <string_view>

namespace keelview {

/// The letters of both halves of the globe, and the degrees up to the end of each.
struct GlobeSides {
    char Positive, Negative;
    double Largest;
};
inline constexpr GlobeSides LatitudeSides{'N', 'S', 90.0};
inline constexpr GlobeSides LongitudeSides{'E', 'W', 180.0};

/// The number of a whole cell, with a point or a comma before its fraction; NoNumber if it is none.
double CsvNumber(std::string_view cell);

/// Degrees of a cell such as "-35.2875", "N35 17.25", "35°17'15\"S", "-35 17,25" or "N3517.25"; NoNumber
/// for any other, and for 60 and more minutes or seconds.
double CsvAngle(std::string_view cell, GlobeSides sides);

}  // namespace keelview
