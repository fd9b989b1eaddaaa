#pragma once

#include <optional>
#include <string>
#include <vector>

#include "analysis/leg_statistics.h"
#include "base/point.h"
#include "instruments/leg_charts.h"
#include "instruments/table_layout.h"
#include "session/app_state.h"
#include "session/instrument.h"
#include "session/race_disp.h"

namespace keelview {

/// The data page PicTime: a table of times, distances or speeds up to each entry beside one by leg, with
/// the difference charts below, or the factor analysis. Where it is larger than its place it is scrolled by
/// VScroll2 and HScroll3 while its head, its names and the options stand still. Nothing on it follows the
/// clock.
class LegTables : public Instrument {
  public:
    LegTables(const AppState& app, RaceDisp& form) : app_(app), form_(form) {}

    /// While the page is shown: draws it for the chosen option (Option1, Option4, Option5, Option12). The
    /// page goes back to its top, or stays where it is when nothing but the focus has changed; where
    /// it shows no boat in focus then, the first of them comes into view.
    void Repaint(Changed changed) override;
    /// Draws what the scroll bars have brought into view.
    void Draw();
    /// Times are told as h:mm:ss from now on, or as seconds again.
    void SwitchClock();

    /// The cell of either table that a point lies in.
    std::optional<StatCell> CellAt(const Point& at) const;
    /// A point lies in the head of the tables of times.
    bool InHead(const Point& at) const;
    /// What there is to tell of a point: the boat whose line of a chart lies there, or the numbers of a
    /// cell of the analysis. Empty elsewhere.
    std::string TextUnder(const Point& at) const;

  private:
    StatKind ChosenKind() const;
    bool Analyses() const { return statistics_.Kind == StatKind::Analysis; }
    void WorkOut();
    void PlacePage();
    void ScrollPage(bool onlyFocus);
    PageView View() const;
    double RowTop(int boat) const;
    double RowPitch() const;
    double HeadBottom() const;
    double ChartTop() const;
    void DrawTables();
    void DrawColumn(const TableLayout::Column& column);
    void DrawNames();
    void DrawHead();
    std::string_view Title(bool byLeg) const;

    const AppState& app_;
    RaceDisp& form_;
    bool asClock_ = false;
    LegStatistics statistics_;
    std::optional<FactorAnalysis> factors_;
    TableLayout layout_;
    std::vector<ChartLine> lines_;
};

}  // namespace keelview
