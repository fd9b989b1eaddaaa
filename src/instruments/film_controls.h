#pragma once

#include "session/race_session.h"

namespace keelview {

/// What a person plays the film with: Option6 forward, Option7 stop, Option8 backward, each of which acts
/// on every press, Command6 and Command7 by steps, HScroll1 the speed, which Text2 tells.
class FilmControls {
  public:
    explicit FilmControls(RaceSession& session);

    /// Stops the film, or lets it go on the way it was played last.
    void PlayOrStop();
    /// Stops and moves by so many steps, back by a negative number.
    void Step(int steps);
    void GoToStart();
    /// The film stops there: it would begin anew.
    void GoToFinish();

  private:
    void Play(int direction);
    void Option7_Click();
    void HScroll1_Change();

    const AppState& app_;
    RaceDisp& form_;
    Film& film_;
    Stage& stage_;
    const Voice& voice_;
    bool backward_ = false;  ///< the way it was played last
};

}  // namespace keelview
