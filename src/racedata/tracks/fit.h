#pragma once

#include <string_view>

#include "racedata/tracks/recording.h"

namespace keelview {

/// Whether a file begins with a header of FIT.
bool LooksLikeFit(std::string_view bytes);

/// Reads FIT, as watches and cycle computers write it: the fixes of its records, or of its messages of the
/// GPS where a part holds more of those; the places of a course as marks; the zone of the local time. Parts
/// that are chained continue one recording while they come from one device and follow in time. Of a file
/// that is cut off or that has a wrong checksum, what can be read is given and one piece is counted as
/// broken.
TrackFileContent ReadFit(std::string_view bytes);

}  // namespace keelview
