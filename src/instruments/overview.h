#pragma once

#include "analysis/view.h"
#include "session/app_state.h"
#include "session/race_disp.h"

namespace keelview {

/// The overview Picture6: all tracks and the coast at a fixed scale around the home centre, turned as the
/// map is, with a small marker BoatS for each boat. The surface has a scale of its own, 15 units high
/// whatever its size; sprites on it stand in pixels.
class Overview {
  public:
    Overview(AppState& app, RaceDisp& form);

    /// Clears the overview and draws every track and the coast anew, in the turn of the last RefreshScales.
    /// Starts Timer1 at its end, whatever stopped it.
    void DrawOverviewMap();

    /// Where a position (minutes of arc) lies on the overview, in pixels of its drawing area. Holds from
    /// the first DrawOverviewMap of a race on.
    ScreenPoint ToOverview(double lat, double lon) const;

    /// The position under a point of the overview in its own units, as mouse events tell it: the way back.
    MapPosition FromOverview(double x, double y) const;

    /// The point that everything turns about, in the overview's own units.
    ScreenPoint Centre() const { return {centreX_, centreY_}; }

    /// Shows the marker of a boat (from 1) at the boat's position at the replay time.
    void PlaceMarker(int boat);
    /// Shows the marker of a boat (from 1) at another position (minutes of arc).
    void PlaceMarkerAt(int boat, double lat, double lon);
    void HideMarker(int boat);

  private:
    ScreenPoint ToUnits(double lat, double lon) const;
    void DrawTrack(int boat);
    void DrawCoast();

    AppState& app_;
    RaceDisp& form_;
    double latScale_ = 1.0;  ///< units per minute of latitude
    double lonScale_ = 1.0;  ///< units per minute of longitude
    double centreX_ = 0.0;   ///< units
    double centreY_ = 0.0;
    double unitX_ = 1.0;  ///< pixels of a unit to the right
    double unitY_ = 1.0;  ///< pixels of a unit downward
};

}  // namespace keelview
