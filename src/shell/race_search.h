#pragma once

#include "session/race_session.h"

namespace keelview {

/// Looks for the open race in its tracks, tells what was found and why, and fills it into the race where
/// the person says so.
void OfferFoundRace(RaceSession& session);

}  // namespace keelview
