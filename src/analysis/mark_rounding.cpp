#include "analysis/mark_rounding.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "analysis/circle_scan.h"
#include "analysis/course_on_water.h"
#include "analysis/reconcile_passes.h"
#include "analysis/track_at.h"
#include "base/angles.h"
#include "base/numbers.h"

namespace keelview {

namespace {

constexpr double GapRadius = MinutesOf(100);

constexpr int SearchSteps = 200'000'000;  // for all boats together; a hostile race ends in seconds, too

constexpr double NoAngle = 500.0;         // no angle yet
constexpr double NarrowestAngle = 150.0;  // beyond it the boat is on the inside of the corner

/// The search over one boat's track.
class BoatSearch {
  public:
    /// Scans as CircleScan does; `last` is kept over all boats.
    BoatSearch(const Track& track, int steps, const CourseOnWater& course, Position& last)
        : scan_(track, steps, course, last), course_(course) {}

    /// The second at which the line is crossed: the last crossing of the range for the start, the first one
    /// for any other line.
    std::optional<int> LineCrossing(const PlacedEntry& line, SecondRange range, bool isStart) {
        const double length = course_.LengthOf(line);
        const double radius = LineRadius(course_, line);
        const Axis axis(course_, line.At, course_.Bearing(line.At, line.SecondEnd));
        std::optional<int> found;
        scan_.Run(range, {line.At, radius}, [&](int t, int segment) {
            if (segment == 0 || !(course_.Distance(line.At, scan_.At()) < radius)) return false;
            const std::optional<double> along = axis.MetBy(scan_.At(), scan_.On(segment, t + 1));
            if (!along || !(*along >= 0 && *along <= length)) return false;
            found = t;
            return !isStart;
        });
        return found;
    }

    /// The first second at which the boat, inside the circle, has passed through the outward bisector. The
    /// direction opposite to it, where the angle leaps between -180 and 180, does not count.
    std::optional<int> Rounding(const PlacedEntry& mark, SecondRange range) {
        double previous = NoAngle;
        std::optional<int> found;
        scan_.Run(range, {mark.At, RoundingRadius}, [&](int t, int) {
            if (!mark.HasCorner || !(course_.Distance(mark.At, scan_.At()) < RoundingRadius)) return false;
            const double angle =
                WrapDifference(mark.RoundingBearing - course_.Bearing(mark.At, scan_.At()));
            if (std::abs(angle) < NarrowestAngle && previous < 360 && previous * angle <= 0) {
                found = t;
                return true;
            }
            previous = angle;
            return false;
        });
        return found;
    }

    /// The first second at which the boat, inside the circle, has stopped getting nearer; later than
    /// `after`.
    std::optional<int> NoLongerNearer(const PlacedEntry& mark, SecondRange range, int after) {
        double best = 5000;
        std::optional<int> found;
        scan_.Run(range, {mark.At, RoundingRadius}, [&](int t, int) {
            const double distance = course_.Distance(mark.At, scan_.At());
            if (!(distance < RoundingRadius)) return false;
            if (distance < best) {
                best = distance;
                return false;
            }
            if (t <= after) return false;
            found = t;
            return true;
        });
        return found;
    }

    /// The first second of the nearest approach inside the small circle. `best` is the distance that it
    /// must beat, and becomes its own.
    std::optional<int> NearestApproach(const PlacedEntry& mark, SecondRange range, double& best) {
        std::optional<int> found;
        scan_.Run(range, {mark.At, GapRadius}, [&](int t, int) {
            const double distance = course_.Distance(mark.At, scan_.At());
            if (distance < GapRadius && distance < best) {
                best = distance;
                found = t;
            }
            return false;
        });
        return found;
    }

