#pragma once

#include <optional>

#include "map/map_tool.h"
#include "session/app_state.h"
#include "session/race_disp.h"

namespace keelview {

/// Range and bearing on the map, Check2: a left click sets the point to measure from, the readout follows
/// the pointer, any other button ends it by taking the tick away.
class Measure : public MapTool {
  public:
    Measure(const AppState& app, RaceDisp& form);

    Click Press(const MouseEvent& event, const Position& at) override;
    void Follow(const MouseEvent& event, const Position& at) override;
    void Leave() override;

  private:
    const AppState& app_;
    RaceDisp& form_;
    std::optional<Position> start_;  ///< measured from here
};

}  // namespace keelview
