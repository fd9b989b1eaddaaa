#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "display/hint_box.h"
#include "instruments/view_switch.h"
#include "session/app_state.h"
#include "session/race_disp.h"

namespace keelview {

/// The list of boats as a way to pick some out: the boats that are ticked are in focus. The pointer on a
/// row or on a boat of the map names the boat. Over the list the panel rises, elsewhere in its column it
/// sinks.
class BoatList {
  public:
    /// `views` draws what a change of focus shows.
    BoatList(AppState& app, RaceDisp& form, ViewSwitch& views);

    /// After each load of a race, when the rows and sprites of all boats stand.
    void ConnectRows();

  private:
    void Bnam_Click();
    void Bnam_MouseUp(int row, MouseButton button);
    void Bnam_MouseMove(int row);
    void Maru_Click();
    void Maru_MouseMove(int row);
    void Boat_MouseMove(int row);
    void Label5_Click();
    void Label5_MouseMove();
    void Picture5_MouseMove();
    void Picture7_MouseMove();
    void Picture8_MouseMove();
    void Form_MouseMove();
    void FocusOn(const std::function<bool(int row)>& inFocus);
    void EnterPanel();
    void PointAtNothing();
    void HideHints();
    void ShowListHint(std::string_view hint, const HintPlace& place);
    void PointAtBoat(int row);
    std::string NameAndSpeed(int row) const;
    Colour ColourOf(int row) const;

    AppState& app_;
    RaceDisp& form_;
    ViewSwitch& views_;
    bool focusing_ = false;  ///< the program itself ticks boats
};

}  // namespace keelview
