#pragma once

#include <cmath>
#include <optional>

#include "base/angles.h"
#include "base/one_based.h"
#include "base/position.h"
#include "racedata/earth_scale.h"
#include "racedata/race_control.h"

namespace keelview {

/// A distance in metres in minutes of arc; a minute counts as a nautical mile here.
constexpr double MinutesOf(double metres) {
    return metres / MetresPerNauticalMile;
}

/// Inside this circle round a mark a boat can round it, minutes of arc.
inline constexpr double RoundingRadius = MinutesOf(200);

inline constexpr int StartFrom = -120;  ///< seconds between which the start is looked for
inline constexpr int StartTo = 360;

/// A course entry on the water.
struct PlacedEntry {
    bool IsLine = false;
    bool IsGate = false;
    Position At;                   ///< the mark, the first end of the line, or the first mark of the gate
    Position SecondEnd;            ///< of the line, or the second mark of the gate
    double RoundingBearing = 0.0;  ///< outward bisector of the course's corner, degrees
    bool HasCorner = false;        ///< another leg begins here

    friend bool operator==(const PlacedEntry&, const PlacedEntry&) = default;
};

/// The course of a race with its places. Distances are minutes of arc of latitude, bearings degrees.
struct CourseOnWater {
    double LonScale = 1.0;
    OneBased<PlacedEntry> Entries;

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
    /// Where legs to and from an entry end: between the marks of a gate, else where it lies.
    Position LegEnd(const PlacedEntry& entry) const {
        if (!entry.IsGate) return entry.At;
        return {(entry.At.Lat + entry.SecondEnd.Lat) / 2, (entry.At.Lon + entry.SecondEnd.Lon) / 2};
    }
    double LengthOf(const PlacedEntry& line) const { return Distance(line.At, line.SecondEnd); }
};

/// The marks of an entry that is no line, each as an entry of its own with the corner of the whole: one, or
/// the two of a gate, which is rounded when either is.
OneBased<PlacedEntry> MarksOf(const PlacedEntry& entry);

/// The middle of what a key names: a mark, the middle of a line or of a gate. Nothing where the race has no
/// such thing.
std::optional<Position> MiddleOf(const RaceControl& race, const CourseKey& key);

/// A straight line over the water, from a place on along a bearing; it goes on behind the place too.
class Axis {
  public:
    Axis(const CourseOnWater& course, const Position& from, double bearing)
        : course_(course),
          from_(from),
          sin_(std::sin(-WrapDifference(bearing) * DegToRad)),
          cos_(std::cos(-WrapDifference(bearing) * DegToRad)) {}

    /// Minutes of arc along the axis, below 0 behind its beginning, at which the straight way from one
    /// place to another meets it; nothing where it does not, or where the way keeps its distance to the
    /// axis. A way that only begins or ends on the axis meets it.
    std::optional<double> MetBy(const Position& begin, const Position& end) const {
        const auto [along1, aside1] = Turned(begin);
        const auto [along2, aside2] = Turned(end);
        if (aside1 * aside2 > 0 || aside1 == aside2) return {};
        return along1 - (along2 - along1) / (aside2 - aside1) * aside1;
    }

  private:
    struct Place {
        double Along;
        double Aside;
    };
    Place Turned(const Position& position) const {
        const double east = course_.East(from_, position);
        const double north = position.Lat - from_.Lat;
        return {north * cos_ - east * sin_, east * cos_ + north * sin_};
    }

    const CourseOnWater& course_;
    Position from_;
    double sin_;
    double cos_;
};

/// The course of a race; an entry that names no mark or line of it lies at 0, 0. A course that begins with
/// a mark has that mark rounded through true north.
CourseOnWater PlaceCourse(const RaceControl& race, const EarthScale& scale);

/// The circle round a line's first end in which crossings are looked for, minutes of arc: 0.3, and for a
/// longer line its whole length and a little more.
double LineRadius(const CourseOnWater& course, const PlacedEntry& line);

/// The last second that a search for roundings looks at.
int LastSearchedSecond(const RaceControl& race);

}  // namespace keelview
