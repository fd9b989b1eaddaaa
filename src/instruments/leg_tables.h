#pragma once

#include "analysis/leg_statistics.h"
#include "session/app_state.h"
#include "session/race_disp.h"

namespace keelview {

/// The data page PicTime: a table of times, distances or speeds up to each entry beside one by leg, with
/// the difference charts below, or the factor analysis. Nothing on it follows the clock.
class LegTables {
  public:
    LegTables(AppState& app, RaceDisp& form, Services& services);

    /// Shows the page and draws it for the chosen option (Option1, Option4, Option5, Option12). Works the
    /// passes out anew while StatsReady is false. The page goes back to its top.
    void ShowLegStatistics();

    /// The view in which ShowLegStatistics last began: Data after a change of table on the page.
    ViewKind PrevViewMode() const { return prevViewMode_; }

    /// Height of the page in pixels: room for all boats and the charts, at least that of the map.
    double StatPageHeight() const;

  private:
    void PlacePage();
    void RefreshPasses();
    StatKind ChosenKind() const;
    void DrawTables(const LegStatistics& statistics);
    void DrawBoatRow(int boat);
    void DrawCumulativeTable(const LegStatistics& statistics);
    void DrawLegTable(const LegStatistics& statistics);
    void DrawColumn(const LegTable& table, StatKind kind, int entry, double right);

    AppState& app_;
    RaceDisp& form_;
    Services& services_;
    ViewKind prevViewMode_ = ViewKind::Map;
};

}  // namespace keelview
