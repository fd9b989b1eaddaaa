#pragma once

#include "analysis/mark_passes.h"
#include "racedata/gps_track.h"
#include "racedata/race_control.h"

namespace keelview {

/// The walk: works out from the tracks alone when each boat reached each entry of the course, second by
/// second from entry to entry. A line is passed by crossing it anywhere between its ends; a mark, inside
/// 200 m, by passing the outward bisector of the course's corner, failing that by getting no nearer,
/// failing that (between two known entries) by its nearest approach inside 100 m. After an entry that was
/// not found the walk goes on from the gun, so that later times may lie before earlier ones. Makes the
/// times, their sources and FirstPassTime anew, and MarkPassDist with zeros; a boat with fewer than two
/// points has no times. The end of the search is that of the race's ReplaySpan.
void FindMarkPassTimes(const RaceControl& race, const Tracks& tracks, const EarthScale& scale,
                       MarkPasses& passes);

/// Times and distances at the course entries, all anew: the walk, what the order of the entries says of it
/// (ReconcilePasses), and what a person has set.
void FindAllPasses(const RaceControl& race, const Tracks& tracks, const EarthScale& scale,
                   MarkPasses& passes);

}  // namespace keelview
