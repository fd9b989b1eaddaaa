#include "analysis/race_wind.h"

#include <algorithm>
#include <cmath>

#include "analysis/wind_at.h"

namespace keelview {

namespace {

constexpr double MostKept = 100'000;  // seconds

}  // namespace

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
    KeepSeconds();
}

void RaceWind::KeepSeconds() {
    double last = 0.0;  // it blows on as then
    if (knowledge_ == WindKnowledge::None) return;
    if (knowledge_ == WindKnowledge::Measured) last = wind_.Last().WindTime;
    if (knowledge_ == WindKnowledge::Estimated) last = estimate_.Samples.back().Time;
    for (double t = 0; t <= std::min(last, MostKept); ++t) upwind_.push_back(Towards(KnownFrom(t)));
}

std::optional<Way> RaceWind::Upwind(double t) const {
    if (knowledge_ == WindKnowledge::None) return {};
    const bool kept = t >= 0 && std::floor(t) == t && t < static_cast<double>(upwind_.size());
    return kept ? upwind_[static_cast<std::size_t>(t)] : Towards(KnownFrom(t));
}

std::optional<double> RaceWind::From(double t) const {
    return knowledge_ == WindKnowledge::None ? std::nullopt : std::optional(KnownFrom(t));
}

double RaceWind::FromSigma(double t) const {
    return knowledge_ == WindKnowledge::Estimated ? EstimatedWindSigmaAt(estimate_, t) : 0.0;
}

/// Where something is known.
double RaceWind::KnownFrom(double t) const {
    return knowledge_ == WindKnowledge::Estimated ? EstimatedWindAt(estimate_, t)
                                                  : WindAt(race_, wind_, t).DirectionTrue;
}

std::optional<double> RaceWind::Speed(double t) const {
    if (knowledge_ != WindKnowledge::Measured) return {};
    const double speed = WindAt(race_, wind_, t).Speed;
    return speed > 0 ? std::optional(speed) : std::nullopt;
}

}  // namespace keelview
