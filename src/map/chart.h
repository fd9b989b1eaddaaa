#pragma once

#include "analysis/view.h"
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
    /// Draws the course again over the chart when the wind of the wind file has turned, with its lay lines;
    /// once in five seconds of the replay at most.
    void Show(const Moment& now) override;

  private:
    void DrawGround(const Projection& projection);
    void DrawGrid(const Projection& projection, double spacing);
    void DrawTracks(const Projection& projection);
    void DrawTrack(int boat, const Projection& projection);
    void DrawScaleBar(double pixelsPerMetre);
    void DrawTimePoints(const Projection& projection);
    void DrawCourseNow();

    const AppState& app_;
    RaceDisp& form_;
    int lastWholeSecond_ = 0;  ///< of the last moment shown
    double courseWind_ = 0.0;  ///< degrees, of the lay lines as they were drawn last
};

}  // namespace keelview
