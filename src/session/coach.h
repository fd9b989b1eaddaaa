#pragma once

#include <atomic>
#include <memory>
#include <optional>

#include "analysis/coach_answers.h"
#include "base/background.h"
#include "session/app_state.h"
#include "session/instrument.h"
#include "session/race_disp.h"
#include "session/stage.h"

namespace keelview {

/// What the open race answers to a coach, worked out beside the film once somebody asks.
class Coach : public Instrument {
  public:
    Coach(const AppState& app, RaceDisp& form, Stage& stage);

    /// The answers; nothing as long as they are being worked out, which the first asking begins.
    /// Changed::Answers tells that they are there, or that their work has come on.
    const CoachAnswers* Answers();
    /// The answers where somebody has asked for them and they are there.
    const CoachAnswers* Known() const { return answers_ ? &*answers_ : nullptr; }
    /// How far the work has come, 0 to 1.
    double ShareDone() const { return share_; }
    /// Lets the answers go, and the work on them, before the race's tracks change.
    void Forget();

    void Repaint(Changed changed) override;

  private:
    void Timer5_Timer();

    const AppState& app_;
    Timer& timer_;
    Stage& stage_;
    std::optional<CoachAnswers> answers_;
    std::atomic<double> share_ = 0.0;
    std::unique_ptr<CoachWork> work_;
    std::unique_ptr<Background> background_;  // goes before what it works on
};

}  // namespace keelview
