#pragma once

#include <string>
#include <string_view>

#include "racedata/race_control.h"

namespace keelview {

/// A member of a report as a table for a spreadsheet, in the form that LegStatisticsCsv has. The columns
/// bear the keys, those of an object within an object as `line_length`; each element of the innermost lists
/// is a row, in which what stands beside and above it is told again. Elements without a key of their own
/// are numbered, "boat", "leg" and "band". Where a row is of a boat its name comes first. What is null
/// stays empty. `report` is an object of one member.
std::string MemberCsv(const RaceControl& race, std::string_view report);

}  // namespace keelview
