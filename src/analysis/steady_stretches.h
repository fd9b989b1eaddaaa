#pragma once

#include <optional>
#include <utility>
#include <vector>

#include "analysis/mark_passes.h"
#include "analysis/turns.h"
#include "racedata/race_control.h"

namespace keelview {

/// Times from one moment to another, seconds from the start.
using TimeSpan = std::pair<double, double>;

/// When a boat was racing: from its start to its last passing of an entry, of a race without a course from
/// the gun to its end; nothing for a boat that passed no two entries.
std::optional<TimeSpan> RacingTime(const RaceControl& race, const MarkPasses& passes, int boat);

/// The times between two moments at which a boat sails steadily, in their order: neither turning, from 3 s
/// before to 10 s behind a turn, nor within 10 s before and 15 s behind the passing of an entry.
std::vector<TimeSpan> SteadyTimes(const std::vector<CourseTurn>& turns,
                                  const OneBased<std::optional<int>>& passes, TimeSpan within);

}  // namespace keelview
