#pragma once

#include <string_view>

#include "racedata/tracks/recording.h"

namespace keelview {

/// Whether the head of a file holds sentences of NMEA 0183, bare or behind what a logger writes before
/// them.
bool LooksLikeNmea(std::string_view bytes);

/// A log of NMEA 0183 sentences as one recording. Sentences of the same time of day are one fix: RMC, GGA
/// or GLL open it, what VTG, HDT, HDG, VHW, MWV, MWD and VWR tell until the next is of it, too. Dates come
/// from RMC and ZDA and go on over midnight. A wrong checksum makes a sentence Broken, a missing one is
/// accepted; a time at which any sentence says that there is no fix is NotValid. WPL gives marks.
TrackFileContent ReadNmea(std::string_view bytes);

}  // namespace keelview
