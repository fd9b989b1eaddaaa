#include "analysis/polar.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <vector>

#include "analysis/medians.h"
#include "analysis/parabola.h"
#include "analysis/steady_stretches.h"
#include "base/angles.h"
#include "base/numbers.h"
#include "base/parallel.h"

namespace keelview {

namespace {

constexpr double StretchSeconds = 20.0;
constexpr double BandKnots = 4.0;
constexpr int NoBand = -1;  // of stretches without a wind speed
constexpr std::size_t FewestStretches = 6;
constexpr double UpTo = 75.0, DownFrom = 105.0;  // degrees
constexpr double LeastSpread = 15.0;             // degrees of the angles that tell a target
constexpr double FarthestFromCell = 10.0;        // degrees

/// A stretch that a boat sailed steadily.
struct Sailed {
    int Boat = 0;
    int Band = NoBand;
    double Angle = 0.0;  // degrees off the wind, 0 to 180
    double Knots = 0.0;
    double Sigma = 0.0;  // knots
};

using Stretches = std::vector<Sailed>;

/// The steady stretches of one boat.
Stretches StretchesOf(const BoatMotion& motion, const std::vector<TimeSpan>& steady, const RaceWind& wind,
                      Way current, int boat) {
    Stretches sailed;
    for (const auto& [from, to] : steady)
        for (double t = std::ceil(from); t + StretchSeconds <= to; t += StretchSeconds) {
            const double middle = t + StretchSeconds / 2;
            const auto upwind = wind.Upwind(middle);
            const auto stretch = motion.Over(t, t + StretchSeconds);
            if (!upwind || !stretch) continue;
            const Way velocity = stretch->Velocity - current;
            const auto speed = wind.Speed(middle);
            sailed.push_back(
                {boat, speed ? FloorToInt(*speed / BandKnots) : NoBand,
                 std::atan2(std::abs(velocity.Across(*upwind)), velocity.Along(*upwind)) / DegToRad,
                 velocity.Length() / KnotMetres, stretch->VelocitySigma / KnotMetres});
        }
    return sailed;
}

/// What a cell makes of its stretches.
PolarCell CellOf(const Stretches& sailed) {
    PolarCell cell;
    std::vector<double> speeds;
    double noise = 0.0;
    int last = 0;
    for (const Sailed& one : sailed) {
        cell.Boats += one.Boat != last;  // they come boat by boat
        last = one.Boat;
        cell.Angle += one.Angle / static_cast<double>(sailed.size());
        noise += one.Sigma * one.Sigma / static_cast<double>(sailed.size());
        speeds.push_back(one.Knots);
    }
    cell.Stretches = static_cast<int>(sailed.size());
    if (sailed.size() < FewestStretches) return cell;
    cell.Median = MedianOf(speeds);
    const double scatter = ScatterAbout(*cell.Median, speeds);
    cell.Sigma = MedianSigma(scatter, speeds.size());
    cell.BestTenthSigma = BestTenthSigma(scatter, speeds.size());
    const double own = scatter > 0 ? std::max(0.0, 1 - noise / (scatter * scatter)) : 0.0;
    cell.BestTenth = *cell.Median + (QuantileOf(speeds, 0.9) - *cell.Median) * std::sqrt(own);
    return cell;
}

/// Medians of the stretches between two angles.
std::optional<PolarPoint> SailedBetween(const Stretches& sailed, double from, double to) {
    std::vector<double> angles, speeds, good;
    for (const Sailed& one : sailed) {
        if (one.Angle < from || one.Angle >= to) continue;
        angles.push_back(one.Angle);
        speeds.push_back(one.Knots);
        good.push_back(one.Knots * std::abs(std::cos(one.Angle * DegToRad)));
    }
    if (angles.size() < FewestStretches) return {};
    const auto sigma = [](double middle, const std::vector<double>& values) {
        return MedianSigma(ScatterAbout(middle, values), values.size());
    };
    PolarPoint point{.Angle = MedianOf(angles), .Speed = MedianOf(speeds), .Vmg = MedianOf(good)};
    point.Sigma = sigma(point.Angle, angles);
    point.SpeedSigma = sigma(point.Speed, speeds);
    point.VmgSigma = sigma(point.Vmg, good);
    return point;
}

/// Parabolas through a curve's medians between two angles, counted from one of them.
struct CurveFit {
    ParabolaSums<double> Good, Speed;
    double Least, Most;                         // angles
    double GoodVariance = 0.0, Variance = 0.0;  // of one stretch

