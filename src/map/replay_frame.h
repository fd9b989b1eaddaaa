#pragma once

#include <string>

#include "map/chart.h"
#include "map/instruments.h"
#include "session/app_state.h"
#include "session/race_disp.h"

namespace keelview {

/// The speed of a boat (from 1) at the replay time as the map writes it, with two decimals at most: "5.3".
std::string ShownSpeed(const AppState& app, int boat);

/// What the viewer sees move: for one moment of the clock the race clock, start signals, gun, finish list,
/// boats, wakes, names and the boat list.
class ReplayFrame {
  public:
    ReplayFrame(AppState& app, RaceDisp& form, Services& services, Chart& chart, Instruments& instruments);

    /// Draws the moment ReplayTime, after wrapping it into the replay range.
    void DrawFrame();

    /// Empties the finish list and hides it.
    void ResetFinishList();

    /// Every boat's search for its track segment begins at its first (true) or last point again.
    void ResetCursors(bool toFirst);

  private:
    void KeepClockInRange();
    void ShowRaceClock();
    void ShowStartSignals();
    void FireStartGun();
    void UpdateFinishList();
    void AppendFinisher(int boat);
    void DrawFinishList();
    void PlaceBoat(int boat);
    void DrawBoatOnMap(int boat, int point);
    void PlaceCrossWindLine(int boat, const ScreenPoint& at);
    void DrawNameLabel(int boat, double x, double y);
    void DrawWake(int boat, int point, const ScreenPoint& at);
    void ShowGraphLine();
    void RefreshWind();
    void UpdateBoatPanel();
    void UpdateBoatRow(int boat);
    void SlideDown(Surface& flag);

    AppState& app_;
    RaceDisp& form_;
    Services& services_;
    Chart& chart_;
    Instruments& instruments_;
    bool gunFired_ = false;
    int lastWholeSecond_ = 0;    // of the last wind refresh
    double lastCourseWind_ = 0;  // wind of the last lay lines drawn between redraws, degrees
};

}  // namespace keelview
