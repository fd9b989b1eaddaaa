#pragma once

#include "session/race_session.h"

namespace keelview {

/// "Find the race" (Command19): looks for the race in the tracks, tells what was found and why, and fills
/// it into the open race where the person says so.
class RaceSearch {
  public:
    explicit RaceSearch(RaceSession& session);

  private:
    void Command19_Click();

    RaceSession& session_;
    const AppState& app_;
    const Voice& voice_;
};

}  // namespace keelview
