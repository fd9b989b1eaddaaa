#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "base/bilingual.h"
#include "base/one_based.h"
#include "display/hint_box.h"
#include "session/instrument.h"
#include "session/race_session.h"

namespace keelview {

/// The list of boats: name, speed and wind angle of each at the moment, and the way to pick some out. The
/// boats that are ticked are in focus. The pointer on a row or on a boat of the map names the boat. Over
/// the list the panel rises, elsewhere in its column it sinks. A fleet that has more boats than the list
/// has rows is scrolled, by its bar, by the wheel, and by the keyboard that comes to the first or last row.
class BoatList : public Instrument {
  public:
    explicit BoatList(RaceSession& session);

    /// Fills the rows for a race that was loaded; all boats are in focus and without a ring when they are
    /// others than before.
    void Repaint(Changed changed) override;
    /// The date and time of the moment, the speed bars and numbers of all boats, and the names that stand
    /// beside boats of the map. A boat without speed keeps the numbers that it came with.
    void Show(const Moment& now) override;

  private:
    /// The numbers of a boat's row.
    struct Numbers {
        double Speed = 0.0;      ///< knots, above 0
        double WindAngle = 0.0;  ///< degrees
    };

    void ConnectRows();
    void ConnectBoats();
    void FillRows();
    void PrintTitles();
    bool TakeNumbers(int boat, const BoatMoment& moment);
    void ShowNumbers(int row);
    void ShowTicks();

    void Bnam_Click(int row);
    void Bnam_MouseUp(int row, MouseButton button);
    void Bnam_MouseMove(int row);
    void Maru_Click(int row);
    void Maru_MouseMove(int row);
    void Row_TabbedTo(int row, ControlArray<CheckBox>& boxes);
    void VScroll1_Change();
    void Boat_MouseMove(int boat);
    void Label5_Click();
    void Label5_MouseMove();
    void Picture5_MouseMove();
    void Picture7_MouseMove();
    void Picture8_MouseMove();
    void Form_MouseMove();
    void FocusOn(const std::function<bool(int boat)>& inFocus);
    void EnterPanel();
    void HideHints();
    void ShowListHint(const Text& hint, const HintPlace& place);
    void PointAtBoat(int boat);
    void PlaceLabel(int boat);
    void PlaceHint();
    void Hover(int boat);
    std::string LabelOf(int boat) const;

    AppState& app_;
    RaceDisp& form_;
    Stage& stage_;
    Film& film_;
    const Voice& voice_;
    bool focusing_ = false;                     ///< the program itself ticks boats
    OneBased<std::optional<Numbers>> numbers_;  ///< by boat, as a row has them
    int firstBoat_ = 1;                         ///< in the first row
    int hintBoat_ = 0;  ///< the boat that the hint box names on the map; 0 while it tells something else
    std::string hint_;  ///< of that boat
};

}  // namespace keelview
