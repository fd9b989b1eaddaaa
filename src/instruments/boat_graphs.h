#pragma once

#include <vector>

#include "session/app_state.h"
#include "session/race_disp.h"

namespace keelview {

/// The graphs GPIC: two strip charts side by side with time running up the page. Left the course over
/// ground of each boat on a compass axis placed by the race's wind, right its speed; with a wind file the
/// wind's direction lies over the left chart and its speed under the right one. What is drawn stays until
/// the next drawing; nothing of it follows the clock.
class BoatGraphs {
  public:
    BoatGraphs(AppState& app, RaceDisp& form);

    /// Clears GPIC and draws everything, boats in focus over the others. A race without a span gets axes
    /// without anything placed in time, and GraphTimeScale 0.
    void DrawBoatGraphs();

    /// The direction at the left edge of the compass axis, as the boats and the wind were drawn last.
    double DirOffset() const { return dirOffset_; }

  private:
    void SettleSpan();
    void PlaceWindButton();
    void DrawGround();
    void DrawWindSpeed();
    void DrawDirectionGrid();
    void DrawSpeedGrid();
    void DrawTimeGrid();
    void DrawBoats(bool inFocus, bool course);
    void TraceBoat(int boat, bool course, std::vector<Point>& line) const;
    void DrawWindDirection(double turn, Colour colour);
    void DrawStartAndFinish();
    bool HasWind() const { return !app_.race.WindFileName.empty(); }
    bool InRace(double seconds) const;
    double Y(double seconds) const;

    AppState& app_;
    RaceDisp& form_;
    double bottom_ = 0.0;  ///< y of the lower edge of the charts
    double dirOffset_ = 0.0;
};

}  // namespace keelview
