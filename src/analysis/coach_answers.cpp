#include "analysis/coach_answers.h"

#include <array>
#include <utility>

#include "base/parallel.h"

namespace keelview {

namespace {

constexpr double GapEvery = 10.0;  // seconds

}  // namespace

CoachWork::CoachWork(const RaceNumbers& numbers)
    : tracks_(numbers.tracks), scale_(numbers.scale), wind_(numbers.wind) {
    answers_.Race = numbers.race;
    answers_.Passes = numbers.passes;
}

struct CoachWork::Piece {
    double Share;  // of the time that all takes
    void (CoachWork::*Do)();
};

std::span<const CoachWork::Piece> CoachWork::Pieces() {
    static constexpr std::array<Piece, 9> pieces{{{0.27, &CoachWork::TakeMotion},
                                                  {0.14, &CoachWork::FindTheTurns},
                                                  {0.07, &CoachWork::FindTheWind},
                                                  {0.12, &CoachWork::FollowCourse},
                                                  {0.07, &CoachWork::JudgeTurns},
                                                  {0.12, &CoachWork::SumLegs},
                                                  {0.06, &CoachWork::FindSpeeds},
                                                  {0.06, &CoachWork::FindWaterSpeeds},
                                                  {0.09, &CoachWork::SplitLosses}}};
    return pieces;
}

void CoachWork::DoNext() {
    if (!IsDone()) (this->*Pieces()[next_++].Do)();
}

bool CoachWork::IsDone() const {
    return next_ == Pieces().size();
}

double CoachWork::ShareDone() const {
    double share = 0.0;
    for (const Piece& piece : Pieces().first(next_)) share += piece.Share;
    return share;
}

CoachAnswers CoachWork::Take() {
    return std::move(answers_);
}

void CoachWork::TakeMotion() {
    answers_.Motion = FleetMotion(tracks_, scale_);
    answers_.Legs = CourseLegs(answers_.Race, answers_.Motion.Water);
}

void CoachWork::FindTheTurns() {
    answers_.Turns = FindFleetTurns(answers_.Motion);
}

void CoachWork::FindTheWind() {
    WindEstimate estimate = EstimateWind(answers_.Motion, answers_.Turns, answers_.Passes);
    answers_.Current = EstimateCurrent(estimate);
    answers_.Wind = RaceWind(answers_.Race, wind_, std::move(estimate));
}

void CoachWork::FollowCourse() {
    answers_.Start = ReportStart(answers_.Race, answers_.Motion, answers_.Wind);
    answers_.Progress = CourseProgress(answers_.Race, answers_.Motion, answers_.Wind, answers_.Passes);
    answers_.Gaps = GapsToLeader(answers_.Progress, answers_.Passes, GapEvery);
}

void CoachWork::JudgeTurns() {
    answers_.Manoeuvres =
        FindFleetManoeuvres(answers_.Motion, answers_.Turns, answers_.Wind, answers_.Passes);
}

void CoachWork::SumLegs() {
    answers_.MadeGood =
        MadeGoodOnLegs(answers_.Race, answers_.Motion, answers_.Legs, answers_.Wind, answers_.Passes);
}

void CoachWork::FindSpeeds() {
    answers_.Speeds =
        FindPolar(answers_.Race, answers_.Motion, answers_.Turns, answers_.Wind, answers_.Passes);
}

void CoachWork::FindWaterSpeeds() {
    if (answers_.Current)
        answers_.WaterSpeeds = FindPolar(answers_.Race, answers_.Motion, answers_.Turns, answers_.Wind,
                                         answers_.Passes, answers_.Current->Velocity());
}

void CoachWork::SplitLosses() {
    answers_.Losses = FindDebrief({answers_.Motion, answers_.Turns, answers_.Wind, answers_.Legs,
                                   answers_.Passes, answers_.Start, answers_.Manoeuvres, answers_.Speeds});
}

std::optional<CoachAnswers> AnswerCoach(const RaceNumbers& numbers, const CoachProgress& progress) {
    CoachWork work(numbers);
    while (!work.IsDone()) {
        if (progress && !progress(work.ShareDone())) return {};
        work.DoNext();
    }
    return work.Take();
}

}  // namespace keelview
