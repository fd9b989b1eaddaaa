#pragma once

#include "analysis/mark_rounding.h"
#include "session/race_disp.h"

namespace keelview {

/// Draws the factor analysis on the empty page PicTime: a row a boat, a column for the whole race and one
/// for each leg, and in each cell three bars that compare time, distance and speed with the column's best
/// boat. A course that is too long for it gets a sentence in its place.
void DrawFactorAnalysis(const RaceControl& race, const MarkPasses& passes, bool useEnglish, RaceDisp& form);

}  // namespace keelview
