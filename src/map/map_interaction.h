#pragma once

#include "map/map_tool.h"
#include "map/measure.h"
#include "map/navigate.h"
#include "map/order_course.h"
#include "map/place_tools.h"
#include "session/instrument.h"
#include "session/race_session.h"

namespace keelview {

/// The mouse on the map, and the buttons that put a tool into its hand: Command2, Command3 and Command5 set
/// the course, Check2 measures. Pressed again, or when its work is done, the tool is put away, and the
/// mouse moves and zooms the view.
class MapInteraction : public Instrument {
  public:
    explicit MapInteraction(RaceSession& session);

    void Repaint(Changed changed) override;

  private:
    void Picture1_MouseDown(const MouseEvent& event);
    void Picture1_MouseMove(const MouseEvent& event);
    void Check2_Click();
    void EndMeasuring();
    void Toggle(MapTool& tool);
    void Use(MapTool& tool);
    void GiveUp();
    void ShowCourse();

    AppState& app_;
    RaceDisp& form_;
    Film& film_;
    Navigate navigate_;
    PlaceMark placeMark_;
    PlaceLine placeLine_;
    OrderCourse orderCourse_;
    Measure measure_;
    MapTool* tool_ = &navigate_;  ///< in hand
};

}  // namespace keelview
