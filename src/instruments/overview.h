#pragma once

#include "analysis/view.h"
#include "session/app_state.h"
#include "session/instrument.h"
#include "session/race_disp.h"

namespace keelview {

/// The overview Picture6: all tracks and the coast at a fixed scale around the home centre, turned as the
/// map is, with a small marker BoatS for each boat. The surface has a scale of its own, 15 units high
/// whatever its size; sprites on it stand in pixels.
class Overview : public Instrument {
  public:
    Overview(const AppState& app, RaceDisp& form) : app_(app), form_(form) {}

    /// Draws all tracks and the coast anew for another race, in other colours and in another turn; a map
    /// that only moves or zooms costs nothing here.
    void Repaint(Changed changed) override;
    /// Moves the markers, unless the time bar has them for the moment under its pointer.
    void Show(const Moment& now) override;

    /// From positions to the overview's own units, in which its mouse events tell their place too.
    const Projection& InUnits() const { return projection_; }

    /// Shows where the boats are at another moment, seconds from the start: each at the fix before it.
    void PreviewMoment(int time);

  private:
    void ReadyMarkers();
    void PlaceMarker(int boat, const Position& at);
    void HideMarker(int boat);
    void Draw();

    const AppState& app_;
    RaceDisp& form_;
    Projection projection_;
    Point pixelsPerUnit_{1.0, 1.0};  ///< to the right and downward
    double drawnUp_ = 0.0;           ///< degrees, the direction at the top of what is drawn
};

}  // namespace keelview
