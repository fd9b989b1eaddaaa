#include "analysis/mark_rounding.h"

#include <algorithm>
#include <cmath>

#include "analysis/mark_rounding_walk.h"
#include "analysis/track_at.h"
#include "base/angles.h"
#include "base/numbers.h"

namespace keelview {

namespace {

// Distances of the tests in minutes of arc; a minute counts as a nautical mile here.
constexpr double RoundingRadius = 200 / MetresPerNauticalMile;
constexpr double GapRadius = 100 / MetresPerNauticalMile;
constexpr double LineRadius = 0.3;

constexpr int StartFrom = -120;  // seconds between which the start is looked for
constexpr int StartTo = 360;
constexpr int QuietSeconds = 4;           // without a segment, after which no test can change its mind
constexpr int SearchSteps = 200'000'000;  // for all boats together; a hostile race ends in seconds, too

constexpr double NoAngle = 500.0;         // no angle yet
constexpr double NarrowestAngle = 150.0;  // beyond it the boat is on the inside of the corner

/// A course entry on the water.
struct Entry {
    bool IsLine = false;
    Position At;  ///< the mark, or the first end of the line
    Position SecondEnd;
    double RoundingBearing = 0.0;  ///< outward bisector of the course's corner, degrees
    bool HasCorner = false;        ///< another leg begins here
};

struct Course {
    double LonScale = 1.0;
    OneBased<Entry> Entries;

    int Count() const { return Entries.Count(); }
    double East(const Position& from, const Position& to) const { return (to.Lon - from.Lon) * LonScale; }
    double Distance(const Position& from, const Position& to) const {
        const double north = to.Lat - from.Lat;
        const double east = East(from, to);
        return std::sqrt(north * north + east * east);
    }
    double Bearing(const Position& from, const Position& to) const {
        return BearingOf(East(from, to), to.Lat - from.Lat);
    }
};

Entry PlaceEntry(const RaceControl& race, const std::string& text) {
    const CourseKey key = ParseCourseKey(text);
    Entry entry;
    entry.IsLine = key.IsLine;
    if (key.IsLine && race.Lines.Holds(key.Number)) {
        entry.At = race.Lines[key.Number].FirstEnd();
        entry.SecondEnd = race.Lines[key.Number].SecondEnd();
    } else if (!key.IsLine && race.Marks.Holds(key.Number)) {
        entry.At = race.Marks[key.Number].At();
    }
    return entry;
}

/// As WrapDirection, but 360 stays: as 0 it would turn the bisector of a course straight south round.
double UpTo360(double degrees) {
    return degrees > 360 ? degrees - 360 : degrees;
}

/// Halves the angle between the way back to the last entry and the way on, and turns it round, so that it
/// points out of the corner.
double OutwardBisector(double bearingIn, double bearingOut) {
    const double back = UpTo360(bearingIn + 180);
    return UpTo360(back + WrapDifference(bearingOut - back) / 2 + 180);
}

Course PlaceCourse(const RaceControl& race, const EarthScale& scale) {
    Course course;
    course.LonScale = scale.LonScale;
    for (const std::string& key : race.CourseOrder) course.Entries.Add(PlaceEntry(race, key));
    for (int c = 1; c < course.Count(); ++c) {
        Entry& entry = course.Entries[c];
        entry.HasCorner = true;
        if (c == 1) continue;  // a course that begins with a mark is tested against true north
        entry.RoundingBearing = OutwardBisector(course.Bearing(course.Entries[c - 1].At, entry.At),
                                                course.Bearing(entry.At, course.Entries[c + 1].At));
    }
    return course;
}

/// Both ends belong to the range.
struct SecondRange {
    int From = 0;
    int To = 0;
};

/// The search over one boat's track.
class BoatSearch {
  public:
    /// `last` is the position last found, kept from search to search and over all boats: it stands in for
    /// the boat where the track says nothing. After `steps` seconds that had to be looked at it finds no
    /// more.
    BoatSearch(const Track& track, int steps, const Course& course, Position& last)
        : walk_(track), steps_(steps), course_(course), last_(last) {}

