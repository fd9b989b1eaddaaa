#pragma once

#include <string_view>

#include "racedata/tracks/recording.h"

namespace keelview {

/// Whether a file begins as a JSON object with the words of GeoJSON.
bool LooksLikeGeoJson(std::string_view bytes);

/// Reads GeoJSON (RFC 7946). A LineString or a MultiLineString with its times in the property coordTimes,
/// times, or coordinateProperties.times is a recording; so are the Points with a property time, timestamp
/// or datetime of each boat, which the property boat tells. Times are written by ISO 8601, or numbers:
/// seconds or milliseconds since 1970. A Point with a name and without a time is a mark. What lies deeper
/// than 200, or would take more than some times the file in memory, is refused as TooLarge.
TrackFileContent ReadGeoJson(std::string_view bytes);

}  // namespace keelview
