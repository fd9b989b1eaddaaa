#pragma once

#include "map/map_tool.h"
#include "session/app_state.h"
#include "session/race_changes.h"
#include "session/race_disp.h"

namespace keelview {

/// Command5: clicks put marks and lines in order, whatever the button. The course stands in a panel on the
/// map meanwhile, whose Command8 empties it. With Shift a mark is joined to the one before it to a gate, on
/// the map and in the panel, where Shift takes a gate apart, too.
class OrderCourse : public MapTool {
  public:
    OrderCourse(const AppState& app, RaceDisp& form, RaceChanges& changes);

    Click Press(const MouseEvent& event, const Position& at) override;
    /// The name of what a click would take.
    void Follow(const MouseEvent& event, const Position& at) override;
    void Enter() override;
    void Leave() override;

    /// Shows the course as it is now in its panel.
    void ShowCoursePanel();

  private:
    void List1_MouseDown(const MouseEvent& event);
    void List1_MouseMove();

    const AppState& app_;
    RaceDisp& form_;
    RaceChanges& changes_;
};

}  // namespace keelview
