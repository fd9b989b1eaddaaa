#pragma once

#include <string>

#include "session/race_session.h"

namespace keelview {

/// Start and finish of the race, as the person types them into Text9 and Text10 and confirms with Command4:
/// checked against the tracks, offered to be saved, and loaded anew.
class TimeSetting {
  public:
    explicit TimeSetting(RaceSession& session);

  private:
    void Command4_Click();
    bool TimesPass() const;
    std::string AskForName() const;

    RaceSession& session_;
    const AppState& app_;
    RaceDisp& form_;
    const Voice& voice_;
};

}  // namespace keelview
