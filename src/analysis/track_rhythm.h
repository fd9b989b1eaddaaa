#pragma once

#include <optional>
#include <vector>

#include "racedata/track_reading.h"

namespace keelview {

/// How evenly a track was recorded.
struct TrackRhythm {
    std::optional<double> MedianInterval;  ///< seconds between fixes; nothing without two times
    int Gaps = 0;                          ///< intervals over ten times the median and over 30 s
    double LongestGap = 0.0;               ///< seconds; 0 without a gap
};

/// The rhythm of fixes, where their time goes on.
TrackRhythm RhythmOf(const std::vector<GpsFix>& fixes);

}  // namespace keelview
