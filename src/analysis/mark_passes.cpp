#include "analysis/mark_passes.h"

#include "analysis/course_on_water.h"
#include "analysis/track_at.h"
#include "base/numbers.h"

namespace keelview {

namespace {

/// Miles sailed up to second t; 0 where no segment holds it.
double DistanceAt(const Track& track, int t) {
    const int segment = FirstSegment(track, t);
    if (segment == 0) return 0;
    const double from = track.TrackTime[segment];
    const double miles = track.TrackDist[segment];
    return miles +
           (track.TrackDist[segment + 1] - miles) * ((t - from) / (track.TrackTime[segment + 1] - from));
}

}  // namespace

void SetHandPasses(const RaceControl& race, MarkPasses& passes) {
    for (const HandPass& hand : race.HandPasses) {
        const int boat = BoatOfNumber(race, hand.BoatNumber);
        const int seconds = hand.Seconds.value_or(0);
        const bool isSound = seconds >= -LongestRace && seconds <= LongestRace;
        if (!isSound || !passes.MarkPassTime.Holds(boat) || !passes.MarkPassTime[boat].Holds(hand.Entry))
            continue;
        passes.MarkPassTime[boat][hand.Entry] = hand.Seconds;
        passes.MarkPassSource[boat][hand.Entry] = PassSource::Hand;
    }
}

void FindFirstPasses(MarkPasses& passes) {
    int before = -1;
    for (int c = 1; c <= passes.FirstPassTime.Count(); ++c) {
        std::optional<int>& first = passes.FirstPassTime[c];
        first.reset();
        for (const auto& times : passes.MarkPassTime)
            if (times[c] > before && (!first || times[c] < first)) first = times[c];
        before = first.value_or(before);
    }
}

void FindGateMarks(const RaceControl& race, const Tracks& tracks, const EarthScale& scale,
                   MarkPasses& passes) {
    passes.GateMark.Assign(race.Boats.Count(), OneBased<int>(race.CourseOrder.Count()));
    const CourseOnWater course = PlaceCourse(race, scale);
    for (int entry = 1; entry <= course.Count(); ++entry) {
        const PlacedEntry& gate = course.Entries[entry];
        if (!gate.IsGate) continue;
        const CourseKey key = ParseCourseKey(race.CourseOrder[entry]);
        for (int boat = 1; boat <= race.Boats.Count(); ++boat) {
            const std::optional<int> time = PassTime(passes, boat, entry);
            if (!time || !HasSegment(tracks, boat)) continue;
            const int segment = FindSegment(tracks.Boats[boat], *time);
            if (segment == 0) continue;
            const Position at = PositionOn(tracks.Boats[boat], segment, *time);
            const bool isFirst = course.Distance(at, gate.At) <= course.Distance(at, gate.SecondEnd);
            passes.GateMark[boat][entry] = isFirst ? key.Number : key.OtherMark;
        }
    }
}

void ComputeMarkPassDist(const RaceControl& race, const Tracks& tracks, MarkPasses& passes) {
    passes.MarkPassDist.Assign(race.Boats.Count(), OneBased<double>(race.CourseOrder.Count()));
    for (int boat = 1; boat <= race.Boats.Count(); ++boat) {
        if (!HasSegment(tracks, boat)) continue;
        const Track& track = tracks.Boats[boat];
        const double atStart = DistanceAt(track, 0);
        for (int c = 1; c <= race.CourseOrder.Count(); ++c) {
            const std::optional<int> time = PassTime(passes, boat, c);
            if (time) passes.MarkPassDist[boat][c] = RoundDecimals(DistanceAt(track, *time) - atStart, 3);
        }
    }
}

std::optional<int> FirstFinishTime(const MarkPasses& passes) {
    return passes.FirstPassTime.Empty() ? std::nullopt : passes.FirstPassTime.Last();
}

std::optional<int> FinishTime(const MarkPasses& passes, int boat) {
    if (!passes.MarkPassTime.Holds(boat)) return {};
    return PassTime(passes, boat, passes.MarkPassTime[boat].Count());
}

}  // namespace keelview
