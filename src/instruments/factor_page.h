#pragma once

#include "analysis/mark_rounding.h"
#include "instruments/data_page.h"
#include "session/race_disp.h"

namespace keelview {

/// Draws the factor analysis on the empty page PicTime: a row a boat, a column for the whole race and one
/// for each leg, and in each cell three bars that compare time, distance and speed with the column's best
/// boat. A course that is too long for it gets a sentence in its place.
void DrawFactorAnalysis(const RaceControl& race, const MarkPasses& passes, bool useEnglish, RaceDisp& form);

/// Top of a boat's row.
double FactorRowTop(int boat);

/// The head of the rows, and what it says, drawn at a y of a surface.
PageHead FactorHead(const RaceControl& race);
void DrawFactorHead(const RaceControl& race, bool useEnglish, double y, Surface& page);

/// Height of the page that holds the rows of all boats, pixels.
double FactorPageHeight(const RaceControl& race);

}  // namespace keelview
