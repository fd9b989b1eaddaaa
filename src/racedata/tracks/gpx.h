#pragma once

#include <string_view>

#include "racedata/tracks/recording.h"

namespace keelview {

/// Whether a file is XML with a gpx element outermost.
bool LooksLikeGpx(std::string_view bytes);

/// Reads GPX 1.0 and 1.1 (https://www.topografix.com/GPX/1/1/). A trk is a recording, whatever its
/// segments, and so is a rte whose points have times; those of one name that follow each other in time are
/// one. Speed and course are those of 1.0 or of extensions with any prefix. Marks are the wpt with a name,
/// whose time tells when they were stored, and points of a rte with a name and without a time.
TrackFileContent ReadGpx(std::string_view bytes);

}  // namespace keelview
