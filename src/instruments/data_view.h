#pragma once

#include <optional>

#include "instruments/data_page.h"
#include "session/app_state.h"
#include "session/race_session.h"

namespace keelview {

/// What a person does on the data page: choose the table, drag a page that is higher than its place, or
/// scroll it by its bar or the wheel, go to the moment and place of a rounding by a click on its cell, put
/// a wrong time right by the right button (in EditMode), and leave the page.
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
    void VScroll2_Change();
    void ScrollBy(double pixels);
    void GoTo(const StatCell& cell);
    void PutRight(const StatCell& cell);

    AppState& app_;
    RaceDisp& form_;
    Stage& stage_;
    Film& film_;
    RaceChanges& changes_;
    const Voice& voice_;
    ViewKind prevViewMode_ = ViewKind::Map;  ///< in which ShowPage last began: Data after another table
    std::optional<double> dragY_;            ///< y on the page where the drag began
    bool dragged_ = false;                   ///< the press became a drag
};

}  // namespace keelview
