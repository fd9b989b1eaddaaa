#pragma once

#include "session/app_state.h"
#include "session/race_disp.h"

namespace keelview {

/// The wind's instruments on the map: the compass Picture2 with north and the wind of the moment as they
/// lie relative to the top of the screen, Text13 and Text14 with the wind's direction (magnetic) and speed,
/// and the wind graph sWind of the whole race with a cross that follows the replay.
class WindPanel {
  public:
    WindPanel(AppState& app, RaceDisp& form);

    /// Brings the wind of the moment and all that shows it up to ReplayTime. Before the first sample and
    /// after the last the nearest one holds. A wind file without samples gives the race's own wind; without
    /// a wind file WindNow stays.
    void UpdateWindPanel();

    /// Draws the wind graph of the race and places it below the compass.
    void DrawWindGraph();

    /// Shows graph and readouts of a race with a wind file, and hides them for one without; at race load.
    void ShowForRace();

    /// Shows the graph if it is hidden, hides it if it is shown; without a wind file it stays hidden.
    void ToggleWindGraph();

    /// Puts the graph below the compass, as wide and as high as the compass is wide.
    void PlaceWindGraph();

    /// True if the race has a wind file.
    bool HasWindFile() const { return !app_.race.WindFileName.empty(); }

  private:
    bool HasSamples() const { return HasWindFile() && app_.wind.WindCount > 0; }
    void TakeWindOfMoment();
    void ShowReadouts();
    void DrawNorthNeedle();
    void DrawWindArrow();
    void ScaleWindGraph();
    void DrawGraphLine();
    void DrawGraphGrid();
    void MoveCross();
    double GraphX(double direction) const;
    double GraphY(double time) const;

    AppState& app_;
    RaceDisp& form_;
    double side_ = 0.0;       ///< pixels, side of the wind graph
    double centreDir_ = 0.0;  ///< degrees magnetic at the middle of the graph
    double degScale_ = 0.0;   ///< pixels per degree
    double timeScale_ = 0.0;  ///< pixels per second
};

}  // namespace keelview
