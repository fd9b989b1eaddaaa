#pragma once

#include <string>
#include <string_view>

#include "base/numbers.h"
#include "session/app_state.h"

namespace keelview {

/// The speed of a boat in knots as the map writes it, with two decimals at most: "5.3".
inline std::string ShownSpeed(const BoatMoment& boat) {
    return SurfaceNumberText(RoundDecimals(boat.On.Speed, 2));
}

/// A boat's name and speed, "Alpha (5.32)"; hints write them without the gap.
inline std::string NameAndSpeed(const std::string& name, const BoatMoment& boat,
                                std::string_view gap = " ") {
    return name + std::string(gap) + "(" + ShownSpeed(boat) + ")";
}

}  // namespace keelview
