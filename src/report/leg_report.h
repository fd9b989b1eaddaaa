#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "analysis/leg_statistics.h"
#include "analysis/race_numbers.h"
#include "report/json_writer.h"

namespace keelview {

/// The kind of table with this name: "time", "distance" or "speed"; nothing for any other.
std::optional<StatKind> TableKind(std::string_view name);

/// Adds the member "tables" to an open object. Each of the tables "time", "distance" and
/// "speed" has "cumulative" and "by_leg": a row a boat, a cell an entry (for legs from entry 2 on), null
/// where the cell is empty.
void WriteLegTables(JsonWriter& json, const RaceNumbers& numbers);

/// Adds the member "analysis": a list of columns, the whole race and then the leg that ends at
/// each entry from 2 on, each with the best boat (0 for none) and a share for each boat: null where the
/// boat did not finish that part. It is null for a course that is too long to be analysed, or empty.
void WriteFactors(JsonWriter& json, const RaceNumbers& numbers);

}  // namespace keelview
