#pragma once

#include "instruments/time_axis.h"
#include "session/app_state.h"
#include "session/film.h"
#include "session/race_disp.h"

namespace keelview {

/// What follows the pointer over the graphs: three short cursors on the compass chart (the direction under
/// the pointer less and plus the upwind lay line angle, and its reciprocal), and the time and direction
/// under it while there is wind.
class GraphCursors {
  public:
    GraphCursors(const AppState& app, RaceDisp& form, Film& film);

  private:
    void GPIC_MouseMove(const MouseEvent& event);
    void HideCursors();
    void PlaceCursors(double x, double y);
    void ShowWindHint(const TimeAxis& axis, double x, double y);
    bool WindKnownAt(int seconds) const;

    const AppState& app_;
    RaceDisp& form_;
    Film& film_;
};

}  // namespace keelview
