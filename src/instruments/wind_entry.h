#pragma once

#include <string>

#include "racedata/wind_file.h"
#include "session/race_session.h"

namespace keelview {

/// Wind directions entered by hand on the graphs: Command12 switches the mode on and off, each press on the
/// compass chart sets a sample, in any order of time. The samples stand between two guards, so that the
/// wind is defined from five minutes before the start to the finish, and are written to a wind file of the
/// race's own, which joins the race control file when that is saved. While the graphs are seen in this
/// mode, the film stands still.
class WindEntry {
  public:
    explicit WindEntry(RaceSession& session);

    /// The mode is on: presses set samples.
    bool WindEntryMode() const { return windEntryMode_; }
    /// Leaves the mode as its button does. False where it is off, or the graphs are not shown.
    bool Leave();
    /// Another view is shown.
    void ViewChanged() { HoldFilm(); }

  private:
    void Command12_Click();
    void GPIC_MouseDown(const MouseEvent& event);
    void SetMode(bool on);
    void HoldFilm();
    void OfferToSave();
    bool MayEnter();
    void EnterSample(int seconds, double direction);
    int FirstTime() const;
    WindData BetweenGuards() const;
    bool IsHeld() const;

    const AppState& app_;
    RaceDisp& form_;
    Film& film_;
    RaceChanges& changes_;
    const Voice& voice_;
    bool windEntryMode_ = false;
    WindData entered_;           ///< in the order of time
    WindData before_;            ///< the wind of the race before the first of them
    std::string windEntryRace_;  ///< the race they were entered for
};

}  // namespace keelview
