#include "analysis/current_estimate.h"

#include <cmath>
#include <vector>

#include "analysis/medians.h"
#include "base/angles.h"

namespace keelview {

namespace {

constexpr std::size_t FewestTurns = 5;
constexpr double SureAlong = 0.15;  // knots
constexpr double FarOff = 3.5;      // times the scatter, of turns that are left out
constexpr int Rounds = 3;
constexpr double ErrAlike =
    1.25;  // turns near each other in time err alike, which makes both parts less sure

/// A part of the current across a turn's axis.
struct PartAcross {
    double Knots = 0.0;
    Way Axis;        // of length 1: by how much it is of the parts across and along the mean wind
    Way Instrument;  // the same as all other turns have it
};

/// Both parts by least squares with instruments.
struct BothParts {
    Way Knots;  // across and along
    double AlongSigma = 0.0;
};

std::optional<BothParts> FitBoth(const std::vector<PartAcross>& parts, const std::vector<bool>& kept,
                                 double scatter) {
    double xx = 0, xy = 0, yx = 0, yy = 0, zxx = 0, zxy = 0, zyy = 0;
    Way right;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        if (!kept[i]) continue;
        const auto& [knots, axis, z] = parts[i];
        xx += z.East * axis.East, xy += z.East * axis.North;
        yx += z.North * axis.East, yy += z.North * axis.North;
        zxx += z.East * z.East, zxy += z.East * z.North, zyy += z.North * z.North;
        right = right + z * knots;
    }
    const double d = xx * yy - xy * yx;
    if (!(std::abs(d) > 1e-9)) return {};
    const Way last{-yx / d, xx / d};  // of the inverse
    return BothParts{{(yy * right.East - xy * right.North) / d, right.Along(last)},
                     ErrAlike * scatter *
                         std::sqrt(zxx * last.East * last.East + 2 * zxy * last.East * last.North +
                                   zyy * last.North * last.North)};
}

/// Fits both parts and leaves out the turns that lie far off, some times over.
std::optional<BothParts> RobustBoth(const std::vector<PartAcross>& parts) {
    std::vector<bool> kept(parts.size(), true);
    double scatter = 0.0;
    std::optional<BothParts> both;
    for (int round = 0; round < Rounds; ++round) {
        both = FitBoth(parts, kept, scatter);
        if (!both) return {};
        std::vector<double> off;
        off.reserve(parts.size());
        for (const PartAcross& part : parts) off.push_back(part.Knots - both->Knots.Along(part.Axis));
        scatter = ScatterAbout(0, off);
        for (std::size_t i = 0; i < parts.size(); ++i) kept[i] = std::abs(off[i]) <= FarOff * scatter;
    }
    return FitBoth(parts, kept, scatter);
}

/// The parts of all turns about the mean direction of the wind.
std::vector<PartAcross> PartsAcross(const WindEstimate& estimate, double wind) {
    const auto about = [wind](double direction) {
        const double shift = TurnBetween(wind, direction) * DegToRad;
        return Way{std::cos(shift), -std::sin(shift)};
    };
    std::vector<PartAcross> parts;
    parts.reserve(estimate.Sights.size());
    for (const WindSight& sight : estimate.Sights)
        parts.push_back({sight.Mean.Along(Towards(sight.Direction + 90)) / KnotMetres,
                         about(sight.Direction), about(sight.Others)});
    return parts;
}

}  // namespace

std::optional<CurrentEstimate> EstimateCurrent(const WindEstimate& estimate) {
    if (estimate.Samples.empty() || estimate.Sights.size() < FewestTurns) return {};
    std::vector<double> across, off;
    across.reserve(estimate.Sights.size());
    off.reserve(estimate.Sights.size());
    Way upwind;
    for (const WindSight& sight : estimate.Sights) {
        const double from = EstimatedWindAt(estimate, sight.Time);
        upwind = upwind + Towards(from);
        across.push_back(sight.Mean.Along(Towards(from + 90)) / KnotMetres);
        off.push_back(TurnBetween(from, sight.Direction));
    }
    CurrentEstimate current;
    current.Axis = WrapDirection(upwind.Bearing() + 90);
    current.AxisSigma = ErrAlike * ScatterAbout(0, off) / std::sqrt(static_cast<double>(off.size()));
    current.Across = MedianOf(across);
    current.Turns = static_cast<int>(across.size());
    current.Sigma = MedianSigma(ScatterAbout(current.Across, across), across.size());
    const auto both = RobustBoth(PartsAcross(estimate, upwind.Bearing()));
    if (both && both->AlongSigma <= SureAlong) {
        current.Along = both->Knots.North;
        current.AlongSigma = both->AlongSigma;
    }
    return current;
}

}  // namespace keelview
