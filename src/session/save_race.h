#pragma once

#include <string>

#include "session/app_state.h"

namespace keelview {

/// Writes the open race to its race control file and turns the map's top to north or the wind, as the race
/// says. Does nothing with an empty RaceFileName. A file that cannot be written leaves the old one whole;
/// the person is told once per race and the program goes on. True if nothing is left unsaved.
bool SaveRace(AppState& app, Services& services);

/// Writes the open race under the name that the person gave, with ".txt" behind it unless it is there; from
/// then on that file is the open one. A failure is told each time, and the race keeps its name.
bool SaveRaceAs(AppState& app, Services& services, const std::string& name);

/// Plays the start gun of the program's folder without waiting, if it is there.
void PlayGun(const AppState& app, Services& services);

/// Opens a document or an address with the system's program for it; says in a message box what went wrong.
/// True if it was opened.
bool OpenDocument(const AppState& app, Services& services, const std::string& target);

}  // namespace keelview
