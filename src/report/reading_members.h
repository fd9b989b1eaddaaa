#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "analysis/track_rhythm.h"
#include "racedata/tracks/recording.h"
#include "report/json_writer.h"

namespace keelview {

// What reports say of a recording, each in one form.

/// "empty", "no_times" and so on; empty for Refusal::None.
std::string_view NameOf(Refusal why);

/// "2004-08-05T12:30:00Z", with three decimals where they are not 0.
std::string IsoTime(UnixMs time);

/// The members "median_interval" and "gaps"; none where there is no interval.
void WriteRhythm(JsonWriter& json, const TrackRhythm& rhythm);

/// The member "skipped": how many pieces gave no fix, by reason.
void WriteSkipped(JsonWriter& json, const std::vector<Skipped>& left);

}  // namespace keelview
