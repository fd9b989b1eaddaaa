#pragma once

#include "map/chart.h"
#include "map/course_setting.h"
#include "map/measuring.h"
#include "map/replay_frame.h"
#include "session/app_state.h"
#include "session/race_disp.h"

namespace keelview {

/// The mouse on the map. It measures while Check2 is ticked; sets marks, lines and the course in the modes
/// of CourseSetting; moves the view with Shift; zooms otherwise.
class MapInteraction {
  public:
    MapInteraction(AppState& app, RaceDisp& form, Services& services, Chart& chart, ReplayFrame& frame);

    /// After each load of a race: what was begun on the race before is given up.
    void RaceLoaded();

  private:
    void Picture1_MouseDown(const MouseEvent& event);
    void Picture1_MouseMove(const MouseEvent& event);
    void MoveView(MouseButton button, const MapPosition& at);
    void Zoom(MouseButton button, const MapPosition& at);
    void ShowAround(const MapPosition& centre);
    MapPosition Home() const;
    void ShowPosition(const MapPosition& at);
    void ShowMapHint(const MouseEvent& event);

    AppState& app_;
    RaceDisp& form_;
    Chart& chart_;
    ReplayFrame& frame_;
    CourseSetting course_;
    Measuring measuring_;
};

}  // namespace keelview
