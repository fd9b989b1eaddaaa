#include "analysis/mark_rounding.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "base/angles.h"
#include "base/numbers.h"
#include "racedata/track_derivation.h"

namespace keelview {

namespace {

constexpr double RoundingCircle = 200.0 / MetresPerNauticalMile;  // miles round a mark
constexpr double GapCircle = 100.0 / MetresPerNauticalMile;
constexpr double LineCircle = 0.3;       // miles round the first end of a line
constexpr double OutsideRay = 150.0;     // degrees off the bisector from which a change of sign means nothing
constexpr double NoAngleYet = 500.0;
constexpr int StartFrom = -120;          // seconds between which the start is searched
constexpr int StartTo = 360;

std::size_t At(int index) { return static_cast<std::size_t>(index); }

/// A place on the chart in minutes of arc.
struct Place {
    double Lat = 0.0;
    double Lon = 0.0;
};

/// One course entry: a mark, or a line from First to Second.
struct Entry {
    bool IsLine = false;
    Place First;
    Place Second;
    double LineLength = 0.0;       // miles
    double LineSin = 0.0;          // of the rotation that lays the line along the y axis
    double LineCos = 1.0;
    double RoundingBearing = 0.0;  // outward bisector of the course's corner, degrees
};

/// Seconds in which an entry is looked for, both ends included.
struct SearchRange {
    int From = 0;
    int To = 0;
};

class PassSearch {
  public:
    PassSearch(const RaceControl& race, const Tracks& tracks, const EarthScale& scale, MarkPasses& passes)
        : race_(race), tracks_(tracks), scale_(scale), passes_(passes) {}

    void Run() {
        DescribeCourse();
        for (int boat = 1; boat <= race_.BoatCount; ++boat) SearchBoat(boat);
        for (int boat = 1; boat <= race_.BoatCount; ++boat) FillGaps(boat);
        FindFirstTimes();
    }

  private:
    double East(const Place& from, const Place& to) const { return (to.Lon - from.Lon) * scale_.LonScale; }
    double Distance(const Place& a, const Place& b) const {
        const double east = East(a, b);
        const double north = b.Lat - a.Lat;
        return std::sqrt(north * north + east * east);
    }
    double Bearing(const Place& from, const Place& to) const {
        return BearingOf(East(from, to), to.Lat - from.Lat);
    }

    Place MarkPlace(int mark) const {
        if (mark < 1 || mark > race_.MarkCount) return {};
        return {race_.MarkLat[At(mark)], race_.MarkLon[At(mark)]};
    }

    Entry DescribeEntry(const std::string& name) const {
        const CourseKey key = ParseCourseKey(name);
        Entry entry;
        entry.IsLine = key.IsLine;
        if (!key.IsLine) {
            entry.First = MarkPlace(key.Number);
            return entry;
        }
        if (key.Number >= 1 && key.Number <= race_.LineCount) {
            const std::size_t line = At(key.Number);
            entry.First = {race_.LineLat1[line], race_.LineLon1[line]};
            entry.Second = {race_.LineLat2[line], race_.LineLon2[line]};
        }
        entry.LineLength = Distance(entry.First, entry.Second);
        const double rotation = -WrapDifference(Bearing(entry.First, entry.Second)) * DegToRad;
        entry.LineSin = std::sin(rotation);
        entry.LineCos = std::cos(rotation);
        return entry;
    }

    void DescribeCourse() {
        entries_.assign(At(race_.CourseCount) + 1, {});
        for (int c = 1; c <= race_.CourseCount; ++c) entries_[At(c)] = DescribeEntry(race_.CourseOrder[At(c)]);
        for (int c = 2; c < race_.CourseCount; ++c) {
            const Place& here = entries_[At(c)].First;
            double back = Bearing(entries_[At(c - 1)].First, here) + 180;
            if (back > 360) back -= 360;
            const double corner = WrapDifference(Bearing(here, entries_[At(c + 1)].First) - back);
            double bisector = back + corner / 2 + 180;
            if (bisector > 360) bisector -= 360;
            entries_[At(c)].RoundingBearing = bisector;
        }
    }

