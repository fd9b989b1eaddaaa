#pragma once

#include <array>
#include <optional>

#include "analysis/boat_motion.h"
#include "analysis/mark_passes.h"
#include "analysis/race_wind.h"
#include "analysis/wind_estimate.h"
#include "racedata/race_control.h"

namespace keelview {

/// Speeds at some angles off the wind.
struct PolarCell {
    int Stretches = 0;   ///< of 20 s each, on which it rests
    int Boats = 0;       ///< that sailed them
    double Angle = 0.0;  ///< mean of the angles sailed, degrees off the wind
    /// Knots; nothing where too few stretches tell it. The best tenth is the speed that a tenth of the
    /// stretches reaches, less what the noise of the tracks adds to it.
    std::optional<double> Median, BestTenth;
    double Sigma = 0.0;           ///< knots, of the median
    double BestTenthSigma = 0.0;  ///< knots
};

/// How something was sailed, or is best sailed.
struct PolarPoint {
    double Angle = 0.0;                       ///< degrees off the wind
    double Speed = 0.0;                       ///< knots
    double Vmg = 0.0;                         ///< knots, to windward or to leeward
    double Sigma = 0.0;                       ///< of the angle, degrees
    double SpeedSigma = 0.0, VmgSigma = 0.0;  ///< knots
};

inline constexpr int PolarCells = 36;
inline constexpr double PolarCellDegrees = 5.0;

/// Speed by the angle off the wind, both tacks taken together.
struct PolarCurve {
    std::array<PolarCell, PolarCells> Cells;         ///< cell k from 5 k to 5 k + 5 degrees
    std::optional<PolarPoint> UpSailed, DownSailed;  ///< medians of what was sailed up to 75 degrees off
                                                     ///< the wind, and from 105
    /// Where the most is made good by a parabola through the medians. Nothing where the angles that were
    /// sailed do not lie on both sides of it, 15 degrees apart.
    std::optional<PolarPoint> UpTarget, DownTarget;
};

/// The curves of a band of wind speed.
struct PolarBand {
    std::optional<double> From, To;  ///< knots; nothing where no wind speed is known
    PolarCurve Fleet;
    OneBased<PolarCurve> Boats;
};

/// The speeds of a fleet.
struct Polar {
    OneBased<PolarBand> Bands;  ///< by their wind, those that anybody sailed in

    /// The band of a wind speed; nothing where nobody sailed in it.
    const PolarBand* BandOf(std::optional<double> windSpeed) const;
};

/// The polar of the stretches of 20 s that boats sailed steadily while racing. Velocities are those over
/// ground, less a current (metres a second) where one is given. Bands are 4 knots of wind wide. No bands
/// where no wind is known.
Polar FindPolar(const RaceControl& race, const FleetMotion& fleet, const FleetTurns& turns,
                const RaceWind& wind, const MarkPasses& passes, Way current = {});

/// The median speed of a curve at an angle off the wind, between its cells, knots: of cells that at least
/// so many boats sailed in. Nothing more than 10 degrees from the nearest of these.
std::optional<double> PolarSpeed(const PolarCurve& curve, double angle, int fewestBoats);

}  // namespace keelview