    /// The second at which the line is crossed: the last crossing of the range for the start, the first one
    /// for any other line. 0 when it is not.
    int LineCrossing(const Entry& line, SecondRange range, bool isStart) {
        const double length = course_.Distance(line.At, line.SecondEnd);
        const double turn = -WrapDifference(course_.Bearing(line.At, line.SecondEnd)) * DegToRad;
        const double turnSin = std::sin(turn);
        const double turnCos = std::cos(turn);
        // Turned so that the line runs along y, from 0 to its length.
        const auto turned = [&](const Position& position) {
            const double east = course_.East(line.At, position);
            const double north = position.Lat - line.At.Lat;
            return Position{north * turnCos - east * turnSin, east * turnCos + north * turnSin};
        };
        int found = 0;
        Scan(range, {line.At, LineRadius}, [&](int t, int segment) {
            if (segment == 0 || !(course_.Distance(line.At, last_) < LineRadius)) return false;
            const auto [y1, x1] = turned(last_);
            const auto [y2, x2] = turned(walk_.On(segment, t + 1));
            if (x1 * x2 > 0 || x1 == x2) return false;
            const double crossing = y1 - (y2 - y1) / (x2 - x1) * x1;
            if (!(crossing >= 0 && crossing <= length)) return false;
            found = t;
            return !isStart;
        });
        return found;
    }

