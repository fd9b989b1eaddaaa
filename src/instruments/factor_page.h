#pragma once

#include <optional>
#include <string>

#include "analysis/leg_statistics.h"
#include "base/point.h"
#include "instruments/data_page.h"
#include "session/race_disp.h"

namespace keelview {

inline constexpr double FactorRowPitch = 36.0;  ///< three bars are higher than a line of a table
inline constexpr double FactorHeadBottom = 125.0;

/// Draws the factor analysis on the empty page PicTime, as it is scrolled: a row a boat, a column for the
/// whole race and one for each leg, and in each cell three bars that compare time, distance and speed with
/// the column's best boat. Legend, heads and names stand still. A course that is too long for it gets a
/// sentence in its place.
void DrawFactorAnalysis(const RaceControl& race, const std::optional<FactorAnalysis>& analysis,
                        bool useEnglish, const PageView& view, RaceDisp& form);

/// Width of the page in a place of a width, pixels.
double FactorPageWidth(const RaceControl& race, double placeWidth);

/// The numbers of the cell that a point lies in, in per cent of the best boat's; empty where there are
/// none.
std::string FactorText(const RaceControl& race, const std::optional<FactorAnalysis>& analysis,
                       bool useEnglish, const PageView& view, const Point& at);

}  // namespace keelview
