#pragma once

#include "instruments/boat_graphs.h"
#include "instruments/wind_entry.h"
#include "session/app_state.h"
#include "session/race_disp.h"

namespace keelview {

/// What follows the pointer over the graphs: three short cursors on the compass chart (the direction under
/// the pointer less and plus the upwind lay line angle, and its reciprocal), and the time and direction
/// under it while there is wind.
class GraphCursors {
  public:
    GraphCursors(AppState& app, RaceDisp& form, const BoatGraphs& graphs, const WindEntry& entry);

  private:
    void GPIC_MouseMove(const MouseEvent& event);
    void HideCursors();
    void PlaceCursors(double x, double y);
    void ShowWindHint(double x, double y);
    bool WindKnownAt(int seconds) const;

    AppState& app_;
    RaceDisp& form_;
    const BoatGraphs& graphs_;
    const WindEntry& entry_;
};

}  // namespace keelview
