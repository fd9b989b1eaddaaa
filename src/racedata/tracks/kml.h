#pragma once

#include <string_view>

#include "racedata/tracks/recording.h"

namespace keelview {

/// Whether a file is XML with a kml element outermost.
bool LooksLikeKml(std::string_view bytes);

/// Reads KML 2.2 and 2.3. A Placemark with a Track, or with several in a MultiTrack, is a recording; so are
/// the Placemarks of one folder that are a point with a time each. A point with a name and without a time
/// is a mark; drawn lines have no times.
TrackFileContent ReadKml(std::string_view bytes);

}  // namespace keelview
