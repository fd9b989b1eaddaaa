#pragma once

#include "display/control.h"
#include "display/form.h"
#include "session/app_state.h"

namespace keelview {

/// Seconds that the display stays blocked while the viewer of a document comes up.
inline constexpr double ViewerSeconds = 5.0;

/// The list of a race's reference documents `RefFm`, shown modal: a click hands one to the system and ends
/// the visit after `viewerSeconds`.
class ReferenceViewer : public Form {
  public:
    ReferenceViewer(const Settings& settings, const RaceControl& race, Services& services,
                    double viewerSeconds = ViewerSeconds);

    ListBox List1{*this, "List1"};       // one row per attachment, in file order
    Button Command1{*this, "Command1"};  // "CANCEL"

  private:
    void List1_Click();
    void WaitForViewer() const;

    const Settings& settings_;
    const RaceControl& race_;
    Services& services_;
    double viewerSeconds_;
};

}  // namespace keelview
