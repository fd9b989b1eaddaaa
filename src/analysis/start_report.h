#pragma once

#include <optional>

#include "analysis/boat_motion.h"
#include "analysis/race_wind.h"
#include "racedata/race_control.h"

namespace keelview {

/// The starting line as the wind at the gun has it.
struct StartLine {
    double Length = 0.0;                ///< metres
    double Bearing = 0.0;               ///< from the first end to the second, degrees true
    std::optional<double> BiasDegrees;  ///< that the second end lies to windward of a square line
                                        ///< (negative: the first one); nothing where no wind is known
    double BiasSigma = 0.0;             ///< degrees, as the wind is unsure
    std::optional<double> Advantage;    ///< of the favoured end to windward, metres
    double AdvantageSigma = 0.0;        ///< metres
    std::optional<int> FavouredEnd;     ///< 1 or 2
};

/// One boat's start. Distances are metres to the line and its extensions, negative before it, of the bow
/// where the race tells how far that is ahead of the antenna. Nothing where the track does not tell it.
struct BoatStart {
    std::optional<double> AtGun, AtMinus5, AtMinus10;
    double DistanceSigma = 0.0;  ///< metres, of AtGun
    double Minus5Sigma = 0.0, Minus10Sigma = 0.0;
    std::optional<double> Crossing;  ///< seconds from the gun; of a boat that was over and did not come
                                     ///< back the time before the gun
    double CrossingSigma = 0.0;      ///< seconds
    std::optional<double> Place;     ///< of the crossing on the line: 0 at the first end, 1 at the second
    double PlaceSigma = 0.0;
    std::optional<double> SpeedAtGun, SpeedAtCrossing;  ///< knots
    double SpeedAtGunSigma = 0.0, SpeedAtCrossingSigma = 0.0;
    std::optional<bool> Over;        ///< on the course side of the line, between its ends, at the gun
    std::optional<double> Returned;  ///< seconds from the gun at which a boat that was over was back
    std::optional<int> Rank, Rank30, Rank60;  ///< to windward at the gun, 30 s and 60 s later
};

struct StartReport {
    std::optional<StartLine> Line;  ///< nothing where the course does not begin with a line of the race
    OneBased<BoatStart> Boats;      ///< all boats of the fleet, empty ones without a line
};

/// Works out the start. The course side of the line is that of the second entry of the course, and the
/// windward side where there is none. A boat's crossing is its first way over the line after the gun, or
/// after it came back, up to six minutes; a little beyond the ends counts, as far as its place is unsure.
StartReport ReportStart(const RaceControl& race, const FleetMotion& fleet, const RaceWind& wind);

}  // namespace keelview
