#include "analysis/wind_at.h"

#include <algorithm>

#include "base/angles.h"
#include "base/numbers.h"

namespace keelview {

int FindWindSample(const WindData& wind, double t) {
    const int count = wind.WindCount;
    if (count == 0 || t >= wind.WindTimes[count]) return count;
    if (!(t >= wind.WindTimes[1])) return 0;
    // WindTimes[low] <= t < WindTimes[high] holds all the way.
    int low = 1;
    int high = count;
    while (high - low > 1) {
        const int middle = low + (high - low) / 2;
        (wind.WindTimes[middle] <= t ? low : high) = middle;
    }
    return low;
}

WindSample WindAt(const RaceControl& race, const WindData& wind, double t) {
    if (race.WindFileName.empty() || wind.WindCount == 0)
        return {WrapDirection(race.WindDirection - race.MagVariation), WrapDirection(race.WindDirection),
                0};
    const int found = FindWindSample(wind, t);
    const int k = std::max(found, 1);
    double direction = wind.WindDirections[k];
    double speed = wind.WindSpeeds[k].value_or(0);
    if (found >= 1 && found < wind.WindCount) {
        const double from = wind.WindTimes[k];
        const double f = (t - from) / (wind.WindTimes[k + 1] - from);
        direction += WrapDifference(wind.WindDirections[k + 1] - direction) * f;
        speed += (wind.WindSpeeds[k + 1].value_or(0) - speed) * f;
    }
    WindSample sample;
    sample.DirectionMagnetic = WrapDirection(direction);
    sample.DirectionTrue = WrapDirection(sample.DirectionMagnetic + race.MagVariation);
    sample.Speed = RoundDecimals(speed, 1);
    return sample;
}

}  // namespace keelview
