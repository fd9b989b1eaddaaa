#include "analysis/wind_at.h"

#include <algorithm>

#include "analysis/last_at_or_before.h"
#include "base/angles.h"
#include "base/numbers.h"

namespace keelview {

namespace {

/// The moment t of the way from one sample to the next, in which the direction turns by `turn` degrees.
WindSample OnTheWay(const WindSample& from, const WindSample& to, double turn, double t) {
    const double f = (t - from.WindTime) / (static_cast<double>(to.WindTime) - from.WindTime);
    const double speed = from.WindSpeed.value_or(0);
    return {.WindTime = FloorToInt(t),
            .WindSpeed = speed + (to.WindSpeed.value_or(0) - speed) * f,
            .WindDirection = from.WindDirection + turn * f};
}

}  // namespace

int FindWindSample(const WindData& wind, double t) {
    return LastAtOrBefore(wind, t, &WindSample::WindTime);
}

WindSample BetweenSamples(const WindData& wind, int sample, double t) {
    const WindSample& from = wind[sample];
    const WindSample& to = wind[sample + 1];
    return OnTheWay(from, to, TurnBetween(from.WindDirection, to.WindDirection), t);
}

Wind WindAt(const RaceControl& race, const WindData& wind, double t) {
    if (!HasWindFile(race) || wind.Empty())
        return {WrapDirection(race.WindDirection - race.MagVariation), WrapDirection(race.WindDirection),
                0};
    const int found = FindWindSample(wind, t);
    WindSample sample = wind[std::max(found, 1)];
    // A direction far off, which only a faulty file holds, is told here by one test each way, as ever.
    if (found >= 1 && found < wind.Count())
        sample = OnTheWay(sample, wind[found + 1],
                          WrapDifference(wind[found + 1].WindDirection - sample.WindDirection), t);
    Wind now;
    now.DirectionMagnetic = WrapDirection(sample.WindDirection);
    now.DirectionTrue = WrapDirection(now.DirectionMagnetic + race.MagVariation);
    now.Speed = RoundDecimals(sample.WindSpeed.value_or(0), 1);
    return now;
}

}  // namespace keelview
