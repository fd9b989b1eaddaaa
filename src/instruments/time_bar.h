#pragma once

#include <optional>
#include <utility>

#include "instruments/time_axis.h"
#include "session/app_state.h"
#include "session/instrument.h"
#include "session/race_disp.h"

namespace keelview {

/// The vertical time bar PicTimeBar: the whole race at a glance, upwind zones white, downwind zones grey,
/// with start, finish and the replay position. Times lie on the axis of the graphs, so that both line up.
class TimeBar : public Instrument {
  public:
    TimeBar(const RaceControl& race, const Tracks& tracks, RaceDisp& form)
        : race_(race), tracks_(tracks), form_(form) {}

    /// Draws the zones of boat 1 by its course against the race's wind, and the start and finish. A race
    /// without a span leaves the bar without zones.
    void Repaint(Changed changed) override;
    /// Moves the replay position mark Line5.
    void Show(const Moment& now) override;

    TimeAxis Axis() const { return {race_, form_.PicTimeBar.Height()}; }

    /// The left edge of the bar, where a limited replay range shows: the strip from one second to another
    /// in yellow, all else in the colour of the bar. It stays with its race until it is wiped.
    void MarkRange(int from, int to);
    void WipeRange();

  private:
    void DrawZones(const TimeAxis& axis);
    void DrawRange();

    const RaceControl& race_;
    const Tracks& tracks_;
    RaceDisp& form_;
    std::optional<std::pair<int, int>> range_;  ///< as it is marked, seconds from the start
};

}  // namespace keelview
