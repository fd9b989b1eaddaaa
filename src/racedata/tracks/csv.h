#pragma once

#include <string_view>

#include "racedata/tracks/recording.h"

namespace keelview {

/// Whether a line of names that tells of latitude and longitude stands near the head of a text.
bool LooksLikeCsv(std::string_view bytes);

/// A table as text: a line of names (see csv_layout.h), behind any lines that are none, then a row a fix.
/// Where a column names boats, each is a recording. Empty rows say nothing; a row is a line, also where
/// quotes go on. A column that numbers the rows is no boat's name. Beside times with a zone, those without
/// are OtherZone.
TrackFileContent ReadCsv(std::string_view bytes);

}  // namespace keelview
