#pragma once

#include <optional>
#include <vector>

#include "analysis/boat_motion.h"
#include "analysis/mark_passes.h"
#include "analysis/race_wind.h"
#include "analysis/turns.h"
#include "analysis/wind_estimate.h"

namespace keelview {

enum class ManoeuvreKind {
    Tack,
    Gybe,
    Rounding,  ///< of a mark, whatever is turned there
    FullTurn,  ///< 270 degrees and more on one way round, as of a penalty
    HeadUp,    ///< 40 degrees and more towards the wind on the same side of it
    BearAway   ///< the same away from it
};

/// Why a manoeuvre has no loss.
enum class NoLoss {
    None,       ///< it has one
    Kind,       ///< it is neither tack nor gybe
    OtherTurn,  ///< a window holds another turn or a mark
    Shift,      ///< the wind shifts by more than 10 degrees between the windows
    Track       ///< the track does not cover the windows
};

/// One manoeuvre of a boat. Angles off the wind are degrees, negative with the wind from the right
/// (starboard tack).
struct Manoeuvre {
    ManoeuvreKind Kind = ManoeuvreKind::Tack;
    double Time = 0.0;      ///< its middle, seconds from the start
    double Duration = 0.0;  ///< seconds
    double TimeSigma = 0.0, DurationSigma = 0.0;
    double From = 0.0;                      ///< angle off the wind before it
    double To = 0.0;                        ///< and behind it
    double FromSigma = 0.0, ToSigma = 0.0;  ///< beside that of the wind
    double Rate = 0.0;                      ///< mean degrees a second
    double RateSigma = 0.0;
    double SpeedBefore = 0.0, SpeedLeast = 0.0, SpeedAfter = 0.0;  ///< knots
    double SpeedBeforeSigma = 0.0, SpeedLeastSigma = 0.0, SpeedAfterSigma = 0.0;
    std::optional<double> LossMetres;   ///< to windward, of a gybe to leeward, against sailing on
    std::optional<double> LossSeconds;  ///< the same at the velocity made good of before and behind
    double LossSigma = 0.0;             ///< metres; of no meaning without a loss
    double LossSecondsSigma = 0.0;
    double Shift = 0.0;  ///< degrees by which the wind shifts between the windows
    double ShiftSigma = 0.0;
    NoLoss Why = NoLoss::None;
};

/// The manoeuvres of one boat in the order of time; none where no wind is known. Course angles are those of
/// 12 to 2 s before and behind a turn; a tack or gybe has them on either side of the wind by 8 degrees and
/// more each, so that waves turn no boat. The loss is V (t1 - t0) - (P1 - P0).w, w the direction to
/// windward (downwind for a gybe) at its time, t0 and t1 5 s before and 15 s behind, and V the mean
/// velocity made good of the windows 15 to 5 s before and 15 to 25 s behind, by their lengths: a velocity
/// that changes evenly costs nothing. What is made good goes by the wind of each moment, so that an even
/// shift costs nothing either.
std::vector<Manoeuvre> FindManoeuvres(const BoatMotion& motion, const std::vector<CourseTurn>& turns,
                                      const RaceWind& wind, const OneBased<std::optional<int>>& passes);

/// Those of all boats.
OneBased<std::vector<Manoeuvre>> FindFleetManoeuvres(const FleetMotion& fleet, const FleetTurns& turns,
                                                     const RaceWind& wind, const MarkPasses& passes);

}  // namespace keelview
