#pragma once

#include "session/app_state.h"
#include "session/instrument.h"
#include "session/race_disp.h"

namespace keelview {

/// What tells the start: the race clock, the large countdown, the two flags, which slide down from the map
/// when their time is over, and the gun.
class StartSignals : public Instrument {
  public:
    StartSignals(const Settings& settings, Platform& platform, RaceDisp& form);

    /// A film that was started or stopped has its flags in their place.
    void Repaint(Changed changed) override;
    void Show(const Moment& now) override;

  private:
    void ShowRaceClock(double time);
    void ShowFlags(const Moment& now);
    void FireStartGun(const Moment& now);

    const Settings& settings_;
    Platform& platform_;
    RaceDisp& form_;
    Surface* falling_ = nullptr;  ///< the flag that slides down
    double lastTime_ = 0.0;       ///< of the moment shown last
    bool gunFired_ = false;
};

}  // namespace keelview
