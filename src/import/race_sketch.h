#pragma once

#include <QPainter>
#include <string>

#include "analysis/race_finder.h"
#include "analysis/view.h"

namespace keelview {

/// Draws a race that was found as far as it is known: the way along its course, lines, marks and gates with
/// their names, and `start`, the time of the gun, beside the name of the start line.
void DrawRaceSketch(QPainter& painter, const FoundRace& race, const std::string& start,
                    const Projection& projection);

/// The pixel of a position; longitudes may be counted from anywhere.
QPointF PixelOf(const Projection& projection, const Position& at);

}  // namespace keelview
