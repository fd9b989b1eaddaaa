#include "session/racing.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "analysis/track_at.h"

namespace keelview {

namespace {

constexpr double FinishSeconds = 300.0;  // that a finisher is still followed
constexpr double StandSeconds = 300.0;   // looked at on each side of the moment
constexpr double StandStep = 60.0;       // seconds between two looks
constexpr double StandMetres = 50.0;

bool HasFinished(const MarkPasses& passes, int boat, double time) {
    const std::optional<int> finish = FinishTime(passes, boat);
    return finish && time > *finish + FinishSeconds;
}

bool NeverStarted(const MarkPasses& passes, int boat, double time) {
    if (passes.FirstPassTime.Empty()) return false;
    const std::optional<int> first = passes.FirstPassTime[1];
    if (!first || time < *first) return false;
    for (int entry = 1; entry <= passes.FirstPassTime.Count(); ++entry)
        if (PassTime(passes, boat, entry)) return false;
    return true;
}

/// The looks go from the outermost inward: one or two of them tell that a boat sails.
bool IsAshore(const Track& track, const EarthScale& scale, double time) {
    if (track.Count() < 2) return false;
    const double from = std::max(track.TrackTime[1], time - StandSeconds);
    const double to = std::min(track.TrackTime.Last(), time + StandSeconds);
    if (to - from < StandSeconds) return false;
    const auto place = [&](double at) {
        const int segment = std::max(1, FindSegment(track, std::min(at, to - 1)));
        return PositionOn(track, segment, std::min(at, to - 1));
    };
    const Position here = place(time);
    const auto near = [&](double at) {
        const Position there = place(std::clamp(at, from, to));
        return std::hypot((there.Lat - here.Lat) * scale.MetresPerLatMinute,
                          (there.Lon - here.Lon) * scale.MetresPerLonMinute) < StandMetres;
    };
    for (double away = StandSeconds; away > 0; away -= StandStep)
        if (!near(time - away) || !near(time + away)) return false;
    return true;
}

}  // namespace

bool IsRacing(const RaceNumbers& numbers, int boat, double time) {
    return !HasFinished(numbers.passes, boat, time) && !NeverStarted(numbers.passes, boat, time) &&
           !IsAshore(numbers.tracks.Boats[boat], numbers.scale, time);
}

}  // namespace keelview
