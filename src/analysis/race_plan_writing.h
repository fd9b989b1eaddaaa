#pragma once

#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

#include "analysis/race_plan.h"

namespace keelview {

/// Gives the recordings of a plan names that nothing else has in `tree`/gpsdat. A file that holds the same
/// bytes there keeps its name, and will not be written again.
void SettleTargets(const std::filesystem::path& tree, RacePlan& plan);

/// True if there is a race file of that name: writing would replace it.
bool RaceFileExists(const std::filesystem::path& tree, const std::string& raceFileName);

/// Why a planned race was not written.
struct PlanTrouble {
    std::error_code Error;           ///< none: it was written
    std::filesystem::path FailedAt;  ///< the file in question
};

/// Copies the recordings of the boats that are taken into `tree`/gpsdat and writes the race file: all of
/// it, or nothing. Fails as file_exists where a recording would replace another file, or the race file one
/// that is there and `replace` is not set; as invalid_argument for no boats, or more than a race may have;
/// as operation_canceled where `progress` stops it. The race file comes last, and an old one stands until
/// it is replaced as a whole.
PlanTrouble WritePlannedRace(const std::filesystem::path& tree, const RacePlan& plan, bool replace,
                             const StepProgress& progress);

/// The same of several races of a plan's boats, each with a file of its own. Files that were replaced
/// before a fault stay so.
PlanTrouble WritePlannedRaces(const std::filesystem::path& tree, const RacePlan& plan,
                              const std::vector<RaceControl>& races, bool replace,
                              const StepProgress& progress);

}  // namespace keelview
