#pragma once

#include "map/map_tool.h"
#include "session/app_state.h"
#include "session/race_disp.h"
#include "session/stage.h"
#include "session/voice.h"

namespace keelview {

/// The mouse without another tool: the left button enlarges around the pointer, any other one shrinks; with
/// Shift the left one moves the view, any other one brings it home.
class Navigate : public MapTool {
  public:
    Navigate(AppState& app, RaceDisp& form, Stage& stage, const Voice& voice);

    Click Press(const MouseEvent& event, const Position& at) override;
    void Follow(const MouseEvent& event, const Position& at) override;

  private:
    void Zoom(MouseButton button, const Position& at);
    void ShowAround(const Position& centre, double zoom);
    Position Home() const;
    void ShowMapHint(const MouseEvent& event);

    View& view_;
    const TrackArea& area_;
    const EarthScale& scale_;
    RaceDisp& form_;
    Stage& stage_;
    const Voice& voice_;
};

}  // namespace keelview
