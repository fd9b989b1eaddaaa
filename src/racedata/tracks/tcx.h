#pragma once

#include <string_view>

#include "racedata/tracks/recording.h"

namespace keelview {

/// Whether a file is XML with a TrainingCenterDatabase outermost.
bool LooksLikeTcx(std::string_view bytes);

/// Reads TCX (version 2 of the schema TrainingCenterDatabase). An activity or a course is a recording,
/// whatever its laps. A point without a position, as a watch writes without reception, has no place.
TrackFileContent ReadTcx(std::string_view bytes);

}  // namespace keelview
