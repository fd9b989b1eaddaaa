#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "analysis/fleet.h"
#include "analysis/found_tracks.h"
#include "racedata/race_control.h"

namespace keelview {

/// A boat of a race that is planned: one recording that was found.
struct PlannedBoat {
    std::string Name;      ///< proposed from the recording or its file; another may be set
    bool Taken = true;     ///< it sails in the race; proposed by Lies, and may be set
    FleetPlace Lies;       ///< why it was not proposed
    std::size_t File = 0;  ///< its place in the plan's Files
    FoundTrack Track;
    std::optional<double> ProposedClock;  ///< seconds to add to its times that it sails with the fleet
    double ClockOffset = 0.0;             ///< seconds that are added: 0 until somebody takes the proposal
};

/// A file that a plan takes recordings from.
struct PlannedFile {
    std::string Name;              ///< as it was handed in
    std::filesystem::path Source;  ///< where it lies
    std::string Format;
    std::string Target;  ///< its name in gpsdat
    RaceHints Hints;
};

/// A file that gives the race nothing.
struct UnusedFile {
    std::string Name;
    Refusal Why = Refusal::None;
    std::string SameAs;  ///< the file that holds the same recordings, where it was not refused
};

/// What a heap of files proposes as a race. Who takes it over may change names, choice, clocks and times.
struct RacePlan {
    std::vector<PlannedBoat> Boats;  ///< in the order of their files
    std::vector<PlannedFile> Files;
    std::vector<UnusedFile> Unused;
    std::string Title;
    std::string RaceFileName;            ///< in raceadmin
    double TimeDiff = 0.0;               ///< hours from UTC, as the files tell it, else by place
    UnixMs Begin = 0;                    ///< from when on two boats (or the only one) were recorded
    UnixMs End = 0;                      ///< until when they were
    std::optional<CivilTime> Start;      ///< local, by the race timer of a device
    std::optional<CivilTime> Finish;     ///< local; the end of the plan, where there is a start
    OneBased<Mark, MaxMarks> Marks;      ///< places that the files name, on the race's water
    OneBased<Line, MaxLines> StartLine;  ///< its ends as a device was told them: one at most
};

/// Plans a race of what was found in files. The order in which they were handed in does not matter; a
/// recording that was handed in twice, in whatever form, is one boat.
RacePlan PlanRace(std::vector<FoundFile> files);

/// Works out begin, end, time difference, start, finish, marks and line anew from the boats that are taken.
void SettleCourseAndTimes(RacePlan& plan);

/// Sets the time difference by hand; the times of the plan are the same moments on the new clock.
void MoveClock(RacePlan& plan, double timeDiff);

/// A moment on the clock of the plan, whole seconds.
CivilTime LocalSecond(const RacePlan& plan, UnixMs time);
/// The way back.
UnixMs MomentOf(const RacePlan& plan, CivilTime local);

/// The clock offset of a boat, as it is added to the times of its fixes.
UnixMs ClockMs(const PlannedBoat& boat);

/// What a race control file calls the recording of a boat: "regatta.csv#3".
std::string BoatFileOf(const RacePlan& plan, const PlannedBoat& boat);

/// The race as its file is to hold it, of the boats that are taken; what nobody told stays open.
RaceControl PlannedRace(const RacePlan& plan);

}  // namespace keelview
