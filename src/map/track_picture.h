#pragma once

#include <span>

#include "analysis/view.h"
#include "display/control.h"
#include "session/app_state.h"

namespace keelview {

/// The fixes of a boat's track from one to another; none where the last comes before the first.
struct TrackPiece {
    int Boat = 0;
    int First = 0;
    int Last = 0;
};

/// Draws pieces of tracks in a shade of their boats' colours that is readable on the sea; of their fixes as
/// many as it takes for lines that lie no more than a quarter of a pixel of the screen off.
void DrawTracks(Surface& picture, const AppState& app, std::span<const TrackPiece> pieces,
                const Projection& projection);

}  // namespace keelview
