#pragma once

#include "analysis/race_draft.h"
#include "analysis/race_finder.h"

namespace keelview {

/// A race that was worked out as it is proposed: with places on the earth, marks numbered in the order of
/// the course, and the reasons in words.
FoundRace RaceOf(const RaceDraft& draft, const SailedDay& day);

}  // namespace keelview
