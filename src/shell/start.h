#pragma once

#include <string>

#include "session/app_state.h"

namespace keelview {

/// How the start went.
enum class StartOutcome {
    ShowMenu,  ///< everything is settled for the full program, which starts at its menu
    ShowRace,  ///< everything is settled for one race, which is named in the state
    End        ///< the process ends: the installer was started
};

/// Settles everything that must stand before a form is shown: the program's folder, mode and language from
/// Ver.00 (the person's own language where it tells none), fonts, the screen's scale, the installer of a
/// CD-ROM, the base data and the question for the mode, and the first race where the program is to show
/// nothing else. A full program that is handed files is to edit and asks nothing.
StartOutcome SettleStart(AppState& app, Services& services, bool filesHanded = false);

/// The name of the race to show at the start of a browse-only copy: the field of racefile.st, else the
/// first race control file of the folder, else empty.
std::string FirstRace(const Settings& settings);

}  // namespace keelview
