#pragma once

#include <vector>

#include "display/idle_task.h"
#include "session/app_state.h"
#include "session/instrument.h"
#include "session/race_disp.h"

namespace keelview {

/// Has the instruments drawn: what changed is marked and drawn once, when the event loop is idle or with
/// the next frame, and then the moment of the clock is shown. No other room tells a picture when to draw.
class Stage {
  public:
    Stage(AppState& app, RaceDisp& form);

    /// Instruments are drawn in the order in which they were added.
    void Add(Instrument& instrument) { instruments_.push_back(&instrument); }

    /// Marks what has changed.
    void Repaint(Changed changed);
    /// Draws what is marked and shows the moment of the clock, at once. In auto trace the view follows
    /// first.
    void ShowMoment();
    /// Draws nothing when idle, as long as a race is being read that the controls do not fit yet.
    void SetDark(bool dark) { dark_ = dark; }
    /// Fits the view to the boats in focus that are racing, once; to all in focus where none is.
    void FollowBoats();
    /// Some boat is on the map at a time (seconds from the start), or another view is shown.
    bool BoatInViewAt(double time) const;

  private:
    void SettleMoment();

    AppState& app_;
    RaceDisp& form_;
    std::vector<Instrument*> instruments_;
    Changed changed_ = Changed::Nothing;
    bool dark_ = false;
    IdleTask idle_;
};

}  // namespace keelview