    /// The boat's position at a second; the last one found stands where its track has none. `segment_` is the
    /// segment that holds the second, 0 when none does.
    void LookUp(int boat, int t) {
        const auto& times = tracks_.TrackTime[At(boat)];
        const int count = tracks_.TrackPointCount[At(boat)];
        segment_ = 0;
        if (count < 2) return;
        // Behind the last point nothing can be found, so that the walk there need not be made each second.
        if (ascending_ && t >= times[At(count)]) return;
        for (int i = hint_; i < count; ++i) {
            if (ascending_ && times[At(i)] > t) return;
            if (!(times[At(i)] <= t && times[At(i) + 1] > t)) continue;
            hint_ = segment_ = i;
            position_ = PlaceOn(boat, i, t);
            return;
        }
    }

    Place PlaceOn(int boat, int segment, int t) const {
        const auto& times = tracks_.TrackTime[At(boat)];
        const auto& lat = tracks_.TrackLat[At(boat)];
        const auto& lon = tracks_.TrackLon[At(boat)];
        const std::size_t i = At(segment);
        const double f = static_cast<double>(t - times[i]) / (times[i + 1] - times[i]);
        return {lat[i] + (lat[i + 1] - lat[i]) * f, lon[i] + (lon[i + 1] - lon[i]) * f};
    }

    void SearchBoat(int boat) {
        const auto& times = tracks_.TrackTime[At(boat)];
        ascending_ = std::is_sorted(times.begin() + 1, times.end());
        for (int c = 1; c <= race_.CourseCount; ++c) {
            int& found = passes_.MarkPassTime[At(boat)][At(c)];
            found = 0;
            if (tracks_.TrackPointCount[At(boat)] < 2) continue;
            const SearchRange range =
                c == 1 ? SearchRange{StartFrom, StartTo}
                       : SearchRange{passes_.MarkPassTime[At(boat)][At(c - 1)], race_.ReplaySpan};
            if (entries_[At(c)].IsLine) {
                found = SearchLine(boat, c, range);
                continue;
            }
            if (c < race_.CourseCount) found = SearchRounding(boat, c, range);
            if (found == 0) found = SearchNearest(boat, c, range);
        }
    }

    /// The first crossing of a line; of the first entry, the start, the last one.
    int SearchLine(int boat, int c, const SearchRange& range) {
        hint_ = 1;
        int found = 0;
        for (int t = range.From; t <= range.To; ++t) {
            LookUp(boat, t);
            if (!CrossesLine(boat, entries_[At(c)], t)) continue;
            found = t;
            if (c > 1) break;
        }
        return found;
    }

    bool CrossesLine(int boat, const Entry& line, int t) const {
        if (segment_ == 0 || Distance(line.First, position_) >= LineCircle) return false;
        const Place next = PlaceOn(boat, segment_, t + 1);
        const auto along = [&](const Place& at, double& x, double& y) {
            const double east = East(line.First, at);
            const double north = at.Lat - line.First.Lat;
            x = east * line.LineCos + north * line.LineSin;
            y = north * line.LineCos - east * line.LineSin;
        };
        double x1 = 0;
        double y1 = 0;
        double x2 = 0;
        double y2 = 0;
        along(position_, x1, y1);
        along(next, x2, y2);
        if (x1 * x2 > 0 || x1 == x2) return false;
        const double crossing = y1 - (y2 - y1) / (x2 - x1) * x1;
        return crossing >= 0 && crossing <= line.LineLength;
    }

    /// The second in which the boat passes through the outward bisector of the corner.
    int SearchRounding(int boat, int c, const SearchRange& range) {
        const Entry& mark = entries_[At(c)];
        hint_ = 1;
        double previous = NoAngleYet;
        for (int t = range.From; t <= range.To; ++t) {
            LookUp(boat, t);
            if (Distance(mark.First, position_) >= RoundingCircle) continue;
            const double a = WrapDifference(mark.RoundingBearing - Bearing(mark.First, position_));
            if (std::abs(a) < OutsideRay && previous < 360 && previous * a <= 0) return t;
            previous = a;
        }
        return 0;
    }

