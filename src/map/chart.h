#pragma once

#include "session/app_state.h"
#include "session/race_disp.h"

namespace keelview {

/// The standing picture of the map: coast, grid, tracks, scale bar, time points, marks, lines and lay
/// lines. What moves with the clock is painted over it by the frame. Whole tracks and coasts are drawn in
/// milliseconds, so drawing lets no events in.
class Chart {
  public:
    Chart(AppState& app, RaceDisp& form, Services& services);

    /// Clears the map and draws coast, grid (in auto trace), tracks (otherwise) and the scale bar. Applies
    /// the snap to the whole chart first, brings the view's scales up to date, writes the plain title back,
    /// and reads the coast while none is held.
    void DrawBaseChart();

    /// A disk for each focused boat at every 60 seconds of the replay range, while Check1 "TimeMk" is
    /// ticked; the colour tells the minute. Starts Timer1 at its end, whatever stopped it.
    void DrawTimePoints();

    /// Marks, lines, lay lines and the pass clock, over what is there.
    void DrawCourse();

    /// All three, in their order.
    void DrawAll();

    /// Gives BoatColour its entries 1 to 50: fifteen colours, again and again.
    static void SetBoatPalette(DisplayState& display);

  private:
    void DrawCoast();
    void DrawGrid(double spacing);
    void DrawTracks();
    void DrawTrack(int boat);
    void DrawScaleBar(const ScaleBar& bar);
    void DrawTimePoint(int boat, double t);
    void DrawMark(int mark);
    void DrawLine(int line);
    void DrawLayLines(const ScreenPoint& from, double first, double layAngle);
    void DrawEntryDisk(const ScreenPoint& at);
    void DrawEntryLabel(const std::string& label, const ScreenPoint& at, double points);
    void DrawPassClock(const std::string& label, const ScreenPoint& at);
    void ReadCoast();

    AppState& app_;
    RaceDisp& form_;
    Services& services_;
};

}  // namespace keelview
