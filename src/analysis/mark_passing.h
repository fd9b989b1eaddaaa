#pragma once

#include <optional>
#include <vector>

#include "analysis/way_by_second.h"

namespace keelview {

/// One boat at a place, about some second.
struct Passing {
    const WayBySecond* Sails = nullptr;
    int About = 0;
};

/// The second between two others at which a boat is nearest to a place, if it comes within some metres.
std::optional<int> NearestSecond(const WayBySecond& way, Way place, double metres, int from, int to);

/// Metres at which boats leave a place, each within half a minute of its moment; positive where the place
/// is to port. A boat with gaps there has none.
std::vector<std::optional<double>> BerthsAt(const std::vector<Passing>& boats, Way place);

/// True if a berth is that of a mark which is left to port, or to starboard: on that side, and close.
bool IsMarkLike(double berth, bool toPort);

/// The share of berths that are those of a mark: on the side it is left on, and close.
double MarkLike(const std::vector<std::optional<double>>& berths, bool toPort);

/// Moves a mark, by 25 m at most, to where the boats leave it as boats leave marks: on one side, a few
/// metres off, and as far off their straight way before it as off the one behind it, which tells how far
/// along the way it lies even where that hardly bends. What some boats do otherwise counts to a limit.
Way FitMark(const std::vector<Passing>& boats, bool toPort, Way from);

}  // namespace keelview
