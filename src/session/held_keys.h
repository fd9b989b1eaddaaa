#pragma once

#include "display/control.h"
#include "display/form.h"
#include "session/race_disp.h"

namespace keelview {

/// Shift is held while the mouse does something: seen by the form as a key, or told with the mouse event.
inline bool ShiftHeld(const RaceDisp& form, const MouseEvent& event) {
    return form.HeldKey == ShiftKey || event.Shift;
}

}  // namespace keelview
