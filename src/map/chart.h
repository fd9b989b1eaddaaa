#pragma once

#include "analysis/view.h"
#include "display/overlay.h"
#include "map/track_picture.h"
#include "session/app_state.h"
#include "session/instrument.h"
#include "session/race_disp.h"

namespace keelview {

/// The standing picture of the map: coast, grid (in auto trace) or tracks, scale bar, time points and the
/// course, drawn anew as a whole. What moves with the clock is painted over it. Whole tracks and coasts are
/// drawn in milliseconds, so drawing lets no events in.
class Chart : public Instrument {
  public:
    Chart(const AppState& app, RaceDisp& form);

    void Repaint(Changed changed) override;
    /// Draws the course in place of the one on the chart when the wind of the wind file has turned, so that
    /// its lay lines are those of the moment, to half a degree.
    void Show(const Moment& now) override;

  private:
    void DrawGround(const Projection& projection);
    void DrawGrid(const Projection& projection, double spacing);
    void DrawTracksInFocus(const Projection& projection);
    TrackPiece PieceOf(int boat) const;
    void DrawScaleBar(double pixelsPerMetre);
    void DrawTimePoints(const Projection& projection);
    void DrawCourseNow();

    const AppState& app_;
    RaceDisp& form_;
    Overlay course_;           ///< on a chart that stands still; in auto trace all is drawn all the time
    double courseWind_ = 0.0;  ///< degrees, of the lay lines as they were drawn last
};

}  // namespace keelview
