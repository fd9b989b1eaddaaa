#pragma once

#include "session/app_state.h"

namespace keelview {

/// Plays the start gun of the program's folder without waiting, if it is there.
void PlayGun(const Settings& settings, Platform& platform);

}  // namespace keelview
