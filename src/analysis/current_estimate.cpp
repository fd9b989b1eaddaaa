#include "analysis/current_estimate.h"

#include <vector>

#include "analysis/medians.h"
#include "base/angles.h"

namespace keelview {

namespace {

constexpr std::size_t FewestTurns = 5;

}  // namespace

std::optional<CurrentEstimate> EstimateCurrent(const WindEstimate& estimate) {
    if (estimate.Samples.empty() || estimate.Sights.size() < FewestTurns) return {};
    std::vector<double> across;
    across.reserve(estimate.Sights.size());
    Way upwind;
    for (const WindSight& sight : estimate.Sights) {
        const double from = EstimatedWindAt(estimate, sight.Time);
        upwind = upwind + Towards(from);
        across.push_back(sight.Mean.Along(Towards(from + 90)) / KnotMetres);
    }
    CurrentEstimate current;
    current.Axis = WrapDirection(upwind.Bearing() + 90);
    current.Across = MedianOf(across);
    current.Turns = static_cast<int>(across.size());
    current.Sigma = MedianSigma(ScatterAbout(current.Across, across), across.size());
    return current;
}

}  // namespace keelview
