#pragma once

#include "session/app_state.h"
#include "session/race_disp.h"
#include "session/stage.h"

namespace keelview {

/// What a person does on the data page: choose the table, drag a page that is higher than its place, and
/// leave it.
class DataView {
  public:
    DataView(AppState& app, RaceDisp& form, Stage& stage);

    /// Shows the page with the chosen table, from its top.
    void ShowPage();

  private:
    void Command11_Click();
    void PicTime_MouseDown(const MouseEvent& event);
    void PicTime_MouseMove(const MouseEvent& event);

    AppState& app_;
    RaceDisp& form_;
    Stage& stage_;
    ViewKind prevViewMode_ = ViewKind::Map;  ///< in which ShowPage last began: Data after another table
    double dragY_ = 0.0;                     ///< y on the page where the drag began, 0 while there is none
};

}  // namespace keelview