    CurveFit(const PolarCurve& curve, double from, double to, double about) : Least(to), Most(from) {
        for (const PolarCell& cell : curve.Cells) {
            if (!cell.Median || cell.Angle < from || cell.Angle >= to) continue;
            const double cosine = std::abs(std::cos(cell.Angle * DegToRad));
            Good.Add(cell.Angle - about, *cell.Median * cosine, cell.Stretches);
            Speed.Add(cell.Angle - about, *cell.Median, cell.Stretches);
            const double variance = cell.Sigma * cell.Sigma * cell.Stretches;
            GoodVariance = std::max(GoodVariance, variance * cosine * cosine);
            Variance = std::max(Variance, variance);
            Least = std::min(Least, cell.Angle), Most = std::max(Most, cell.Angle);
        }
    }
};

/// Where a curve makes the most good between two angles.
std::optional<PolarPoint> TargetBetween(const PolarCurve& curve, double from, double to) {
    const double about = (from + to) / 2;
    const CurveFit wide(curve, from, to, about);
    const auto fit = wide.Good.Solve(3);
    if (!fit || wide.Most - wide.Least < LeastSpread || !(fit->Bend < 0)) return {};
    const double best = about - fit->Slope / (2 * fit->Bend);
    if (best < wide.Least || best > wide.Most) return {};
    const CurveFit there(curve, from, to, best);
    const auto good = there.Good.Solve(3), speed = there.Speed.Solve(3);
    if (!good || !speed) return {};
    return PolarPoint{.Angle = best,
                      .Speed = speed->Place,
                      .Vmg = good->Place,
                      .Sigma = std::sqrt(there.GoodVariance * good->SlopeShare) / (2 * -good->Bend),
                      .SpeedSigma = std::sqrt(there.Variance * speed->PlaceShare),
                      .VmgSigma = std::sqrt(there.GoodVariance * good->PlaceShare)};
}

PolarCurve CurveOf(const Stretches& sailed) {
    PolarCurve curve;
    std::array<Stretches, PolarCells> cells;
    for (const Sailed& one : sailed) {
        const int cell = std::min(FloorToInt(one.Angle / PolarCellDegrees), PolarCells - 1);
        cells[static_cast<std::size_t>(cell)].push_back(one);
    }
    for (std::size_t i = 0; i < cells.size(); ++i) curve.Cells[i] = CellOf(cells[i]);
    curve.UpSailed = SailedBetween(sailed, 0, UpTo);
    curve.DownSailed = SailedBetween(sailed, DownFrom, 181);
    curve.UpTarget = TargetBetween(curve, 0, UpTo);
    curve.DownTarget = TargetBetween(curve, DownFrom, 181);
    return curve;
}

PolarBand BandOf(int number, const Stretches& sailed, int boats) {
    PolarBand band;
    if (number != NoBand) band.From = number * BandKnots, band.To = (number + 1) * BandKnots;
    band.Fleet = CurveOf(sailed);
    band.Boats.Resize(boats);
    OneBased<Stretches> own(boats);
    for (const Sailed& one : sailed) own[one.Boat].push_back(one);
    ForEachInParallel(boats, [&](int boat) { band.Boats[boat] = CurveOf(own[boat]); });
    return band;
}

}  // namespace

const PolarBand* Polar::BandOf(std::optional<double> windSpeed) const {
    for (const PolarBand& band : Bands)
        if (windSpeed ? band.From && *windSpeed >= *band.From && *windSpeed < band.To.value_or(0)
                      : !band.From)
            return &band;
    return nullptr;
}

Polar FindPolar(const RaceControl& race, const FleetMotion& fleet, const FleetTurns& turns,
                const RaceWind& wind, const MarkPasses& passes, Way current) {
    OneBased<Stretches> sailed(fleet.Boats.Count());
    ForEachInParallel(sailed.Count(), [&](int boat) {
        auto racing = RacingTime(race, passes, boat);
        if (!racing || !fleet.Boats[boat].IsDense()) return;
        racing->second = std::min(racing->second, fleet.Boats[boat].Span().second);
        const auto none = OneBased<std::optional<int>>();
        const auto& own = passes.MarkPassTime.Holds(boat) ? passes.MarkPassTime[boat] : none;
        sailed[boat] =
            StretchesOf(fleet.Boats[boat], SteadyTimes(turns[boat], own, *racing), wind, current, boat);
    });
    std::map<int, Stretches> bands;
    for (const Stretches& own : sailed)
        for (const Sailed& one : own) bands[one.Band].push_back(one);
    Polar polar;
    for (const auto& [number, all] : bands) polar.Bands.Add(BandOf(number, all, sailed.Count()));
    return polar;
}

std::optional<double> PolarSpeed(const PolarCurve& curve, double angle, int fewestBoats) {
    const PolarCell* below = nullptr;
    const PolarCell* above = nullptr;
    for (const PolarCell& cell : curve.Cells) {
        if (!cell.Median || cell.Boats < fewestBoats) continue;
        if (cell.Angle <= angle) below = &cell;
        if (cell.Angle > angle && !above) above = &cell;
    }
    const bool nearBelow = below && angle - below->Angle <= FarthestFromCell;
    const bool nearAbove = above && above->Angle - angle <= FarthestFromCell;
    if (below && above && (nearBelow || nearAbove)) {
        const double f = (angle - below->Angle) / (above->Angle - below->Angle);
        return below->Median.value_or(0) * (1 - f) + above->Median.value_or(0) * f;
    }
    if (nearBelow) return below->Median;
    if (nearAbove) return above->Median;
    return {};
}

}  // namespace keelview
