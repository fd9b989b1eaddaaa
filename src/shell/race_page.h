#pragma once

#include "racedata/race_control.h"
#include "session/app_state.h"

namespace keelview {

/// Makes a page of the open race for any browser, says where it lies, and opens it if the person wants
/// that.
void OfferPage(const Settings& settings, const RaceControl& race, Services& services);

}  // namespace keelview
