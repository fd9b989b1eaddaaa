#pragma once

#include "analysis/view.h"
#include "display/canvas.h"
#include "session/app_state.h"

namespace keelview {

/// Marks the turns of the boat whose turns are asked for (Shown::Turns): a diamond where it tacked, a disk
/// where it gybed, a square for any other turn, each with the metres lost where they are known. Nothing
/// without such a boat.
void DrawTurnMarks(Canvas& map, const AppState& app, const Projection& projection);

}  // namespace keelview
