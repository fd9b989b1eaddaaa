#pragma once

#include <array>

#include "racedata/gps_track.h"
#include "racedata/limits.h"
#include "racedata/race_control.h"

namespace keelview {

/// FirstPassTime of an entry that no boat reached.
inline constexpr int NobodyPassed = 1000000;

/// When each boat (1 to BoatCount) reached each course entry (1 to CourseCount).
struct MarkPasses {
    template <class T>
    using ByEntry = std::array<T, MaxCourseEntries + 1>;
    template <class T>
    using ByBoatAndEntry = std::array<ByEntry<T>, MaxBoats + 1>;

    static constexpr ByEntry<int> Nobody() {
        ByEntry<int> times{};
        times.fill(NobodyPassed);
        return times;
    }

    ByBoatAndEntry<int> MarkPassTime{};     ///< seconds from the start; 0 when not found
    ByEntry<int> FirstPassTime = Nobody();  ///< earliest of all boats, or NobodyPassed
    ByBoatAndEntry<double> MarkPassDist{};  ///< nautical miles sailed from the start
    bool StatsReady = false;                ///< MarkPassDist and the tables are up to date
};

/// Works out from the tracks alone when each boat reached each entry of the course, second by second: a
/// line by crossing it between its ends; a mark, inside 200 m, by passing the outward bisector of the
/// course's corner, failing that by getting no nearer, failing that (between two known entries) by its
/// nearest approach inside 100 m. Fills MarkPassTime and FirstPassTime; a boat with fewer than two points
/// gets 0. Times of 0 or below are stored but count as no passing. Reads race.ReplaySpan as the end of the
/// search.
void FindMarkPassTimes(const RaceControl& race, const Tracks& tracks, const EarthScale& scale,
                       MarkPasses& passes);

/// Fills MarkPassDist from MarkPassTime: miles sailed since second 0, to three decimals; 0 where there is
/// no time or the track does not hold it.
void ComputeMarkPassDist(const RaceControl& race, const Tracks& tracks, MarkPasses& passes);

}  // namespace keelview
