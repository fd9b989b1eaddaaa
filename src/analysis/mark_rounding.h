#pragma once

#include "base/one_based.h"
#include "racedata/gps_track.h"
#include "racedata/race_control.h"

namespace keelview {

/// FirstPassTime of an entry that no boat reached.
inline constexpr int NobodyPassed = 1000000;

/// When each boat reached each course entry, and how far it had sailed: tables by boat and entry, as large
/// as the race and its course. Made by FindMarkPassTimes and ComputeMarkPassDist; nobody has passed
/// anything in an empty one.
struct MarkPasses {
    template <class T>
    using ByBoatAndEntry = OneBased<OneBased<T>>;

    ByBoatAndEntry<int> MarkPassTime;     ///< seconds from the start; 0 when not found
    OneBased<int> FirstPassTime;          ///< earliest of all boats, or NobodyPassed
    ByBoatAndEntry<double> MarkPassDist;  ///< nautical miles sailed from the start

    /// A cell of one of the tables; 0 outside it.
    template <class T>
    static T CellOf(const ByBoatAndEntry<T>& table, int boat, int entry) {
        return table.Holds(boat) && table[boat].Holds(entry) ? table[boat][entry] : T();
    }
};

/// Works out from the tracks alone when each boat reached each entry of the course, second by second: a
/// line by crossing it anywhere between its ends; a mark, inside 200 m, by passing the outward bisector of
/// the course's corner, failing that by getting no nearer, failing that (between two known entries) by its
/// nearest approach inside 100 m. Makes MarkPassTime and FirstPassTime anew, and MarkPassDist with zeros; a
/// boat with fewer than two points gets 0. Times of 0 or below are stored but count as no passing. The end
/// of the search is that of the race's ReplaySpan.
void FindMarkPassTimes(const RaceControl& race, const Tracks& tracks, const EarthScale& scale,
                       MarkPasses& passes);

/// Fills MarkPassDist from MarkPassTime: miles sailed since second 0, to three decimals; 0 where there is
/// no time or the track does not hold it.
void ComputeMarkPassDist(const RaceControl& race, const Tracks& tracks, MarkPasses& passes);

/// Times and distances at the course entries, all anew.
void FindAllPasses(const RaceControl& race, const Tracks& tracks, const EarthScale& scale,
                   MarkPasses& passes);

/// A boat's time at an entry, and the miles it had sailed by then; 0 where it has none, as before entry 1
/// and where the passes are those of a race or a course without that boat or entry.
inline int PassTime(const MarkPasses& passes, int boat, int entry) {
    return MarkPasses::CellOf(passes.MarkPassTime, boat, entry);
}
inline double PassMiles(const MarkPasses& passes, int boat, int entry) {
    return MarkPasses::CellOf(passes.MarkPassDist, boat, entry);
}

/// The earliest time of any boat at the last entry of the course; NobodyPassed where there is none.
int FirstFinishTime(const MarkPasses& passes);

/// A boat's time at the last entry of the course; 0 where it has none.
int FinishTime(const MarkPasses& passes, int boat);

}  // namespace keelview
