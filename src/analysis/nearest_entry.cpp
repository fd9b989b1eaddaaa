#include "analysis/nearest_entry.h"

#include <cmath>

namespace keelview {

namespace {

constexpr double GripMinutes = 0.1;  // at zoom 1; the grip grows with the picture but not with the zoom

}  // namespace

std::optional<CourseKey> NearestEntry(const RaceControl& race, const EarthScale& scale, double zoomFactor,
                                      const MapPosition& at) {
    double nearest = GripMinutes / zoomFactor;
    std::optional<CourseKey> entry;
    const auto look = [&](double lat, double lon, CourseKey candidate) {
        const double distance = std::hypot(at.Lat - lat, (at.Lon - lon) * scale.LonScale);
        if (!(distance < nearest)) return;
        nearest = distance;
        entry = candidate;
    };
    for (int mark = 1; mark <= race.MarkCount; ++mark)
        look(race.MarkLat[mark], race.MarkLon[mark], {.IsLine = false, .Number = mark});
    for (int line = 1; line <= race.LineCount; ++line) {
        look(race.LineLat1[line], race.LineLon1[line], {.IsLine = true, .Number = line});
        look(race.LineLat2[line], race.LineLon2[line], {.IsLine = true, .Number = line});
    }
    return entry;
}

}  // namespace keelview
