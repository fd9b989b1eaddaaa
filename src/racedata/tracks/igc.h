#pragma once

#include <string_view>

#include "racedata/tracks/recording.h"

namespace keelview {

/// Whether the head of a file holds the date or a fix of an IGC flight record.
bool LooksLikeIgc(std::string_view bytes);

/// An IGC record as one recording. Its times go on over midnight; further digits of time and place, speed,
/// course, heading and accuracy are read where an I record places them. Fixes that are valid for the place
/// alone
/// (`V`) count, as a boat needs no height. Turn points of a task (C records) are marks.
TrackFileContent ReadIgc(std::string_view bytes);

}  // namespace keelview
