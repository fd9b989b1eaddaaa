#pragma once

#include "analysis/view.h"
#include "display/control.h"
#include "session/app_state.h"

namespace keelview {

/// Draws a boat's track in its colour, from one fix to another, and of the fixes between them as many as it
/// takes for a line that lies no more than a quarter of a pixel of the screen off.
void DrawTrackLine(Surface& picture, const AppState& app, int boat, int first, int last,
                   const Projection& projection);

}  // namespace keelview
