#pragma once

#include "racedata/gps_track.h"

namespace keelview {

/// Takes out of a track each single fix that no boat can have been at: more than 100 knots from the fix
/// before it and to the one behind it, while the way between these two needs no more. The first and the
/// last fix, and those among times that do not rise, stay. Returns how many were taken out. Speeds are
/// those on a sphere with a mile a minute of arc, as good as they need be here.
int DropImpossibleFixes(Track& track);

}  // namespace keelview
