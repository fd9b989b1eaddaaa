#pragma once

#include <optional>
#include <vector>

#include "analysis/found_marks.h"

namespace keelview {

/// One boat at a place of the course, a mark or a gate.
struct Visit {
    int Place = 0;        ///< from 0
    int Time = 0;         ///< second
    bool Turns = false;   ///< it turned there; else it sailed by
    bool Suits = false;   ///< it sailed by a mark that is known by that
    bool Unlike = false;  ///< it turned the other way than most do there, or tacked where most do not
};

/// The visits of each boat, in the order of time.
using FleetVisits = std::vector<std::vector<Visit>>;

/// Where each mark stands in the course: the two of a gate are one place. From 0.
std::vector<int> PlacesOf(const std::vector<FoundMark>& marks);

/// The visits of a boat to the marks from one second to another: the corners near them, and where it sailed
/// by within 40 m without a turn.
std::vector<Visit> VisitsOf(const WayBySecond& way, const std::vector<Corner>& corners,
                            const std::vector<FoundMark>& marks, const std::optional<double>& wind,
                            int from, int to);

/// An order of places, and what speaks for it.
struct FoundCourse {
    std::vector<int> Places;
    double Support = 0.0;  ///< the share of the entries at which the boats have turned that came so far
    int Agreeing = 0;      ///< boats that have been at all entries in this order
    /// Of each boat: when it was at each entry, as far as it came.
    std::vector<std::vector<std::optional<int>>> Times;
};

/// The order of places that costs the fleet least. Each boat's visits are laid beside it by a dynamic
/// programme in which an entry that it left out costs 1, a turn at a place that is not due 0.7, sailing by
/// without a turn 0.35, nothing where the mark is known by that, and giving up 0.6; a turn unlike those of
/// most there costs 0.3 where it is due and 0.25 where not. The orders tried are those of the boats, each
/// made better entry by entry.
FoundCourse FindCourse(const FleetVisits& visits, int places);

}  // namespace keelview
