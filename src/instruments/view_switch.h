#pragma once

#include "instruments/data_view.h"
#include "instruments/wind_entry.h"
#include "session/race_session.h"

namespace keelview {

/// The three views in the place of the map: Option9 the map, Option10 the graphs, Option11 the data page.
/// The film runs on behind map and graphs and stands still behind the data page.
class ViewSwitch {
  public:
    ViewSwitch(RaceSession& session, DataView& dataView, WindEntry& windEntry);

  private:
    void Option9_Click();
    void Option10_Click();
    void Option11_Click();
    void ShowInPlaceOfPage(ViewKind view);
    void EndMeasuring();

    AppState& app_;
    RaceDisp& form_;
    Stage& stage_;
    Film& film_;
    DataView& dataView_;
    WindEntry& windEntry_;
};

}  // namespace keelview
