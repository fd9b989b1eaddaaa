#pragma once

#include "analysis/coach_answers.h"
#include "support/simulated_fleet.h"

namespace keelview {

/// A simulated fleet as a race that was loaded.
inline RaceNumbers NumbersOf(const SimulatedFleet& fleet) {
    RaceNumbers numbers;
    numbers.race = fleet.Race;
    numbers.tracks = fleet.Boats;
    numbers.scale = fleet.Scale;
    numbers.wind = fleet.Wind;
    numbers.passes = fleet.Passes;
    return numbers;
}

/// All answers of a simulated fleet.
inline CoachAnswers AnswersOf(const SimulatedFleet& fleet) {
    return *AnswerCoach(NumbersOf(fleet));
}

}  // namespace keelview
