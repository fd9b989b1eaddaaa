#pragma once

#include <string>
#include <vector>

#include "analysis/race_numbers.h"

namespace keelview {

/// The numbers of a race as one JSON object, with the wind and the boats at each of the moments `at`
/// (seconds from the start). Positions are minutes of arc, speeds knots, distances nautical miles, angles
/// degrees. A pass time is null where an entry was not reached, a first pass time where nobody reached it;
/// "pass_sources" tells where each time comes from: "rule", "chain", "hand" or null. With `bareTimes` they
/// are numbers throughout: 0 where an entry was not reached, 1000000 where nobody reached it.
std::string RaceReport(const RaceNumbers& numbers, const std::vector<double>& at, bool bareTimes = false);

}  // namespace keelview
