#pragma once

#include <optional>
#include <vector>

#include "analysis/fleet_corners.h"

namespace keelview {

/// A place about which boats turn to one side.
struct TurnPlace {
    std::vector<Corner> Turns;
    std::vector<Corner> Others;  ///< turns to the other side there
};

/// The places where the turns of most boats lie together, those of most first. A turn to another angle off
/// the wind weighs more than a gybe, and that more than a tack. Each corner is a turn of one place at most.
std::vector<TurnPlace> FindTurnPlaces(const std::vector<Corner>& corners, int boats,
                                      const std::optional<double>& wind);

/// Metres that turns at one mark lie apart.
inline constexpr double TurnReach = 25;

}  // namespace keelview
