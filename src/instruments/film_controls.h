#pragma once

#include "session/race_session.h"

namespace keelview {

/// What a person plays the film with: Option6 forward, Option7 stop, Option8 backward, each of which acts
/// on every press, Command6 and Command7 by steps, HScroll1 the speed, which Text2 tells.
class FilmControls {
  public:
    explicit FilmControls(RaceSession& session);

  private:
    void Play(int direction);
    void Option7_Click();
    void Step(int direction);
    void HScroll1_Change();

    const AppState& app_;
    RaceDisp& form_;
    Film& film_;
    const Voice& voice_;
};

}  // namespace keelview
