#include "analysis/nearest_entry.h"

#include <cmath>

namespace keelview {

namespace {

constexpr double GripMinutes = 0.1;  // at zoom 1; the grip grows with the picture but not with the zoom

}  // namespace

std::optional<CourseKey> NearestEntry(const RaceControl& race, const EarthScale& scale, double zoomFactor,
                                      const Position& at) {
    double nearest = GripMinutes / zoomFactor;
    std::optional<CourseKey> entry;
    const auto look = [&](const Position& place, CourseKey candidate) {
        const double distance = std::hypot(at.Lat - place.Lat, (at.Lon - place.Lon) * scale.LonScale);
        if (!(distance < nearest)) return;
        nearest = distance;
        entry = candidate;
    };
    for (int mark = 1; mark <= race.Marks.Count(); ++mark)
        look(race.Marks[mark].At(), {.IsLine = false, .Number = mark});
    for (int line = 1; line <= race.Lines.Count(); ++line) {
        look(race.Lines[line].FirstEnd(), {.IsLine = true, .Number = line});
        look(race.Lines[line].SecondEnd(), {.IsLine = true, .Number = line});
    }
    return entry;
}

}  // namespace keelview
