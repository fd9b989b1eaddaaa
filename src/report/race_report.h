#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "analysis/race_numbers.h"

namespace keelview {

/// The numbers of a race as one JSON object, with the wind and the boats at each of the moments `at`
/// (seconds from the start). Positions are minutes of arc, speeds knots, distances nautical miles, angles
/// degrees. A pass time is null where an entry was not reached, a first pass time where nobody reached it;
/// "pass_sources" tells where each time comes from: "rule", "chain", "hand" or null. With `bareTimes` they
/// are numbers throughout: 0 where an entry was not reached, 1000000 where nobody reached it. `only` are
/// the keys of the members that are wanted, in any order; without any, all are there but those of the
/// coach.
std::string RaceReport(const RaceNumbers& numbers, const std::vector<double>& at, bool bareTimes = false,
                       const std::vector<std::string>& only = {});

/// True for the key of a member that a report can have.
bool IsReportKey(std::string_view key);

/// True for those of the coach, which are told where they are asked for.
bool IsCoachKey(std::string_view key);

}  // namespace keelview
