#pragma once

#include "analysis/view.h"
#include "display/canvas.h"
#include "racedata/coastline.h"

namespace keelview {

/// Draws the coast on a square picture, `side` high in the canvas's scale, with the canvas's pen. A stretch
/// between two points shows where one of its ends lies inside; one that only crosses the picture does not.
void DrawCoast(Canvas& picture, const Coast& coast, const Projection& projection, double side, Colour ink);

}  // namespace keelview
