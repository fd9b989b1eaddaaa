#pragma once

#include <string>

#include "instruments/boat_graphs.h"
#include "session/app_state.h"
#include "session/race_disp.h"

namespace keelview {

/// Wind directions entered by hand on the graphs: Command12 switches the mode on and off, each press on the
/// compass chart sets a sample, in any order of time. The samples stand between two guards, so that the
/// wind is defined from five minutes before the start to the finish, and are written to a wind file of the
/// race's own, which joins the race control file when that is saved.
class WindEntry {
  public:
    WindEntry(AppState& app, RaceDisp& form, Services& services, BoatGraphs& graphs);

    /// The mode is on: presses set samples, and the film stands still.
    bool WindEntryMode() const { return windEntryMode_; }

  private:
    void Command12_Click();
    void GPIC_MouseDown(const MouseEvent& event);
    void SetMode(bool on);
    void OfferToSave();
    bool MayEnter();
    void EnterSample(int seconds, double direction);
    void SetGuards();
    int HeldEntryCount() const;

    AppState& app_;
    RaceDisp& form_;
    Services& services_;
    BoatGraphs& graphs_;
    bool windEntryMode_ = false;
    int windEntryCount_ = 0;     ///< index of the last entered sample; the first is 2, after a guard
    std::string windEntryRace_;  ///< the race they were entered for
};

}  // namespace keelview
