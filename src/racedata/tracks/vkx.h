#pragma once

#include <string_view>

#include "racedata/tracks/recording.h"

namespace keelview {

/// Whether a file begins with a page of VKX.
bool LooksLikeVkx(std::string_view bytes);

/// Reads VKX, the log of the Vakaros instruments: fixes with heading and speed through the water, the start
/// that the race timer told and the ends of the line that were pinged. A page with a row of an unknown kind
/// is left there and counted as broken; reading goes on at the next sound page.
TrackFileContent ReadVkx(std::string_view bytes);

}  // namespace keelview
