#pragma once

#include "session/app_state.h"
#include "session/race_disp.h"

namespace keelview {

/// Makes the per-boat controls of the race, gives them their places, colours and names, and ticks all
/// boats.
void CreateBoatControls(AppState& app, RaceDisp& form);

/// Removes all of them but the first; does nothing without a boat. To be called while BoatCount still has
/// the number that they were made for.
void RemoveBoatControls(AppState& app, RaceDisp& form);

/// Repaints the sprite of a boat (from 1) that sails on segment `point` of its track at time `time`: the
/// hull turned to its heading, the sail set by the wind, the ring where Maru is ticked or the pointer is on
/// its row. Gives the side of the sprite in pixels and notes in `app.fleet` whether it stands at true
/// scale.
double DrawBoatSprite(AppState& app, RaceDisp& form, int boat, int point, double time);

}  // namespace keelview
