#pragma once

#include <optional>
#include <vector>

#include "analysis/fleet_corners.h"

namespace keelview {

/// A place where many boats turn, each of them at any time.
struct FoundMark {
    Way At;
    double Share = 0.0;     ///< of the boats that have turned here
    double Scatter = 0.0;   ///< metres about the middle of the turns, of half of them
    bool ToPort = false;    ///< most leave it to port
    double OneWay = 0.0;    ///< the share of the turns that leave it on the same side
    double In = 0.0;        ///< middle course before it, degrees
    bool Changing = false;  ///< most boats change to another angle off the wind here
    bool Passed = false;    ///< known by how all boats come by, though few turn
    int Partner = -1;       ///< the other mark of a gate, from 0; -1 for none
    bool Tracked = false;   ///< something that lies still was recorded here
};

/// Where the turns of a race lie together, those of most boats first. A turn to another angle off the wind
/// tells more of a mark than a tack or a gybe. Two places that are left on different sides, of which a boat
/// takes one, are a gate. `fleet` are the boats that race, Boat of each corner its place there; `lying` is
/// what lies still, which is taken for the mark where it is near one.
std::vector<FoundMark> FindMarks(const std::vector<Corner>& corners,
                                 const std::vector<const WayBySecond*>& fleet,
                                 const std::optional<double>& wind, const std::vector<Way>& lying);

/// Within so many metres of a mark a turn is a rounding.
inline constexpr double MarkReach = 45;

}  // namespace keelview
