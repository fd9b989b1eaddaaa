#pragma once

#include "map/chart.h"
#include "map/replay_frame.h"
#include "session/app_state.h"
#include "session/race_disp.h"

namespace keelview {

/// Lets the film go on that a click on the map left standing, when the pointer comes to a panel; not while
/// it is stopped, nor behind the data page.
void ResumeFilm(const AppState& app, RaceDisp& form);

/// The film: three timers move ReplayTime and draw its frames. Timer1 is the tick, Timer3 holds the speed
/// whatever the machine manages, Timer2 switches auto trace on about two seconds after the display opened.
class ReplayClock {
  public:
    ReplayClock(AppState& app, RaceDisp& form, Services& services, Chart& chart, ReplayFrame& frame);

    /// Sets the clock before the start and starts the three timers.
    void Start();

  private:
    void ReplayTick();
    void SkipToBoats();
    void Timer2_Timer();
    void Timer3_Timer();
    void CalibrateStep();
    void ShowScaleNote();
    void WatchForBoats();
    void UpdatePassClock();
    void HScroll1_Change();
    void SetStepFromSpeed();
    void Play(int direction);
    void Option7_Click();
    void Step(int direction);

    AppState& app_;
    RaceDisp& form_;
    Services& services_;
    Chart& chart_;
    ReplayFrame& frame_;
    bool inTick_ = false;
    int tickCount_ = 0;
    int ticksPerSecond_ = 0;
    double tickClock_ = 0.0;
    int noBoatSeconds_ = 0;
    int openSeconds_ = 0;
    bool deferredAutoTrace_ = false;
};

}  // namespace keelview
