#pragma once

#include <vector>

#include "instruments/time_axis.h"
#include "session/app_state.h"
#include "session/instrument.h"
#include "session/race_disp.h"

namespace keelview {

/// The graphs GPIC: two strip charts side by side with time running up the page. Left the course over
/// ground of each boat on a compass axis placed by the race's wind, right its speed; with a wind file the
/// wind's direction lies over the left chart and its speed under the right one. Of what is drawn nothing
/// follows the clock but a horizontal line.
class BoatGraphs : public Instrument {
  public:
    BoatGraphs(const AppState& app, RaceDisp& form) : app_(app), form_(form) {}

    /// While the graphs are shown: draws everything, boats in focus over the others. A race without a span
    /// gets axes without anything placed in time.
    void Repaint(Changed changed) override;
    /// Moves the line Line1 of the moment, unless the time bar has it under its pointer.
    void Show(const Moment& now) override;

  private:
    void Draw();
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
    bool InRace(double seconds) const;
    TimeAxis Axis() const { return {app_.race, form_.GPIC.Height()}; }
    double ChartBottom() const;

    const AppState& app_;
    RaceDisp& form_;
};

}  // namespace keelview
