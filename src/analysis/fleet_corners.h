#pragma once

#include <optional>
#include <vector>

#include "analysis/way_by_second.h"

namespace keelview {

/// A place where a boat leaves a steady course for another one, at any angle from 15 degrees on.
struct Corner {
    int Boat = 0;        ///< from 0
    int Time = 0;        ///< second at which half of the turn is done
    Way At;              ///< where that is, metres
    double In = 0.0;     ///< course before it, degrees
    double Turn = 0.0;   ///< degrees to the other course, the way round that was sailed; positive right
    double Speed = 0.0;  ///< mean of before and behind, metres a second

    double Out() const { return In + Turn; }
    /// Half way between both courses: a tack's is the wind's direction.
    double Middle() const { return In + Turn / 2; }
};

/// The corners of one boat in the order of time. Courses are those of 17 s and a corner's lie 14 s before
/// and behind it, more where the fixes scatter by more than 3 m; while a boat hardly moves it has none.
std::vector<Corner> FindCorners(const WayBySecond& way, int boat);

enum class CornerKind {
    Tack,   ///< from one side of the wind's eye to the other, on the wind
    Gybe,   ///< the same off the wind
    Change  ///< to another angle off the wind: what boats do at marks
};

/// What a corner is by the wind; a change where no wind is known.
CornerKind KindOf(const Corner& corner, const std::optional<double>& wind);

}  // namespace keelview