    /// The first second at which the boat, inside the circle, has passed through the outward bisector. The
    /// direction opposite to it, where the angle leaps between -180 and 180, does not count.
    int Rounding(const Entry& mark, SecondRange range) {
        double previous = NoAngle;
        int found = 0;
        Scan(range, {mark.At, RoundingRadius}, [&](int t, int) {
            if (!mark.HasCorner || !(course_.Distance(mark.At, last_) < RoundingRadius)) return false;
            const double angle = WrapDifference(mark.RoundingBearing - course_.Bearing(mark.At, last_));
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
    int NoLongerNearer(const Entry& mark, SecondRange range, int after) {
        double best = 5000;
        int found = 0;
        Scan(range, {mark.At, RoundingRadius}, [&](int t, int) {
            const double distance = course_.Distance(mark.At, last_);
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

    /// The first second of the nearest approach inside the small circle.
    int NearestApproach(const Entry& mark, SecondRange range) {
        double best = 1000;
        int found = 0;
        Scan(range, {mark.At, GapRadius}, [&](int t, int) {
            const double distance = course_.Distance(mark.At, last_);
            if (distance < GapRadius && distance < best) {
                best = distance;
                found = t;
            }
            return false;
        });
        return found;
    }

  private:
    /// The circle outside which a search does not look at the boat.
    struct Circle {
        Position Centre;
        double Radius = 0.0;
    };

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

    /// Moves through the range and has each second judged at which the boat may be in the circle, until
    /// `found` says so. Long stretches without a segment are skipped once the position has stood for a few
    /// seconds.
    template <class Found>
    void Scan(SecondRange range, const Circle& circle, Found found) {
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

    TrackWalk walk_;
    int steps_;
    const Course& course_;
    Position& last_;
};

using PassTimes = OneBased<int>;

void FindPasses(BoatSearch& search, const Course& course, int lastSecond, PassTimes& times) {
    for (int c = 1; c <= course.Count(); ++c) {
        const Entry& entry = course.Entries[c];
        const bool isStart = c == 1;
        const SecondRange range =
            isStart ? SecondRange{StartFrom, StartTo} : SecondRange{times[c - 1], lastSecond};
        if (entry.IsLine) {
            times[c] = search.LineCrossing(entry, range, isStart);
            continue;
        }
        times[c] = search.Rounding(entry, range);
        if (times[c] == 0)
            times[c] = search.NoLongerNearer(entry, range, isStart ? StartFrom - 1 : times[c - 1] + 1);
    }
}

/// True if an entry that a nearest approach could fill has no time; the last one stays as it is.
bool IsGap(const Course& course, const PassTimes& times, int c) {
    return times[c] == 0 && !course.Entries[c].IsLine;
}

bool HasGap(const Course& course, const PassTimes& times) {
    for (int c = 1; c < course.Count(); ++c)
        if (IsGap(course, times, c)) return true;
    return false;
}

void FillGaps(BoatSearch& search, const Course& course, PassTimes& times) {
    for (int c = 1; c < course.Count(); ++c) {
        if (!IsGap(course, times, c)) continue;
        const SecondRange range =
            c == 1 ? SecondRange{StartFrom, times[2]} : SecondRange{times[c - 1] + 1, times[c + 1] - 1};
        times[c] = search.NearestApproach(course.Entries[c], range);
    }
}

void FindFirstPasses(MarkPasses& passes) {
    int before = 0;
    for (int c = 1; c <= passes.FirstPassTime.Count(); ++c) {
        int& first = passes.FirstPassTime[c];
        for (const PassTimes& times : passes.MarkPassTime)
            if (times[c] > before && times[c] < first) first = times[c];
        before = first;
    }
}

/// Miles sailed up to second t; 0 where no segment holds it.
double DistanceAt(const Track& track, int t) {
    const int segment = FirstSegment(track, t);
    if (segment == 0) return 0;
    const double from = track.TrackTime[segment];
    const double miles = track.TrackDist[segment];
    return miles +
           (track.TrackDist[segment + 1] - miles) * ((t - from) / (track.TrackTime[segment + 1] - from));
}

bool HasSegment(const Tracks& tracks, int boat) {
    return tracks.Boats.Holds(boat) && tracks.Boats[boat].Count() > 1;
}

}  // namespace

void FindMarkPassTimes(const RaceControl& race, const Tracks& tracks, const EarthScale& scale,
                       MarkPasses& passes) {
    const Course course = PlaceCourse(race, scale);
    const int boats = race.Boats.Count();
    const int lastSecond = std::min(ReplaySpan(race), LongestRace);
    const int steps = SearchSteps / std::max(boats, 1);
    passes.MarkPassTime.Assign(boats, PassTimes(course.Count()));
    passes.FirstPassTime.Assign(course.Count(), NobodyPassed);
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
    FindFirstPasses(passes);
}

void ComputeMarkPassDist(const RaceControl& race, const Tracks& tracks, MarkPasses& passes) {
    passes.MarkPassDist.Assign(race.Boats.Count(), OneBased<double>(race.CourseOrder.Count()));
    for (int boat = 1; boat <= race.Boats.Count(); ++boat) {
        if (!HasSegment(tracks, boat)) continue;
        const Track& track = tracks.Boats[boat];
        const double atStart = DistanceAt(track, 0);
        for (int c = 1; c <= race.CourseOrder.Count(); ++c)
            passes.MarkPassDist[boat][c] =
                RoundDecimals(DistanceAt(track, PassTime(passes, boat, c)) - atStart, 3);
    }
}

void FindAllPasses(const RaceControl& race, const Tracks& tracks, const EarthScale& scale,
                   MarkPasses& passes) {
    FindMarkPassTimes(race, tracks, scale, passes);
    ComputeMarkPassDist(race, tracks, passes);
}

int FirstFinishTime(const MarkPasses& passes) {
    return passes.FirstPassTime.Empty() ? NobodyPassed : passes.FirstPassTime.Last();
}

int FinishTime(const MarkPasses& passes, int boat) {
    if (!passes.MarkPassTime.Holds(boat)) return 0;
    return PassTime(passes, boat, passes.MarkPassTime[boat].Count());
}

}  // namespace keelview
