#pragma once

#include <optional>

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
/// mouse moves and zooms the view. Whatever is in hand, a drag moves the map, which ends auto trace, and
/// the wheel zooms around the pointer, in auto trace the zoom that follows.
class MapInteraction : public Instrument {
  public:
    explicit MapInteraction(RaceSession& session);

    void Repaint(Changed changed) override;

    /// Puts the tool away, and what was begun with it. False where none was in hand.
    bool PutToolAway();

  private:
    /// A button that is held on the map since `Event`, where it met `Place`.
    struct HeldButton {
        MouseEvent Event;
        Position Place;
        bool Drags = false;
    };

    void Picture1_MouseDown(const MouseEvent& event);
    void Picture1_MouseMove(const MouseEvent& event);
    void Picture1_MouseUp(const MouseEvent& event);
    void Picture1_Wheel(const WheelEvent& turn);
    void ClickAt(const MouseEvent& event, const Position& at);
    bool FollowDrag(const MouseEvent& event);
    void BeginDrag(HeldButton& held);
    void LetGo();
    void Check2_Click();
    void EndMeasuring();
    void Toggle(MapTool& tool);
    void Use(MapTool& tool);
    void GiveUp();
    void ShowCourse();

    AppState& app_;
    RaceDisp& form_;
    Film& film_;
    Stage& stage_;
    Navigate navigate_;
    PlaceMark placeMark_;
    PlaceLine placeLine_;
    OrderCourse orderCourse_;
    Measure measure_;
    MapTool* tool_ = &navigate_;  ///< in hand
    std::optional<HeldButton> held_;
};

}  // namespace keelview
