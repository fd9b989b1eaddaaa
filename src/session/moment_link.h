#pragma once

#include <string>
#include <string_view>

#include "session/race_session.h"

namespace keelview {

/// What is seen of a race now, as the end of an address: "t=600&boats=1,3&view=map&x=..&y=..&zoom=..". The
/// time is seconds from the start, `boats` are those in focus (left out where all are), the view is map,
/// graph or data. Where the map stands still x, y are its middle in minutes of arc, east and north, and
/// zoom its zoom; in auto trace they are left out.
std::string MomentLink(RaceSession& session);

/// Shows what such a text tells; what it does not tell, or nobody can show, stays as it is.
void FollowMomentLink(RaceSession& session, std::string_view link);

}  // namespace keelview
