#pragma once

#include <optional>
#include <vector>

#include "analysis/fleet_corners.h"
#include "analysis/found_starts.h"

namespace keelview {

/// Where a race ends.
struct FoundFinish {
    enum class Kind { None, LastMark, StartLine, OwnLine };
    Kind Where = Kind::None;
    FoundLine Line;          ///< of OwnLine
    double Share = 0.0;      ///< of the boats that have been at the last mark, that finished there
    std::vector<Way> Stops;  ///< where the boats stop racing
    std::vector<std::optional<int>> Times;  ///< second at which each of them finished
};

/// One boat that has sailed the course up to its last mark.
struct Finisher {
    const WayBySecond* Sails = nullptr;
    const std::vector<Corner>* Corners = nullptr;
    int LastMark = 0;  ///< second at which it was there
};

/// Works out the finish. A boat stops racing when it turns without tacking or gybing, or loses two fifths
/// of its speed. Boats that do so at the last mark have finished there; those that came over the start line
/// before it have finished there; else the line lies where the first of them stop, at right angles to their
/// way, or to the wind where they came with it or against it. `to` is the last second that is looked at.
FoundFinish FindFinish(const std::vector<Finisher>& boats, const FoundLine& start,
                       const std::optional<double>& wind, int to);

/// A line that is start and finish at once, as both have it: moved ahead, by 12 m at most, to where boats
/// stop racing that come back to it, and as long as they need it.
FoundLine LineOfBoth(const FoundLine& start, const std::vector<Way>& stops);

}  // namespace keelview
