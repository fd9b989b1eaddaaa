#pragma once

#include <vector>

#include "analysis/mark_rounding.h"
#include "racedata/race_control.h"
#include "session/app_state.h"
#include "session/instrument.h"
#include "session/race_disp.h"

namespace keelview {

/// The boats that have finished, on the map from the first finish on: rank, name, time, and the seconds
/// behind the first of the list. What the map has no room for is scrolled to; whoever looks at the end of
/// the list sees who comes next. The gun sounds when boats finish while the film goes forward, once for
/// each frame.
class FinishList : public Instrument {
  public:
    FinishList(const RaceControl& race, const MarkPasses& passes, const Settings& settings,
               Platform& platform, RaceDisp& form);

    void Repaint(Changed changed) override;
    void Show(const Moment& now) override;

  private:
    void PlaceList();
    void DrawList();
    void DrawRow(int row);

    const RaceControl& race_;
    const MarkPasses& passes_;
    const Settings& settings_;
    Platform& platform_;
    RaceDisp& form_;
    std::vector<int> listed_;  ///< boats, the first one first
    int rows_ = 0;             ///< of them, that are seen at once
    bool stale_ = true;        ///< what is drawn belongs to another course, race or size
};

/// The boats that have a finish up to a moment (seconds from the start), in their order; none before the
/// first finish. A time at the last entry that lies before anybody passed the entry before it is not the
/// first finish, though its boat is in the list later.
std::vector<int> FinishedBy(const MarkPasses& passes, double time);

}  // namespace keelview
