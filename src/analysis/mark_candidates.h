#pragma once

#include <optional>
#include <vector>

#include "analysis/found_marks.h"
#include "analysis/turn_places.h"

namespace keelview {

/// A place that may be a mark, and what speaks for it.
struct MarkCandidate {
    std::vector<Corner> Turns;
    FoundMark Mark;
    std::vector<Corner> Rounding;  ///< those that turn about
    FoundMark OfGate;              ///< as these alone tell it: the others may have gone round its partner
    bool Tacks = false;            ///< most turns are tacks
    bool Certain = false;          ///< a mark by itself
    bool ByWaist = false;          ///< only as all boats come by, from different sides or to different ones
    bool Changing = false;         ///< as boats change to another angle off the wind here
};

/// Weighs a place. Nearly all boats that race about then must leave it as boats leave a mark
/// (mark_passing); besides, most change to another angle off the wind there, or all turn the same way, or
/// they come together there. `lastTurns` is the second of each boat's last turn.
MarkCandidate CandidateOf(const TurnPlace& place, const std::vector<int>& lastTurns,
                          const std::vector<const WayBySecond*>& fleet, const std::optional<double>& wind);

/// The boats that some corners are of, each once.
int BoatsOf(const std::vector<Corner>& corners);

/// True if a mark's turns lie close together and go one way.
bool IsSharp(const FoundMark& mark);

}  // namespace keelview
