#pragma once

#include <optional>

#include "analysis/plane.h"
#include "analysis/wind_estimate.h"

namespace keelview {

/// The current, as the turns of a race tell it.
struct CurrentEstimate {
    double Axis = 0.0;            ///< degrees true: the mean direction of the wind + 90
    double AxisSigma = 0.0;       ///< degrees
    double Across = 0.0;          ///< towards that, knots
    double Sigma = 0.0;           ///< knots
    int Turns = 0;                ///< on which it rests
    std::optional<double> Along;  ///< to windward, knots
    double AlongSigma = 0.0;      ///< knots

    /// Where the water goes, metres a second, as far as it is known.
    Way Velocity() const {
        return (Towards(Axis) * Across + Towards(Axis - 90) * Along.value_or(0)) * KnotMetres;
    }
};

/// A boat that sails alike on both sides has the current as the part of half the sum of both velocities
/// that lies across the wind; the median of all turns counts. Turns in one wind cannot tell its part along
/// the wind, as boats that sail faster look the same. Large shifts do: then the parts across each turn's
/// own axis belong to several directions, and both parts follow by least squares. A turn with a wrong axis
/// has a wrong part across it, too, so the axes of all other turns stand in as instruments. The part along
/// the wind is told where it is known to 0.15 knots. Nothing for fewer than 5 turns.
std::optional<CurrentEstimate> EstimateCurrent(const WindEstimate& estimate);

}  // namespace keelview
