#pragma once

#include "instruments/data_page.h"
#include "session/app_state.h"
#include "session/race_session.h"

namespace keelview {

/// What a person does on the data page: choose the table, drag a page that is higher than its place, go to
/// the moment and place of a rounding by a click on its cell, put a wrong time right by the right button
/// (in EditMode), and leave the page.
class DataView {
  public:
    explicit DataView(RaceSession& session);

    /// Shows the page with the chosen table, from its top.
    void ShowPage();

  private:
    void Command11_Click();
    void PicTime_MouseDown(const MouseEvent& event);
    void PicTime_MouseMove(const MouseEvent& event);
    void PicTime_MouseUp(const MouseEvent& event);
    void GoTo(const StatCell& cell);
    void PutRight(const StatCell& cell);

    AppState& app_;
    RaceDisp& form_;
    Stage& stage_;
    Film& film_;
    RaceChanges& changes_;
    const Voice& voice_;
    ViewKind prevViewMode_ = ViewKind::Map;  ///< in which ShowPage last began: Data after another table
    double dragY_ = 0.0;                     ///< y on the page where the drag began, 0 while there is none
    bool dragged_ = false;                   ///< the press became a drag
};

}  // namespace keelview
