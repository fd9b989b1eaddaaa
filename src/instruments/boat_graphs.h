#pragma once

#include <optional>
#include <vector>

#include "base/one_based.h"
#include "instruments/graph_axes.h"
#include "instruments/graph_line.h"
#include "instruments/time_axis.h"
#include "session/app_state.h"
#include "session/instrument.h"
#include "session/race_disp.h"

namespace keelview {

/// The graphs GPIC: two strip charts side by side with time running up the page. Left the course over
/// ground of each boat on a compass axis placed by the race's wind, right its speed, both as they are or as
/// means over the seconds that a person chooses (Option13, Option14, Option15); with a wind file the wind's
/// direction lies over the left chart and its speed under the right one. Of what is drawn nothing follows
/// the clock but a horizontal line.
class BoatGraphs : public Instrument {
  public:
    BoatGraphs(const AppState& app, RaceDisp& form);

    /// While the graphs are shown: draws everything, boats in focus over the others. A race without a span
    /// gets axes without anything placed in time.
    void Repaint(Changed changed) override;
    /// Moves the line Line1 of the moment, unless the time bar has it under its pointer.
    void Show(const Moment& now) override;

    TimeAxis Times() const { return {app_.race, form_.GPIC.Height()}; }
    CompassAxis Compass() const { return {app_.race, form_.GPIC.Width()}; }
    SpeedAxis Speeds() const { return {form_.GPIC.Width(), fastest_.value_or(0)}; }
    /// The boat whose line on either chart lies under a point, the nearest one; nothing where none is near.
    std::optional<int> BoatUnder(const Point& at) const;

  private:
    /// Along the course of the boats, or along their speed.
    enum class Chart { Course, Speed };
    struct BoatLines {
        GraphLine Course, Speed;
    };
    struct CurvePoint {
        double Time;          // seconds from the start
        float Course, Speed;  // degrees true and knots, smoothed as a person chose
    };
    void Draw();
    void PlaceControls();
    double Fastest() const;
    void DrawGround();
    void DrawWindSpeed();
    void DrawDirectionGrid();
    void DrawSpeedGrid();
    void DrawTimeGrid();
    void PutLinesTogether();
    std::vector<CurvePoint> CurveOf(int boat) const;
    BoatLines LinesOf(int boat) const;
    void DrawBoats();
    void DrawWindDirection(double turn, Colour colour);
    void DrawStartAndFinish();
    double DistanceTo(int boat, Chart chart, const Point& at) const;
    double SmoothingSeconds() const;
    double ChartBottom() const;

    const AppState& app_;
    RaceDisp& form_;
    /// What the lines show, by boat; kept while the graphs are shown, so that another size is but drawn.
    OneBased<std::vector<CurvePoint>> curves_;
    OneBased<BoatLines> lines_;  ///< as they are drawn in whatever colour, by boat
    /// Knots that the speeds reach, of boats and half the wind's; nothing until it is asked for.
    std::optional<double> fastest_;
};

}  // namespace keelview
