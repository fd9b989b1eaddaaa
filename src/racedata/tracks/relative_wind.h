#pragma once

#include "racedata/tracks/recording.h"

namespace keelview {

/// Wind as instruments on board tell it: against the bow. What is not told is NotTold.
struct RelativeWind {
    float TrueAngle = NotTold;      ///< degrees from the bow, clockwise; negative to port
    float ApparentAngle = NotTold;  ///< the same of the wind that is felt on board
    float ApparentSpeed = NotTold;  ///< knots
};

/// Fills in what a fix does not tell of the true wind itself. Its direction is the heading plus the true
/// angle; speed and angle that are missing come from the triangle of apparent wind and the boat's own speed
/// (through the water, else over ground). Nothing changes where not enough is told.
void WorkOutWind(RecordedFix& fix, const RelativeWind& wind);

}  // namespace keelview
