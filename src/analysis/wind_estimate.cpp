#include "analysis/wind_estimate.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "analysis/direction_smoother.h"
#include "analysis/medians.h"
#include "base/parallel.h"

namespace keelview {

namespace {

constexpr double BeforeFrom = -25, BeforeTo = -5, AfterFrom = 10, AfterTo = 30;  // seconds from the turn
constexpr double LeastHalf = 8.0, LargestHalf = 65.0;  // degrees between a boat's course and the axis
constexpr double AroundMark = 30.0;                    // seconds
constexpr double FarFromAxis = 30.0;                   // degrees off most turns, that are no wind shift
constexpr double LeastSigma = 1.0;                     // degrees of a single turn: no helmsman is better
constexpr double TackHalf = 35.0;                      // degrees: tacks are wider, gybes narrower
constexpr int FewestTurns = 3;
constexpr std::size_t MostCandidates = 100;
constexpr double SampleEvery = 30.0, CountedWithin = 150.0;  // seconds

/// A turn with a steady way before and behind.
struct AxisTurn {
    double Time = 0.0;
    double Middle = 0.0;  ///< bearing between both ways, on the axis: upwind of a tack, downwind of a gybe
    double Half = 0.0;    ///< degrees between axis and ways
    double Sigma = 0.0;   ///< degrees of the axis
    double Speed = 0.0;   ///< mean of both ways, metres a second
    Way Mean;             ///< half the sum of both ways, metres a second
};

bool NearMark(const OneBased<std::optional<int>>& passes, double t) {
    return std::ranges::any_of(passes,
                               [&](const auto& pass) { return pass && std::abs(*pass - t) < AroundMark; });
}

std::optional<AxisTurn> AxisOf(const BoatMotion& motion, const std::vector<CourseTurn>& turns,
                               std::size_t turn) {
    const double t = turns[turn].Middle;
    // Before the gun boats reach to and fro, and not alike.
    if (t + BeforeFrom < 0 || HoldsAnotherTurn(turns, turn, t + BeforeFrom, t + AfterTo)) return {};
    const auto before = motion.Over(t + BeforeFrom, t + BeforeTo);
    const auto after = motion.Over(t + AfterFrom, t + AfterTo);
    if (!before || !after) return {};
    const Way difference = after->Velocity - before->Velocity;
    const double size = difference.Length();
    if (size < KnotMetres) return {};
    AxisTurn axis;
    axis.Time = t;
    // Of both directions at right angles the one that lies with the boat's ways.
    const Way sum = before->Velocity + after->Velocity;
    const Way across{-difference.North / size, difference.East / size};
    axis.Middle = (sum.Along(across) >= 0 ? across : across * -1.0).Bearing();
    axis.Half = std::abs(TurnBetween(before->Velocity.Bearing(), after->Velocity.Bearing())) / 2;
    axis.Sigma = std::hypot(before->VelocitySigma, after->VelocitySigma) / size / DegToRad;
    axis.Mean = sum * 0.5;
    axis.Speed = (before->Velocity.Length() + after->Velocity.Length()) / 2;
    if (axis.Half < LeastHalf || axis.Half > LargestHalf) return {};
    return axis;
}

std::vector<AxisTurn> FindAxes(const FleetMotion& fleet, const FleetTurns& turns,
                               const MarkPasses& passes) {
    std::vector<AxisTurn> axes;
    for (int boat = 1; boat <= fleet.Boats.Count(); ++boat)
        for (std::size_t turn = 0; turn < turns[boat].size(); ++turn) {
            if (passes.MarkPassTime.Holds(boat) &&
                NearMark(passes.MarkPassTime[boat], turns[boat][turn].Middle))
                continue;
            if (const auto axis = AxisOf(fleet.Boats[boat], turns[boat], turn)) axes.push_back(*axis);
        }
    std::ranges::sort(axes, {}, &AxisTurn::Time);
    return axes;
}

/// How far a direction lies off an axis that has no sense, -90 to 90 degrees.
double OffAxis(double axis, double direction) {
    return std::remainder(direction - axis, 180.0);
}

/// The axis of a turn that most turns lie about; some hundred of them are candidates.
double CommonAxis(const std::vector<AxisTurn>& axes) {
    double best = 0.0, most = -1.0;
    const std::size_t step = axes.size() / MostCandidates + 1;
    for (std::size_t i = 0; i < axes.size(); i += step) {
        const AxisTurn& candidate = axes[i];
        double near = 0.0;
        for (const AxisTurn& other : axes)
            near += std::max(0.0, 1 - std::abs(OffAxis(candidate.Middle, other.Middle)) / FarFromAxis);
        if (near > most) best = candidate.Middle, most = near;
    }
    return best;
}

/// True if the wind comes from the axis' own bearing, false if from the other; the turns that point one way
/// are tacks, those that point the other gybes.
bool WindOnAxis(const std::vector<AxisTurn>& axes, double axis) {
    std::array<std::vector<double>, 2> speeds, halves;
    for (const AxisTurn& turn : axes) {
        const auto side = static_cast<std::size_t>(std::abs(TurnBetween(axis, turn.Middle)) > 90);
        speeds[side].push_back(turn.Speed);
        halves[side].push_back(turn.Half);
    }
    if (std::ssize(speeds[0]) >= FewestTurns && std::ssize(speeds[1]) >= FewestTurns)
        return MedianOf(speeds[0]) < MedianOf(speeds[1]);
    const bool wide = MedianOf(halves[speeds[0].size() < speeds[1].size()]) > TackHalf;
    return (speeds[0].size() >= speeds[1].size()) == wide;
}

/// Sights as values about a reference direction.
std::vector<SmoothedValue> ValuesOf(const std::vector<WindSight>& sights, double about,
                                    const WindEstimate& estimate) {
    std::vector<SmoothedValue> values;
    values.reserve(sights.size());
    for (const WindSight& sight : sights)
        values.push_back(
            {.Time = sight.Time,
             .Value = TurnBetween(about, sight.Direction),
             .Sigma = std::max(sight.Sigma, sight.Gybe ? estimate.GybeSigma : estimate.TackSigma)});
    return values;
}

/// Measures how either kind scatters about the smooth course of the wind, and leaves out what lies beyond
/// three and a half times that.
void WeighKinds(double about, WindEstimate& estimate) {
    estimate.TackSigma = estimate.GybeSigma = 5.0;
    for (int round = 0; round < 4; ++round) {
        std::vector<SmoothedValue> values = ValuesOf(estimate.Sights, about, estimate);
        SmoothLikeliest(values);
        std::array<std::vector<double>, 2> off;
        std::vector<double> all;
        for (std::size_t i = 0; i < values.size(); ++i) {
            const SmoothedValue& value = values[i];
            // A value pulls the smooth course towards itself, by the share that it has in it.
            const double share = std::min(std::pow(value.SmoothSigma / value.Sigma, 2), 0.9);
            all.push_back(std::abs(value.Value - value.Smooth) / std::sqrt(1 - share));
            off[estimate.Sights[i].Gybe].push_back(all.back());
        }
        const auto sigma = [&](const std::vector<double>& kind) {
            return kind.empty() ? 0.0 : std::max(ScatterAbout(0, kind), LeastSigma);
        };
        estimate.TackSigma = sigma(off[0]);
        estimate.GybeSigma = sigma(off[1]);
        std::vector<WindSight> kept;
        for (std::size_t i = 0; i < values.size(); ++i)
            if (const WindSight& sight = estimate.Sights[i];
                all[i] <= 3.5 * (sight.Gybe ? estimate.GybeSigma : estimate.TackSigma))
                kept.push_back(sight);
        estimate.Sights = std::move(kept);
    }
}

void TakeSamples(double about, WindEstimate& estimate) {
    std::vector<SmoothedValue> values = ValuesOf(estimate.Sights, about, estimate);
    const double first = std::ceil(values.front().Time / SampleEvery) * SampleEvery;
    for (double t = first; t <= estimate.Sights.back().Time; t += SampleEvery)
        values.push_back({.Time = t, .Sigma = std::numeric_limits<double>::infinity()});
    std::ranges::stable_sort(values, {}, &SmoothedValue::Time);
    SmoothLikeliest(values);
    auto sight = estimate.Sights.begin();
    for (const SmoothedValue& value : values) {
        if (std::isfinite(value.Sigma)) {
            const double share = std::min(std::pow(value.SmoothSigma / value.Sigma, 2), 0.9);
            const double others = (value.Smooth - share * value.Value) / (1 - share);
            (sight++)->Others = WrapDirection(std::fmod(about + others + 720, 360));
            continue;
        }
        const auto first =
            std::ranges::lower_bound(estimate.Sights, value.Time - CountedWithin, {}, &WindSight::Time);
        const auto last =
            std::ranges::upper_bound(estimate.Sights, value.Time + CountedWithin, {}, &WindSight::Time);
        estimate.Samples.push_back({value.Time, WrapDirection(std::fmod(about + value.Smooth + 720, 360)),
                                    value.SmoothSigma, static_cast<int>(last - first)});
    }
}

}  // namespace

FleetTurns FindFleetTurns(const FleetMotion& fleet) {
    FleetTurns turns(fleet.Boats.Count());
    ForEachInParallel(turns.Count(), [&](int boat) { turns[boat] = FindTurns(fleet.Boats[boat]); });
    return turns;
}

WindEstimate EstimateWind(const FleetMotion& fleet, const FleetTurns& turns, const MarkPasses& passes) {
    WindEstimate estimate;
    std::vector<AxisTurn> axes = FindAxes(fleet, turns, passes);
    const double axis = CommonAxis(axes);
    std::erase_if(axes,
                  [&](const AxisTurn& turn) { return std::abs(OffAxis(axis, turn.Middle)) > FarFromAxis; });
    if (std::ssize(axes) < FewestTurns) return estimate;
    const double wind = WindOnAxis(axes, axis) ? axis : WrapDirection(axis + 180);
    for (const AxisTurn& turn : axes) {
        const bool gybe = std::abs(TurnBetween(wind, turn.Middle)) > 90;
        estimate.Sights.push_back({turn.Time, gybe ? WrapDirection(turn.Middle + 180) : turn.Middle,
                                   turn.Sigma, gybe, turn.Mean, 0.0});
    }
    WeighKinds(wind, estimate);
    if (std::ssize(estimate.Sights) >= FewestTurns) TakeSamples(wind, estimate);
    return estimate;
}

double EstimatedWindAt(const WindEstimate& estimate, double t) {
    const auto& samples = estimate.Samples;
    const auto next = std::ranges::upper_bound(samples, t, {}, &WindEstimateSample::Time);
    if (next == samples.begin()) return samples.front().Direction;
    if (next == samples.end()) return samples.back().Direction;
    const auto before = next - 1;
    const double f = (t - before->Time) / (next->Time - before->Time);
    return WrapDirection(before->Direction + TurnBetween(before->Direction, next->Direction) * f);
}

namespace {

/// Mean square of the change of direction in some seconds, degrees.
double ChangeWithin(const std::vector<WindEstimateSample>& samples, double seconds) {
    double squares = 0.0;
    int count = 0;
    auto late = samples.begin();
    for (const WindEstimateSample& early : samples) {
        while (late != samples.end() && late->Time < early.Time + seconds) ++late;
        if (late == samples.end()) break;
        squares += std::pow(TurnBetween(early.Direction, late->Direction), 2);
        ++count;
    }
    return count > 0 ? squares / count : 0.0;
}

}  // namespace

double EstimatedWindSigmaAt(const WindEstimate& estimate, double t) {
    const auto& samples = estimate.Samples;
    const auto next = std::ranges::upper_bound(samples, t, {}, &WindEstimateSample::Time);
    const auto grown = [&](const WindEstimateSample& nearest) {
        const double change = ChangeWithin(samples, std::abs(t - nearest.Time));
        return std::hypot(nearest.Sigma, std::sqrt(change));
    };
    if (next == samples.begin()) return grown(samples.front());
    if (next == samples.end()) return grown(samples.back());
    return std::max((next - 1)->Sigma, next->Sigma);
}

}  // namespace keelview
