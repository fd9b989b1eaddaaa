#pragma once

#include "instruments/boat_graphs.h"
#include "map/chart.h"
#include "map/instruments.h"
#include "session/app_state.h"
#include "session/race_disp.h"

namespace keelview {

/// The wind field Text3 on the map: the wind direction of the race. What a person sets there, by typing or
/// by turning the overview, is drawn everywhere and saved at once; what a load writes there does nothing.
class WindField {
  public:
    WindField(AppState& app, RaceDisp& form, Services& services, Chart& chart, Instruments& instruments,
              BoatGraphs& graphs);

  private:
    void Text3_MouseDown();
    void Text3_Change();
    void RedrawAll();

    AppState& app_;
    RaceDisp& form_;
    Services& services_;
    Chart& chart_;
    Instruments& instruments_;
    BoatGraphs& graphs_;
};

}  // namespace keelview