    /// The second in which the boat, near the mark, gets no nearer to it.
    int SearchNearest(int boat, int c, const SearchRange& range) {
        hint_ = 1;
        double best = 5000;
        for (int t = range.From; t <= range.To; ++t) {
            LookUp(boat, t);
            const double d = Distance(entries_[At(c)].First, position_);
            if (d >= RoundingCircle) continue;
            if (d < best) {
                best = d;
                continue;
            }
            if (c == 1 || t > passes_.MarkPassTime[At(boat)][At(c - 1)] + 1) return t;
        }
        return 0;
    }

    /// A missing mark between two known entries gets the time of the nearest approach.
    void FillGaps(int boat) {
        auto& times = passes_.MarkPassTime[At(boat)];
        if (tracks_.TrackPointCount[At(boat)] < 2) return;
        const auto& track = tracks_.TrackTime[At(boat)];
        ascending_ = std::is_sorted(track.begin() + 1, track.end());
        for (int c = 1; c < race_.CourseCount; ++c) {
            if (times[At(c)] != 0 || entries_[At(c)].IsLine) continue;
            const int from = c == 1 ? StartFrom : times[At(c - 1)] + 1;
            const int to = c == 1 ? times[2] : times[At(c + 1)] - 1;
            hint_ = 1;
            double best = 1000;
            for (int t = from; t <= to; ++t) {
                LookUp(boat, t);
                const double d = Distance(entries_[At(c)].First, position_);
                if (d >= GapCircle || d >= best) continue;
                best = d;
                times[At(c)] = t;
            }
        }
    }

    void FindFirstTimes() {
        for (int c = 1; c <= race_.CourseCount; ++c) {
            int first = NobodyPassed;
            for (int boat = 1; boat <= race_.BoatCount; ++boat) {
                const int time = passes_.MarkPassTime[At(boat)][At(c)];
                const bool afterPrevious = c == 1 || time > passes_.FirstPassTime[At(c - 1)];
                if (time > 0 && time < first && afterPrevious) first = time;
            }
            passes_.FirstPassTime[At(c)] = first;
        }
    }

    const RaceControl& race_;
    const Tracks& tracks_;
    const EarthScale& scale_;
    MarkPasses& passes_;
    std::vector<Entry> entries_;
    Place position_;         // the last found one, kept between lookups, scans and boats
    int hint_ = 1;           // the segment at which the next lookup begins
    int segment_ = 0;        // the segment of the last lookup
    bool ascending_ = true;  // the times of the present boat ascend
};

/// Miles sailed at a time; 0 where no segment holds it.
double DistanceSailed(const Tracks& tracks, int boat, int t) {
    const auto& times = tracks.TrackTime[At(boat)];
    const auto& dist = tracks.TrackDist[At(boat)];
    for (int k = 1; k < tracks.TrackPointCount[At(boat)]; ++k) {
        const std::size_t i = At(k);
        if (!(times[i] <= t && times[i + 1] > t)) continue;
        return dist[i] + (dist[i + 1] - dist[i]) * (t - times[i]) / (times[i + 1] - times[i]);
    }
    return 0;
}

}  // namespace

void FindMarkPassTimes(const RaceControl& race, const Tracks& tracks, const EarthScale& scale,
                       MarkPasses& passes) {
    PassSearch(race, tracks, scale, passes).Run();
}

void ComputeMarkPassDist(const RaceControl& race, const Tracks& tracks, MarkPasses& passes) {
    for (int boat = 1; boat <= race.BoatCount; ++boat) {
        const double base = DistanceSailed(tracks, boat, 0);
        for (int c = 1; c <= race.CourseCount; ++c) {
            const int time = passes.MarkPassTime[At(boat)][At(c)];
            passes.MarkPassDist[At(boat)][At(c)] =
                RoundDecimals(DistanceSailed(tracks, boat, time) - base, 3);
        }
    }
}

}  // namespace keelview
