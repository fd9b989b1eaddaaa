#pragma once

#include <algorithm>
#include <cmath>
#include <limits>

#include "analysis/track_at.h"
#include "base/one_based.h"
#include "base/position.h"
#include "racedata/gps_track.h"

namespace keelview {

/// One boat's track as a search walks over it, second by second upward. Each lookup takes the first segment
/// from the last found one on that holds the second, which matters for a track whose times fall back (a
/// receiver that began with a wrong clock). A walk over all seconds costs the number of seconds plus that
/// of the points, whatever the times are.
class TrackWalk {
  public:
    /// The track must have at least two points, and outlive the walk.
    explicit TrackWalk(const Track& track)
        : track_(track),
          times_(track.TrackTime),
          count_(track.Count()),
          earliest_(times_[1]),
          latest_(times_[count_]),
          inOrder_(std::ranges::is_sorted(times_)) {
        if (!inOrder_) OrderTimes();
        for (int first = 1; first < count_; first += BlockSize) blocks_.Add(Enclose(first));
    }

    /// Back to the first segment, for a walk from the beginning.
    void Restart() { segment_ = 1; }

    /// The segment that holds second t, 0 if there is none; from one Restart to the next t must not fall.
    int SegmentAt(int t) {
        const int from = times_[segment_] <= t ? segment_ : FirstPointAtOrBefore(t);
        if (from > count_ || HighestFrom(from) <= t) return 0;
        int next = from + 1;
        // Where the times are in order, a point may be passed over together with all before it.
        for (int stride = inOrder_ ? BlockSize : 0; stride > 1; stride /= 4)
            while (next + stride <= count_ && times_[next + stride] <= t) next += stride;
        while (times_[next] <= t) ++next;
        return segment_ = next - 1;
    }

    /// The place at second t, not before the segment, nor further on than the second after one it holds:
    /// several fixes may lie within a second. Past the end of the track the last segment goes straight on.
    Position On(int segment, int t) const {
        while (segment + 1 < count_ && times_[segment + 1] < t) ++segment;
        return PositionOn(track_, segment, t);
    }

    /// The last whole second before a segment ends.
    int LastSecondOf(int segment) const { return LastSecondBefore(times_[segment + 1]); }

    /// A last second up to which the boat, now on a segment, keeps further away than `radius` from a place;
    /// that of an earlier moment where nothing is known. Distances are in minutes of arc, and `lonScale` is
    /// the length of a minute of longitude.
    int FarUntil(int segment, const Position& place, double radius, double lonScale) const {
        const Block& block = blocks_[(segment - 1) / BlockSize + 1];
        const double north = std::max({block.South - place.Lat, place.Lat - block.North, 0.0});
        const double east = std::max({block.West - place.Lon, place.Lon - block.East, 0.0}) * lonScale;
        const bool far = north * north + east * east > radius * radius * Caution;
        return far ? block.LastSecond : std::numeric_limits<int>::min();
    }

    /// After a lookup at t without a segment: the first second at which another one may find one; the
    /// largest int when none will.
    int NextChance(int t) const {
        if (t < LowestUpTo(count_)) return LastSecondBefore(LowestUpTo(count_)) + 1;
        const bool over = times_[segment_] <= t && HighestFrom(segment_) <= t;
        return over ? std::numeric_limits<int>::max() : t + 1;
    }

  private:
    static constexpr int BlockSize = 64;         // segments; a track of a day has some hundred blocks
    static constexpr double Caution = 1.000001;  // roundings of the distances

    /// The place and time that some segments take up.
    struct Block {
        double South = 0.0;
        double North = 0.0;
        double West = 0.0;
        double East = 0.0;
        int LastSecond = 0;  ///< the smallest int where times fall back: the walk may leave the block early
    };

    void OrderTimes() {
        lowest_ = highest_ = times_;
        for (int i = 2; i <= count_; ++i) lowest_[i] = std::min(lowest_[i], lowest_[i - 1]);
        for (int i = count_ - 1; i >= 1; --i) highest_[i] = std::max(highest_[i], highest_[i + 1]);
    }

    /// Smallest time of points 1 to i.
    double LowestUpTo(int i) const { return inOrder_ ? earliest_ : lowest_[i]; }
    /// Largest time of points i to the last.
    double HighestFrom(int i) const { return inOrder_ ? latest_ : highest_[i]; }

    static int LastSecondBefore(double time) { return static_cast<int>(std::ceil(time)) - 1; }

    Block Enclose(int first) const {
        const int last = std::min(first + BlockSize, count_);
        const Position begin = track_.At(first);
        Block block{begin.Lat, begin.Lat, begin.Lon, begin.Lon, LastSecondBefore(times_[last])};
        for (int i = first + 1; i <= last; ++i) {
            const Position at = track_.At(i);
            block.South = std::min(block.South, at.Lat);
            block.North = std::max(block.North, at.Lat);
            block.West = std::min(block.West, at.Lon);
            block.East = std::max(block.East, at.Lon);
            if (times_[i] < times_[i - 1]) block.LastSecond = std::numeric_limits<int>::min();
        }
        return block;
    }

    int FirstPointAtOrBefore(int t) const {
        if (inOrder_) return earliest_ <= t ? 1 : count_ + 1;
        const auto found =
            std::partition_point(lowest_.begin(), lowest_.end(), [t](auto lowest) { return lowest > t; });
        return static_cast<int>(found - lowest_.begin()) + 1;
    }

    const Track& track_;
    const OneBased<double>& times_;
    int count_ = 0;
    int segment_ = 1;
    double earliest_ = 0.0;  // where the times are in order
    double latest_ = 0.0;    // likewise
    bool inOrder_ = false;
    OneBased<double> lowest_;   // what LowestUpTo gives; empty where the times are in order
    OneBased<double> highest_;  // likewise
    OneBased<Block> blocks_;
};

}  // namespace keelview
