#pragma once

#include <optional>
#include <utility>
#include <vector>

#include "analysis/plane.h"
#include "analysis/wind_estimate.h"
#include "racedata/race_control.h"
#include "racedata/wind_file.h"

namespace keelview {

/// What is known of a race's wind.
enum class WindKnowledge {
    None,
    Typed,      ///< the one direction of the race control file; 0 there is taken for none
    Estimated,  ///< from the turns of the boats
    Measured    ///< from the wind file
};

/// The wind by the best that is known of it: a measured wind always wins, then one that is estimated, then
/// the typed one.
class RaceWind {
  public:
    RaceWind() = default;
    RaceWind(const RaceControl& race, const WindData& wind, WindEstimate estimate);

    WindKnowledge Knowledge() const { return knowledge_; }
    const WindEstimate& Estimate() const { return estimate_; }

    /// Where it comes from, degrees true; nothing where nothing is known.
    std::optional<double> From(double t) const;

    /// The standard deviation of that, degrees, where it is estimated; else 0.
    double FromSigma(double t) const;

    /// The way of length 1 to where it comes from. Whole seconds are kept, and come at a fraction of the
    /// cost.
    std::optional<Way> Upwind(double t) const;

    /// Its speed as in the wind file; nothing where none is measured.
    std::optional<double> Speed(double t) const;

  private:
    void KeepSeconds();
    double KnownFrom(double t) const;

    RaceControl race_;  // what is told there of the wind, and no more
    WindData wind_;
    WindEstimate estimate_;
    WindKnowledge knowledge_ = WindKnowledge::None;
    std::vector<Way> upwind_;  // of each second from 0 on
};

}  // namespace keelview
