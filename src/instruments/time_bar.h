#pragma once

#include "session/app_state.h"
#include "session/race_disp.h"

namespace keelview {

/// The vertical time bar PicTimeBar: the whole race at a glance, upwind zones white, downwind zones grey.
/// Times lie on the axis of analysis/time_axis.h, so the bar and the graphs line up.
class TimeBar {
  public:
    TimeBar(AppState& app, RaceDisp& form);

    /// Works out GraphTimeScale and draws the zones of boat 1 by its course against the race's wind, and
    /// the start and finish. A race without a span leaves GraphTimeScale 0 and the bar without zones.
    void DrawTimeBar();

    /// Moves the replay position mark Line5 to a time, seconds from the start.
    void PlaceMark(double time);

    /// The left edge of the bar, where a limited replay range shows: the strip from one y to another in
    /// yellow, all else in the colour of the bar.
    void MarkRange(double fromY, double toY);
    void WipeRange();

  private:
    void DrawZones();

    AppState& app_;
    RaceDisp& form_;
};

}  // namespace keelview
