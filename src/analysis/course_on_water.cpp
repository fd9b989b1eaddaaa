#include "analysis/course_on_water.h"

#include <algorithm>
#include <string>

namespace keelview {

namespace {

PlacedEntry PlaceEntry(const RaceControl& race, const std::string& text) {
    const CourseKey key = ParseCourseKey(text);
    PlacedEntry entry;
    entry.IsLine = key.IsLine;
    if (key.IsLine && race.Lines.Holds(key.Number)) {
        entry.At = race.Lines[key.Number].FirstEnd();
        entry.SecondEnd = race.Lines[key.Number].SecondEnd();
    } else if (!key.IsLine && race.Marks.Holds(key.Number)) {
        entry.At = race.Marks[key.Number].At();
        entry.IsGate = race.Marks.Holds(key.OtherMark);
        if (entry.IsGate) entry.SecondEnd = race.Marks[key.OtherMark].At();
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

}  // namespace

CourseOnWater PlaceCourse(const RaceControl& race, const EarthScale& scale) {
    CourseOnWater course;
    course.LonScale = scale.LonScale;
    for (const std::string& key : race.CourseOrder) course.Entries.Add(PlaceEntry(race, key));
    for (int c = 1; c < course.Count(); ++c) {
        PlacedEntry& entry = course.Entries[c];
        entry.HasCorner = true;
        if (c == 1) continue;
        const Position here = course.LegEnd(entry);
        entry.RoundingBearing = OutwardBisector(course.Bearing(course.LegEnd(course.Entries[c - 1]), here),
                                                course.Bearing(here, course.LegEnd(course.Entries[c + 1])));
    }
    return course;
}

OneBased<PlacedEntry> MarksOf(const PlacedEntry& entry) {
    OneBased<PlacedEntry> marks{entry};
    if (!entry.IsGate) return marks;
    marks.Add(entry);
    marks[2].At = entry.SecondEnd;
    for (PlacedEntry& mark : marks) {
        mark.IsGate = false;
        mark.SecondEnd = {};
    }
    return marks;
}

std::optional<Position> MiddleOf(const RaceControl& race, const CourseKey& key) {
    const auto between = [](const Position& a, const Position& b) {
        return Position{(a.Lat + b.Lat) / 2, (a.Lon + b.Lon) / 2};
    };
    if (key.IsLine && race.Lines.Holds(key.Number))
        return between(race.Lines[key.Number].FirstEnd(), race.Lines[key.Number].SecondEnd());
    if (key.IsLine || !race.Marks.Holds(key.Number)) return {};
    const Position at = race.Marks[key.Number].At();
    return race.Marks.Holds(key.OtherMark) ? between(at, race.Marks[key.OtherMark].At()) : at;
}

double LineRadius(const CourseOnWater& course, const PlacedEntry& line) {
    constexpr double leastRadius = 0.3;
    constexpr double beyondTheEnd = 0.05;
    return std::max(leastRadius, course.LengthOf(line) + beyondTheEnd);
}

int LastSearchedSecond(const RaceControl& race) {
    return std::min(ReplaySpan(race), LongestRace);
}

}  // namespace keelview
