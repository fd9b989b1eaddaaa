#pragma once

#include <optional>
#include <string>

#include "base/one_based.h"
#include "racedata/gps_track.h"
#include "racedata/race_control.h"

namespace keelview {

/// Who says when a boat passed an entry.
enum class PassSource {
    None,   ///< nobody: it was not reached
    Rule,   ///< the walk along the track, entry by entry
    Chain,  ///< the order of all entries, where the walk went astray
    Hand    ///< a person, in the race control file; a rounding taken away by hand too
};

/// When each boat reached each course entry, and how far it had sailed: tables by boat and entry, as large
/// as the race and its course. Nobody has passed anything in an empty one.
struct MarkPasses {
    template <class T>
    using ByBoatAndEntry = OneBased<OneBased<T>>;

    ByBoatAndEntry<std::optional<int>> MarkPassTime;  ///< seconds from the start, below 0 before the gun
    ByBoatAndEntry<PassSource> MarkPassSource;
    OneBased<std::optional<int>> FirstPassTime;  ///< earliest of all boats; nothing where nobody passed
    ByBoatAndEntry<int> GateMark;         ///< of a gate the mark that was rounded; 0 for any other entry
    ByBoatAndEntry<double> MarkPassDist;  ///< nautical miles sailed from the start

    /// A cell of one of the tables; an empty one outside it.
    template <class T>
    static T CellOf(const ByBoatAndEntry<T>& table, int boat, int entry) {
        return table.Holds(boat) && table[boat].Holds(entry) ? table[boat][entry] : T();
    }
};

/// Puts the times that a person has set over those that were found; a rounding that was taken away has
/// none. What names no boat or entry of the race, or lies beyond what a race can last, is left out.
void SetHandPasses(const RaceControl& race, MarkPasses& passes);

/// Fills FirstPassTime from MarkPassTime, so that it ascends along the course: a time that is not later
/// than the first at an entry before does not count, nor does one before the gun.
void FindFirstPasses(MarkPasses& passes);

/// Fills GateMark: of the two marks of a gate the one that the boat was nearer to at its time there.
void FindGateMarks(const RaceControl& race, const Tracks& tracks, const EarthScale& scale,
                   MarkPasses& passes);

/// Fills MarkPassDist from MarkPassTime: miles sailed since second 0, to three decimals; 0 where there is
/// no time or the track does not hold it.
void ComputeMarkPassDist(const RaceControl& race, const Tracks& tracks, MarkPasses& passes);

/// A boat's time at an entry; nothing where it has none, as before entry 1 and where the passes are those
/// of a race or a course without that boat or entry.
inline std::optional<int> PassTime(const MarkPasses& passes, int boat, int entry) {
    return MarkPasses::CellOf(passes.MarkPassTime, boat, entry);
}

/// The mark of a gate that a boat rounded; 0 where it was not there, and for any entry that is no gate.
inline int GateMark(const MarkPasses& passes, int boat, int entry) {
    return MarkPasses::CellOf(passes.GateMark, boat, entry);
}

/// " MK3" behind what a table tells of a boat at a gate; empty where GateMark is 0.
inline std::string GateMarkText(const MarkPasses& passes, int boat, int entry) {
    const int mark = GateMark(passes, boat, entry);
    return mark == 0 ? std::string() : " MK" + std::to_string(mark);
}

/// A person has set that time, or taken it away.
inline bool IsByHand(const MarkPasses& passes, int boat, int entry) {
    return MarkPasses::CellOf(passes.MarkPassSource, boat, entry) == PassSource::Hand;
}

/// The miles that it had sailed by then; 0 where it has no time.
inline double PassMiles(const MarkPasses& passes, int boat, int entry) {
    return MarkPasses::CellOf(passes.MarkPassDist, boat, entry);
}

/// The earliest time of any boat at the last entry of the course.
std::optional<int> FirstFinishTime(const MarkPasses& passes);

/// A boat's time at the last entry of the course.
std::optional<int> FinishTime(const MarkPasses& passes, int boat);

}  // namespace keelview
