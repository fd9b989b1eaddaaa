#pragma once

#include <optional>
#include <string>

#include "analysis/found_race_entry.h"
#include "base/bilingual.h"
#include "base/position.h"
#include "racedata/race_control.h"
#include "session/app_state.h"
#include "session/save_race.h"
#include "session/stage.h"
#include "session/voice.h"

namespace keelview {

/// The name of a wind file that is made for a race.
std::string WindFileNameFor(const RaceControl& race);

/// The one door for what a person changes in the open race: done in the race, written to its file at once
/// unless said otherwise, and told to the pictures. What follows from marks, lines and course is worked out
/// anew. What would pass a limit of the race is refused: the person is told, and nothing changes.
class RaceChanges {
  public:
    RaceChanges(AppState& app, const Voice& voice, RaceSaver& saver, Stage& stage);

    /// The numbers of new marks and lines follow those that are there. False: refused.
    bool AddMark(const Position& at);
    bool AddLine(const Position& from, const Position& to);
    /// As AddLine, asked before the person clicks its second end.
    bool MayAddLine() const;
    /// Puts an entry at the end of the course, also one that is there already. False: refused.
    bool AddToCourse(const CourseKey& entry);
    /// Makes a gate of the mark at the end of the course and another one. False, and nothing changed, where
    /// either is none.
    bool MakeGate(const CourseKey& other);
    /// Takes a gate of the course apart, or joins a mark to the one before it (keelview::ToggleGate).
    void ToggleGate(int entry);
    /// Takes a mark or line away; the numbers of the following ones fall by one. As its entries would mean
    /// others then, the course is emptied.
    void Remove(const CourseKey& entry);
    /// What was set by hand for its entries goes with them.
    void ClearCourse();

    /// Gives the race the times, marks, lines, course and wind that were found in its tracks, and writes it
    /// in one step, the old file kept beside it; `clock` as TakeFoundRace has it. False, and nothing
    /// changed, where it cannot be written. Its tracks are to be loaded anew then, as its period is
    /// another.
    bool TakeFound(const FoundRace& found, CivilTime clock);

    /// When a boat passed an entry of the course, as the person says: at a second, or (nothing) not at all.
    void SetPass(int boat, int entry, std::optional<int> seconds);
    /// Takes back what the person said.
    void PassAsFound(int boat, int entry);

    /// The race's wind, degrees; the map turns with it.
    void SetWindDirection(double direction);
    /// North or the wind at the top of the map. It is written with the next save.
    void SetNorthUp(bool northUp);
    /// Wind entered by hand, for a wind file of that name; both are written by others when the person says
    /// so.
    void SetWind(const WindData& wind, const std::string& windFileName);
    /// Writes the race's wind into its wind file. False, and the person has been told, if that fails.
    bool WriteWindFile() const;
    /// The same with another wind, which the race has from then on, in its file too; one that cannot be
    /// written changes nothing.
    void TakeWind(const WindData& wind);

  private:
    bool Refuse(const Text& why) const;
    void ForgetHandPass(int boat, int entry);
    void CourseChanged();

    AppState& app_;
    const Voice& voice_;
    RaceSaver& saver_;
    Stage& stage_;
};

}  // namespace keelview
