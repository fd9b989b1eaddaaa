#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "analysis/found_race_entry.h"
#include "analysis/race_plan.h"

namespace keelview {

/// The search for races in the recordings of a plan, as they stand in their files, piece by piece. It needs
/// the plan no more once it is made.
class PlanSearch {
  public:
    /// Of the boats that are taken, with their clocks. Gun and line are taken where the files tell them.
    explicit PlanSearch(const RacePlan& plan);

    /// Reads the next file, or looks for the races when all are read; true while there is more to do.
    bool DoNext();

    /// What was found, on the clock of the plan; to be asked for once all is done.
    DayFinding Take() { return std::move(finding_); }

  private:
    struct Wanted {
        int Boat;    ///< of the search, from 1
        int Number;  ///< of the recording in its file
        UnixMs Later;
    };
    struct File {
        std::string Name;
        std::filesystem::path Source;
        std::vector<Wanted> Boats;
    };

    void Read(const File& file);
    void Find();

    std::vector<File> files_;
    std::size_t read_ = 0;  // of the files
    OneBased<TrackReading> readings_;
    RaceControl race_;  // the clock of the plan, and nothing of a race
    std::optional<CivilTime> gun_;
    FinderHints hints_;
    DayFinding finding_;
};

}  // namespace keelview
