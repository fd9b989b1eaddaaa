#pragma once

#include <string>

#include "instruments/boat_graphs.h"
#include "session/app_state.h"
#include "session/film.h"
#include "session/race_disp.h"

namespace keelview {

/// What follows the pointer over the graphs: three short cursors on the compass chart (the direction under
/// the pointer less and plus the upwind lay line angle, and its reciprocal), and the time and what is under
/// it there: direction or speed, and the boat whose line it is.
class GraphCursors {
  public:
    GraphCursors(const AppState& app, RaceDisp& form, Film& film, const BoatGraphs& graphs);

  private:
    void GPIC_MouseMove(const MouseEvent& event);
    void HideCursors();
    void PlaceCursors(double x, double y);
    void TellWhatIsAt(const Point& at);
    std::string TextAt(const Point& at) const;

    const AppState& app_;
    RaceDisp& form_;
    Film& film_;
    const BoatGraphs& graphs_;
};

}  // namespace keelview
