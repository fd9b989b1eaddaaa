#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "racedata/track_reading.h"

namespace keelview {

// A reading of a track in few bytes, about two a fix once they are packed by gzip, and exact: each fix
// comes back in every bit.
//
//     "KVPACK1\n"; the format's and the device's name; the refusal; the skips, each reason with its count;
//     whether there are velocities; the number of fixes; then in columns the times, latitudes and
//     longitudes, each behind the number of the way that it is counted in, and where there are velocities
//     speeds and courses.
//
// Numbers are of variable length, seven bits a byte, the low ones first, the high bit set but in the last;
// with a sign they are folded: 0, -1, 1, -2... A text is its length and its bytes. A column holds
// differences of differences. Places are counted in whole steps of one of the ways that recorders write
// them, and a second column holds by how many of its last bits each differs from them, 0 for nearly all;
// where some place of the track lies farther off, the steps are 0 and the second column holds all its bits.
// Speeds and courses are the differences of the bits of the floats.

/// The bytes of a reading. Those of its fixes that lie beyond the years 0 to 10000 are none of a reading.
std::string PackTrack(const TrackReading& reading);

/// Whether a file begins as a packed reading does.
bool IsPackedTrack(std::string_view bytes);

/// The reading; nothing where the bytes are no packed reading, or damaged.
std::optional<TrackReading> UnpackTrack(std::string_view bytes);

}  // namespace keelview
