#pragma once

#include "analysis/boat_motion.h"
#include "analysis/manoeuvres.h"
#include "analysis/race_numbers.h"
#include "analysis/race_wind.h"
#include "analysis/wind_estimate.h"

namespace keelview {

/// What a race's answers to a coach rest on, worked out once. The race must outlive it.
struct CoachNumbers {
    const RaceNumbers& Race;
    FleetMotion Motion;
    FleetTurns Turns;
    RaceWind Wind;

    explicit CoachNumbers(const RaceNumbers& numbers)
        : Race(numbers),
          Motion(numbers.tracks, numbers.scale),
          Turns(FindFleetTurns(Motion)),
          Wind(numbers.race, numbers.wind, EstimateWind(Motion, Turns, numbers.passes)) {}
};

}  // namespace keelview
