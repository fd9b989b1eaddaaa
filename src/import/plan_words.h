#pragma once

#include <string>

#include "analysis/race_plan.h"
#include "analysis/race_plan_writing.h"
#include "racedata/limits.h"
#include "session/voice.h"

namespace keelview {

inline constexpr Text TooManyBoats{"A race has at most 200 boats", "1レースの艇数は200艇までです"};
static_assert(MaxBoats == 200, "the text names the limit");

// What the sheet says of what was found, in the person's language.

/// "03:00 before the others", "12 miles away"; empty for a boat of the fleet.
std::string LeftOutText(const Voice& voice, const FleetPlace& lies);

/// "12 without a place, 1 damaged"; empty where nothing was skipped.
std::string SkippedText(const Voice& voice, const std::vector<Skipped>& left);

/// "2 (longest 00:03:10)"; empty without a gap.
std::string GapsText(const Voice& voice, const TrackRhythm& rhythm);

/// "+00:03:00", as it is added to a clock.
std::string ClockText(double seconds);

/// A file that is not used, with the reason.
std::string UnusedText(const Voice& voice, const UnusedFile& file);

/// Why nothing was written.
std::string TroubleText(const Voice& voice, const PlanTrouble& trouble);

}  // namespace keelview
