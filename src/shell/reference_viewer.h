#pragma once

#include "display/control.h"
#include "display/form.h"
#include "session/app_state.h"

namespace keelview {

/// The list of a race's reference documents `RefFm`: a click hands one to the system and ends the visit.
class RefFm : public Form {
  public:
    RefFm(const AppState& app, Services& services);

    ListBox List1;    // one row per attachment, in file order
    Button Command1;  // "CANCEL"

  private:
    void List1_Click();
    void WaitForViewer(double openedAt);

    const AppState& app_;
    Services& services_;
};

}  // namespace keelview
