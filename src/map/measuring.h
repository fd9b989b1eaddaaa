#pragma once

#include <optional>

#include "analysis/view.h"
#include "session/app_state.h"
#include "session/race_disp.h"

namespace keelview {

/// Range and bearing on the map, Check2: a left click sets the point to measure from, the readout follows
/// the pointer, any other button ends it.
class Measuring {
  public:
    Measuring(AppState& app, RaceDisp& form);

    void Click(MouseButton button, const MapPosition& at);
    /// The pointer moves: rubber band and readout from the point of the last click, if there is one.
    void Follow(const MouseEvent& event, const MapPosition& at);
    /// There is nothing to measure from any more.
    void Forget() { start_.reset(); }

  private:
    void Check2_Click();

    AppState& app_;
    RaceDisp& form_;
    std::optional<MapPosition> start_;  ///< measured from here
};

}  // namespace keelview
