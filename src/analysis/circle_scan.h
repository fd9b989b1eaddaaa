#pragma once

#include <algorithm>

#include "analysis/course_on_water.h"
#include "analysis/mark_rounding_walk.h"
#include "base/numbers.h"
#include "base/position.h"

namespace keelview {

/// Both ends belong to the range.
struct SecondRange {
    int From = 0;
    int To = 0;
};

/// A circle on the water, minutes of arc.
struct Circle {
    Position Centre;
    double Radius = 0.0;
};

/// Moves over one boat's track second by second, leaving out what lies outside a circle.
class CircleScan {
  public:
    /// `last` is the position last found, kept from scan to scan: it stands in for the boat where the track
    /// says nothing. After `steps` seconds that had to be looked at a scan sees no more.
    CircleScan(const Track& track, int steps, const CourseOnWater& course, Position& last)
        : walk_(track), steps_(steps), course_(course), last_(last) {}

    /// Moves through the range and has each second judged at which the boat may be in the circle, by
    /// `found(second, segment)`, until that says so; the segment is 0 where none holds the second. Long
    /// stretches without a segment are skipped once the position has stood for a few seconds.
    template <class Found>
    void Run(SecondRange range, const Circle& circle, Found found) {
        walk_.Restart();
        int quiet = 0;
        for (int t = range.From; t <= range.To && steps_ > 0;) {
            const int segment = walk_.SegmentAt(t);
            if (segment > 0) {
                last_ = walk_.On(segment, t);
                quiet = 0;
            } else if (++quiet > QuietSeconds) {
                t = walk_.NextChance(t);
                continue;
            }
            --steps_;
            if (found(t, segment)) return;
            const int next = segment > 0 ? NextSecond(circle, segment, t) : t + 1;
            t = std::min(next, std::max(t + 1, range.To));
        }
    }

    const CourseOnWater& Course() const { return course_; }
    /// Where the boat is at the second that is judged.
    const Position& At() const { return last_; }
    /// The place at second t or at the one after it, for the segment that holds t.
    Position On(int segment, int t) const { return walk_.On(segment, t); }

  private:
    static constexpr int QuietSeconds = 4;  // without a segment, after which no judgement changes

    /// The next second to look at after t on a segment: all before it lie outside the circle. The last
    /// second of a segment or of several is looked at too, as the boat stays there when the track ends.
    int NextSecond(const Circle& circle, int segment, int t) const {
        const double away = course_.Distance(circle.Centre, last_) - circle.Radius;
        const int last = walk_.LastSecondOf(segment);
        if (!(away > 0)) return t + 1;
        const int farUntil = walk_.FarUntil(segment, circle.Centre, circle.Radius, course_.LonScale);
        if (farUntil > t) return farUntil;
        if (t >= last) return t + 1;
        constexpr double Caution = 0.999;  // roundings of the way and the speed
        const double seconds = away / course_.Distance(last_, walk_.On(segment, t + 1)) * Caution;
        return t + std::clamp(FloorToInt(seconds), 1, last - t);
    }

    TrackWalk walk_;
    int steps_;
    const CourseOnWater& course_;
    Position& last_;
};

}  // namespace keelview
