#include "session/coach.h"

namespace keelview {

namespace {

constexpr int LookMilliseconds = 100;

}  // namespace

Coach::Coach(const AppState& app, RaceDisp& form, Stage& stage)
    : app_(app), timer_(form.Timer5), stage_(stage) {
    timer_.SetInterval(LookMilliseconds);
    timer_.OnTimer = [this] { Timer5_Timer(); };
}

const CoachAnswers* Coach::Answers() {
    if (answers_) return &*answers_;
    if (!work_) {
        share_ = 0.0;
        work_ = std::make_unique<CoachWork>(app_);
        background_ = std::make_unique<Background>([this] {
            work_->DoNext();
            share_ = work_->ShareDone();
            return !work_->IsDone();
        });
        timer_.SetEnabled(true);
    }
    return nullptr;
}

void Coach::Forget() {
    timer_.SetEnabled(false);
    background_.reset();
    work_.reset();
    answers_.reset();
}

void Coach::Repaint(Changed changed) {
    if (Any(changed, Changed::Race | Changed::Course | Changed::Wind)) Forget();
}

void Coach::Timer5_Timer() {
    if (background_->IsDone()) {
        timer_.SetEnabled(false);
        background_.reset();
        answers_ = work_->Take();
        work_.reset();
    }
    stage_.Repaint(Changed::Answers);
}

}  // namespace keelview
