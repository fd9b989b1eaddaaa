#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>
#include <vector>

#include "racedata/coastline.h"
#include "racedata/gps_track.h"

namespace keelview {

/// One boat's track as a search walks over it, second by second upward. Each lookup takes the first segment
/// from the last found one on that holds the second, which matters for a track whose times fall back (a
/// receiver that began with a wrong clock). A walk over all seconds costs the number of seconds plus that
/// of the points, whatever the times are.
class TrackWalk {
  public:
    /// `boat` must have at least two points; `tracks` must outlive the walk.
    TrackWalk(const Tracks& tracks, int boat)
        : lat_(tracks.TrackLat[boat]),
          lon_(tracks.TrackLon[boat]),
          times_(tracks.TrackTime[boat]),
          count_(tracks.TrackPointCount[boat]),
          lowestUpTo_(times_.begin(), times_.begin() + count_ + 1),
          highestFrom_(lowestUpTo_) {
        for (int i = 2; i <= count_; ++i) lowestUpTo_[i] = std::min(lowestUpTo_[i], lowestUpTo_[i - 1]);
        for (int i = count_ - 1; i >= 1; --i)
            highestFrom_[i] = std::max(highestFrom_[i], highestFrom_[i + 1]);
    }

    /// Back to the first segment, for a walk from the beginning.
    void Restart() { segment_ = 1; }

    /// The segment that holds second t, 0 if there is none; from one Restart to the next t must not fall.
    int SegmentAt(int t) {
        const int from = times_[segment_] <= t ? segment_ : FirstPointAtOrBefore(t);
        if (from > count_ || highestFrom_[from] <= t) return 0;
        int next = from + 1;
        while (times_[next] <= t) ++next;
        return segment_ = next - 1;
    }

    /// The straight way along a segment at second t, which may lie past its end.
    Position On(int segment, int t) const {
        const double from = times_[segment];
        const double f = (t - from) / (times_[segment + 1] - from);
        return {lat_[segment] + (lat_[segment + 1] - lat_[segment]) * f,
                lon_[segment] + (lon_[segment + 1] - lon_[segment]) * f};
    }

    /// The last second that a segment holds.
    int LastSecondOf(int segment) const { return times_[segment + 1] - 1; }

    /// After a lookup at t without a segment: the first second at which another one may find one; the
    /// largest int when none will.
    int NextChance(int t) const {
        if (t < lowestUpTo_[count_]) return lowestUpTo_[count_];
        const bool over = times_[segment_] <= t && highestFrom_[segment_] <= t;
        return over ? std::numeric_limits<int>::max() : t + 1;
    }

  private:
    int FirstPointAtOrBefore(int t) const {
        const auto first = lowestUpTo_.begin();
        return static_cast<int>(
            std::partition_point(first + 1, lowestUpTo_.end(), [t](auto lowest) { return lowest > t; }) -
            first);
    }

    const std::vector<double>& lat_;
    const std::vector<double>& lon_;
    const std::vector<std::int32_t>& times_;
    int count_ = 0;
    int segment_ = 1;
    std::vector<std::int32_t> lowestUpTo_;   ///< smallest time of points 1 to i
    std::vector<std::int32_t> highestFrom_;  ///< largest time of points i to the last
};

}  // namespace keelview
