#pragma once

#include "instruments/boat_graphs.h"
#include "instruments/leg_tables.h"
#include "map/chart.h"
#include "session/app_state.h"
#include "session/race_disp.h"

namespace keelview {

/// The three views in the place of the map: Option9 the map, Option10 the graphs, Option11 the data page.
/// The film runs on behind map and graphs and stands still behind the data page.
class ViewSwitch {
  public:
    ViewSwitch(AppState& app, RaceDisp& form, Chart& chart, BoatGraphs& graphs, LegTables& tables);

    /// Draws the view that is shown anew, as after a change of the boats in focus.
    void RedrawView();

  private:
    void Option9_Click();
    void Option10_Click();
    void Option11_Click();
    void EndMeasuring();

    AppState& app_;
    RaceDisp& form_;
    Chart& chart_;
    BoatGraphs& graphs_;
    LegTables& tables_;
};

}  // namespace keelview
