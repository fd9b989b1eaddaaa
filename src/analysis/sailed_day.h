#pragma once

#include <vector>

#include "analysis/fleet_corners.h"

namespace keelview {

/// What the tracks of a day hold, on one plane: the boats that sail, and what lies still.
struct SailedDay {
    Plane Water;
    std::vector<WayBySecond> Ways;             ///< of the boats that sail
    std::vector<int> Numbers;                  ///< theirs, from 1
    std::vector<std::vector<Corner>> Corners;  ///< of each, Boat being its place here
    std::vector<Way> Lying;                    ///< what lies still
    std::vector<int> LyingNumbers;             ///< theirs, from 1

    /// The last second of any way; 0 where there is none.
    int Last() const;
};

/// Takes tracks apart. A recorder that hardly moves, or drifts, lies still where others of the day sail;
/// what never leaves its berth is neither. Of many boats each is read for some days at most.
SailedDay ReadDay(const Tracks& tracks, const EarthScale& scale);

}  // namespace keelview
