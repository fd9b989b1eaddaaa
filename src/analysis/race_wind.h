#pragma once

#include <optional>
#include <utility>

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

/// The direction of the wind by the best that is known of it: a measured wind always wins, then one that is
/// estimated, then the typed one. Race and wind must outlive it.
class RaceWind {
  public:
    RaceWind(const RaceControl& race, const WindData& wind, WindEstimate estimate);

    WindKnowledge Knowledge() const { return knowledge_; }
    const WindEstimate& Estimate() const { return estimate_; }

    /// Where it comes from, degrees true; nothing where nothing is known.
    std::optional<double> From(double t) const;

  private:
    const RaceControl& race_;
    const WindData& wind_;
    WindEstimate estimate_;
    WindKnowledge knowledge_ = WindKnowledge::None;
};

}  // namespace keelview
