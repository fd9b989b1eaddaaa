#pragma once

#include <optional>
#include <string_view>

#include "racedata/tracks/recording.h"

namespace keelview {

/// A moment as text tells it.
struct IsoTime {
    UnixMs Time = 0;       ///< UTC; where the text tells no zone, as if it stood in UTC
    bool HasZone = false;  ///< whether a Z or an offset stands behind it
    std::optional<int>
        OffsetMin;  ///< local time less UTC in minutes, where an offset tells it: +09:00 is 540
};

/// Reads a date with a time of day by ISO 8601, blanks around it aside: "2026-10-03T12:30:05.25+09:00". The
/// T may be a blank or small, seconds and their fraction (of any length, to the nearest millisecond) may be
/// missing, the zone is Z, +hh:mm, +hhmm, +hh or missing. A leap second is the second after it. Nothing for
/// any other text, or for a day or a time of day that is not.
std::optional<IsoTime> ParseIsoTime(std::string_view text);

}  // namespace keelview
