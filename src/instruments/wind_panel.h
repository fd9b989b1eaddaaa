#pragma once

#include <span>

#include "session/app_state.h"
#include "session/coach.h"
#include "session/instrument.h"
#include "session/race_disp.h"

namespace keelview {

/// The wind's instruments on the map: the compass Picture2 with north and the wind of the moment as they
/// lie relative to the top of the screen, Text13 and Text14 with the wind's direction (magnetic) and speed,
/// and the wind graph sWind of the whole race with a cross that follows the replay. Once the wind has been
/// estimated from the tracks, the graph shows it with its band beside the measured one.
class WindPanel : public Instrument {
  public:
    WindPanel(const AppState& app, RaceDisp& form, const Coach& coach)
        : app_(app), form_(form), coach_(coach) {}

    /// Graph and readouts are there for a race with a wind file, and hidden for one without; another race
    /// begins with its graph shown.
    void Repaint(Changed changed) override;
    /// Brings compass, readouts and cross up to the moment: once in a second of a race with a wind file,
    /// and where something else has changed.
    void Show(const Moment& now) override;

    /// Shows the graph if it is hidden, hides it if it is shown; without a wind file it stays hidden.
    void ToggleWindGraph();

  private:
    bool HasSamples() const { return HasWindFile(app_.race) && !app_.wind.Empty(); }
    void ShowForRace();
    void ShowReadouts(const Wind& wind);
    void DrawNorthNeedle();
    void DrawWindArrow(const Wind& wind);
    void DrawWindGraph();
    void ScaleWindGraph();
    std::span<const WindEstimateSample> Estimated() const;
    double MagneticOf(const WindEstimateSample& sample) const;
    void DrawEstimate();
    void DrawGraphLine();
    void DrawGraphGrid();
    void MoveCross(const Moment& now);
    double GraphX(double direction) const;
    double GraphY(double time) const;

    const AppState& app_;
    RaceDisp& form_;
    const Coach& coach_;
    bool windGraphOn_ = false;
    bool stale_ = true;       ///< what shows the moment is that of another race, wind or colour
    int drawnSecond_ = 0;     ///< of the race clock, in the last drawing of the moment
    double drawnUp_ = 0.0;    ///< degrees, the direction at the top of it
    double side_ = 0.0;       ///< pixels, side of the wind graph
    double centreDir_ = 0.0;  ///< degrees magnetic at the middle of the graph
    double degScale_ = 0.0;   ///< pixels per degree
    double timeScale_ = 0.0;  ///< pixels per second
};

}  // namespace keelview
