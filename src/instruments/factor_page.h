#pragma once

#include "base/bilingual.h"
#include "session/app_state.h"
#include "session/race_disp.h"

namespace keelview {

/// Title of the column of boat names on the data page.
inline constexpr Text BoatColumnTitle{"   Boat Name", "　　　艇　名"};

/// Draws the factor analysis on the empty page PicTime: a row a boat, a column for the whole race and one
/// for each leg, and in each cell three bars that compare time, distance and speed with the column's best
/// boat. A course that is too long for it gets a sentence in its place.
void DrawFactorAnalysis(const AppState& app, RaceDisp& form);

}  // namespace keelview
