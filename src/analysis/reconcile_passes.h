#pragma once

#include "analysis/mark_passes.h"
#include "racedata/earth_scale.h"
#include "racedata/gps_track.h"
#include "racedata/race_control.h"

namespace keelview {

/// Brings what the walk found into an order that can be sailed. A boat whose times are complete and rise
/// strictly keeps them. Any other one gets a chain of candidates (see CandidateSearch) along the course,
/// each later than the one before: the chain with the most entries; of equal ones that which gets furthest,
/// then that of the least cost, then the earliest.
///
/// The chain begins with the walk's start; a boat without one may have a chain from entry 2 on, after the
/// gun. A missed entry ends it, as nobody sails on past a mark that counts, unless the boat may have passed
/// it in a hole of its track, or no boat of the fleet has a candidate there: then the mark is stored
/// wrongly. What the chain does not hold has no time, so that nothing is invented for a boat that retired.
///
/// Times that the walk had not found are marked as those of the chain.
void ReconcilePasses(const RaceControl& race, const Tracks& tracks, const EarthScale& scale,
                     MarkPasses& passes);

}  // namespace keelview