  private:
    CircleScan scan_;
    const CourseOnWater& course_;
};

using PassTimes = OneBased<std::optional<int>>;

/// The earliest time that a search finds at one of the marks of an entry.
template <class Search>
std::optional<int> AtEitherMark(const PlacedEntry& entry, Search search) {
    std::optional<int> first;
    for (const PlacedEntry& mark : MarksOf(entry)) {
        const std::optional<int> time = search(mark);
        if (time && (!first || *time < *first)) first = time;
    }
    return first;
}

/// A time as the walk goes on from it: after a missed entry it begins again at the gun.
int WalkedTime(const PassTimes& times, int c) {
    return times[c].value_or(0);
}

void FindPasses(BoatSearch& search, const CourseOnWater& course, int lastSecond, PassTimes& times) {
    for (int c = 1; c <= course.Count(); ++c) {
        const PlacedEntry& entry = course.Entries[c];
        const bool isStart = c == 1;
        const int before = isStart ? 0 : WalkedTime(times, c - 1);
        const SecondRange range =
            isStart ? SecondRange{StartFrom, StartTo} : SecondRange{before, lastSecond};
        if (entry.IsLine) {
            times[c] = search.LineCrossing(entry, range, isStart);
            continue;
        }
        times[c] = AtEitherMark(entry, [&](const auto& mark) { return search.Rounding(mark, range); });
        if (times[c]) continue;
        const int after = isStart ? StartFrom - 1 : before + 1;
        times[c] = AtEitherMark(
            entry, [&](const auto& mark) { return search.NoLongerNearer(mark, range, after); });
    }
}

/// True if an entry that a nearest approach could fill has no time; the last one stays as it is.
bool IsGap(const CourseOnWater& course, const PassTimes& times, int c) {
    return !times[c] && !course.Entries[c].IsLine;
}

bool HasGap(const CourseOnWater& course, const PassTimes& times) {
    for (int c = 1; c < course.Count(); ++c)
        if (IsGap(course, times, c)) return true;
    return false;
}

void FillGaps(BoatSearch& search, const CourseOnWater& course, PassTimes& times) {
    for (int c = 1; c < course.Count(); ++c) {
        if (!IsGap(course, times, c)) continue;
        const int after = WalkedTime(times, c + 1);
        const SecondRange range =
            c == 1 ? SecondRange{StartFrom, after} : SecondRange{WalkedTime(times, c - 1) + 1, after - 1};
        double best = 1000;
        for (const PlacedEntry& mark : MarksOf(course.Entries[c]))
            if (const auto time = search.NearestApproach(mark, range, best)) times[c] = time;
    }
}

OneBased<PassSource> SourcesOf(const PassTimes& times) {
    OneBased<PassSource> sources;
    for (const auto& time : times) sources.Add(time ? PassSource::Rule : PassSource::None);
    return sources;
}

}  // namespace

void FindMarkPassTimes(const RaceControl& race, const Tracks& tracks, const EarthScale& scale,
                       MarkPasses& passes) {
    const CourseOnWater course = PlaceCourse(race, scale);
    const int boats = race.Boats.Count();
    const int lastSecond = LastSearchedSecond(race);
    const int steps = SearchSteps / std::max(boats, 1);
    passes.MarkPassTime.Assign(boats, PassTimes(course.Count()));
    passes.MarkPassSource.Clear();
    passes.FirstPassTime.Resize(course.Count());
    passes.MarkPassDist.Assign(boats, OneBased<double>(course.Count()));
    Position last;
    for (int boat = 1; boat <= boats; ++boat) {
        if (!HasSegment(tracks, boat)) continue;
        BoatSearch search(tracks.Boats[boat], steps, course, last);
        FindPasses(search, course, lastSecond, passes.MarkPassTime[boat]);
    }
    for (int boat = 1; boat <= boats; ++boat) {
        if (!HasSegment(tracks, boat) || !HasGap(course, passes.MarkPassTime[boat])) continue;
        BoatSearch search(tracks.Boats[boat], steps, course, last);
        FillGaps(search, course, passes.MarkPassTime[boat]);
    }
    for (const PassTimes& times : passes.MarkPassTime) passes.MarkPassSource.Add(SourcesOf(times));
    FindFirstPasses(passes);
}

void FindAllPasses(const RaceControl& race, const Tracks& tracks, const EarthScale& scale,
                   MarkPasses& passes) {
    FindMarkPassTimes(race, tracks, scale, passes);
    ReconcilePasses(race, tracks, scale, passes);
    SetHandPasses(race, passes);
    FindFirstPasses(passes);
    FindGateMarks(race, tracks, scale, passes);
    ComputeMarkPassDist(race, tracks, passes);
}

}  // namespace keelview
