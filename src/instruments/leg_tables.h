#pragma once

#include "analysis/leg_statistics.h"
#include "session/app_state.h"
#include "session/instrument.h"
#include "session/race_disp.h"

namespace keelview {

/// The data page PicTime: a table of times, distances or speeds up to each entry beside one by leg, with
/// the difference charts below, or the factor analysis. Nothing on it follows the clock.
class LegTables : public Instrument {
  public:
    LegTables(const AppState& app, RaceDisp& form) : app_(app), form_(form) {}

    /// While the page is shown: draws it for the chosen option (Option1, Option4, Option5, Option12). The
    /// page goes back to its top, or stays where it is when nothing but the focus has changed; where
    /// it shows no boat in focus then, the first of them comes into view.
    void Repaint(Changed changed) override;

  private:
    /// The entries of the course that a number lies between; both the same where it counts from the start.
    struct Part {
        int From = 0;
        int To = 0;
    };
    void PlacePage(StatKind kind);
    void ScrollPage(StatKind kind, bool onlyFocus);
    void ShowHead(StatKind kind);
    void DrawHead(StatKind kind, double up, Surface& page);
    StatKind ChosenKind() const;
    void DrawTables(const LegStatistics& statistics);
    void DrawBoatRow(int boat);
    void DrawCumulativeTable(const LegStatistics& statistics);
    void DrawLegTable(const LegStatistics& statistics);
    void DrawColumn(const LegTable& table, StatKind kind, const Part& part, double right);

    const AppState& app_;
    RaceDisp& form_;
};

}  // namespace keelview
