#pragma once

#include <optional>

#include "base/point.h"
#include "instruments/leg_tables.h"
#include "session/app_state.h"
#include "session/race_session.h"

namespace keelview {

/// What a person does on the data page: choose the table, drag a page that is larger than its place, or
/// scroll it by its bars or the wheel, have times told as h:mm:ss by a click on the head, read what is
/// under the pointer, go to the moment and place of a rounding by a click on its cell, put a wrong time
/// right by the right button (in EditMode), and leave the page.
class DataView {
  public:
    DataView(RaceSession& session, LegTables& tables);

    /// Shows the page with the chosen table, from its top.
    void ShowPage();

  private:
    void Command11_Click();
    void PicTime_MouseDown(const MouseEvent& event);
    void PicTime_MouseMove(const MouseEvent& event);
    void PicTime_MouseUp(const MouseEvent& event);
    void ScrollBy(double down, double across = 0.0);
    void TellWhatIsAt(const Point& at);
    void GoTo(const StatCell& cell);
    void PutRight(const StatCell& cell);

    RaceSession& session_;
    AppState& app_;
    RaceDisp& form_;
    Stage& stage_;
    RaceChanges& changes_;
    const Voice& voice_;
    LegTables& tables_;
    ViewKind prevViewMode_ = ViewKind::Map;  ///< in which ShowPage last began: Data after another table
    std::optional<Point> dragFrom_;          ///< where on the page the press or its last move was
    bool dragged_ = false;                   ///< the press became a drag
};

}  // namespace keelview
