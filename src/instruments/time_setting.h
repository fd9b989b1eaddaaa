#pragma once

#include <string>

#include "session/app_state.h"
#include "session/race_disp.h"
#include "session/race_session.h"

namespace keelview {

/// Start and finish of the race, as the person types them into Text9 and Text10 and confirms with Command4:
/// checked against the tracks, offered to be saved, and loaded anew.
class TimeSetting {
  public:
    TimeSetting(AppState& app, Services& services, RaceSession& session);

  private:
    void Command4_Click();
    bool TimesPass() const;
    void TakeTimes();
    std::string AskForName();

    AppState& app_;
    RaceDisp& form_;
    Services& services_;
    RaceSession& session_;
};

}  // namespace keelview
