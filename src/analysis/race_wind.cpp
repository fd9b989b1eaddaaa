#include "analysis/race_wind.h"

#include "analysis/wind_at.h"

namespace keelview {

RaceWind::RaceWind(const RaceControl& race, const WindData& wind, WindEstimate estimate)
    : wind_(wind), estimate_(std::move(estimate)) {
    race_.WindDirection = race.WindDirection;
    race_.MagVariation = race.MagVariation;
    race_.WindFileName = race.WindFileName;
    if (HasWindFile(race) && !wind.Empty())
        knowledge_ = WindKnowledge::Measured;
    else if (!estimate_.Samples.empty())
        knowledge_ = WindKnowledge::Estimated;
    else if (race.WindDirection != 0)
        knowledge_ = WindKnowledge::Typed;
}

std::optional<double> RaceWind::From(double t) const {
    if (knowledge_ == WindKnowledge::None) return {};
    if (knowledge_ == WindKnowledge::Estimated) return EstimatedWindAt(estimate_, t);
    return WindAt(race_, wind_, t).DirectionTrue;
}

std::optional<double> RaceWind::Speed(double t) const {
    if (knowledge_ != WindKnowledge::Measured) return {};
    const double speed = WindAt(race_, wind_, t).Speed;
    return speed > 0 ? std::optional(speed) : std::nullopt;
}

}  // namespace keelview
