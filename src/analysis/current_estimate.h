#pragma once

#include <optional>

#include "analysis/wind_estimate.h"

namespace keelview {

/// The current across the wind, as the turns of a race tell it.
struct CurrentEstimate {
    double Axis = 0.0;    ///< degrees true: the mean direction of the wind + 90
    double Across = 0.0;  ///< towards that, knots
    double Sigma = 0.0;   ///< knots
    int Turns = 0;        ///< on which it rests
};

/// A boat that sails alike on both sides has the current as the part of half the sum of both velocities
/// that lies across the estimated wind; the median of all turns counts. Its part along the wind cannot be
/// told from such turns. Nothing for fewer than 5 turns.
std::optional<CurrentEstimate> EstimateCurrent(const WindEstimate& estimate);

}  // namespace keelview
