#pragma once

#include <optional>
#include <vector>

#include "analysis/found_tracks.h"

namespace keelview {

/// Seconds to add to the clock of each track so that it sails with the others, to 5 s; nothing where its
/// clock agrees with theirs, or where the tracks do not tell for sure.
///
/// Boats of a race sail round the same marks at nearly the same time. Of two boats the lag is worked out by
/// which one lies nearest to the other all the way; it counts where it is the same in every part of the
/// way, as a slow boat's is not. What most boats agree on is the right time, so that two boats alone tell
/// nothing. Lags of up to half an hour are found, and those of a wrong zone, whole and half hours.
std::vector<std::optional<double>> ProposeClocks(const std::vector<const FoundTrack*>& tracks);

}  // namespace keelview
