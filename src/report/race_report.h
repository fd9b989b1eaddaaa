#pragma once

#include <string>
#include <vector>

#include "analysis/race_numbers.h"

namespace keelview {

/// The numbers of a race as one JSON object, with the wind and the boats at each of the moments `at`
/// (seconds from the start). Positions are minutes of arc, speeds knots, distances nautical miles, angles
/// degrees; a pass time of 0 means not found, and a first pass time of 1000000 that nobody passed.
std::string RaceReport(const RaceNumbers& numbers, const std::vector<double>& at);

}  // namespace keelview
