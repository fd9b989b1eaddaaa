#include "analysis/current_estimate.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>
#include <vector>

#include "base/angles.h"

namespace keelview {

namespace {

constexpr std::size_t FewestTurns = 5;

double MiddleOf(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::ranges::nth_element(values, middle);
    return *middle;
}

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
    current.Across = MiddleOf(across);
    current.Turns = static_cast<int>(across.size());
    std::vector<double> off;
    off.reserve(across.size());
    for (const double value : across) off.push_back(std::abs(value - current.Across));
    // The median of n values scatters by sqrt(pi / 2) times as much as their mean.
    const double scatter = MiddleOf(std::move(off)) / 0.6745;
    current.Sigma = scatter * std::sqrt(std::numbers::pi / 2 / current.Turns);
    return current;
}

}  // namespace keelview
