#pragma once

#include <vector>

#include "instruments/hint_table.h"
#include "session/app_state.h"
#include "session/race_disp.h"

namespace keelview {

/// The hints of the control panel: a control tells what it is for as soon as the pointer moves over it, in
/// Text7, until the pointer reaches something that hides the box. A grey one tells why it is grey.
class Hints {
  public:
    Hints(const RaceControl& race, const Settings& settings, RaceDisp& form);

  private:
    void ShowHintOf(const ControlHint& hint);
    void ShowGreyHintOf(const Control& grey);
    bool MayShow(const ControlHint& hint) const;

    const RaceControl& race_;
    const Settings& settings_;
    RaceDisp& form_;
    std::vector<ControlHint> hints_;
    std::vector<ControlHint> greyHints_;
};

}  // namespace keelview
