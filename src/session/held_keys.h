#pragma once

#include "display/control.h"
#include "display/form.h"
#include "session/app_state.h"

namespace keelview {

/// Shift is held while the mouse does something: seen by the form as a key, or told with the mouse event.
inline bool ShiftHeld(const DisplayState& display, const MouseEvent& event) {
    return display.HeldKey == ShiftKey || event.Shift;
}

}  // namespace keelview
