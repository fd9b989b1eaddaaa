#pragma once

#include <functional>
#include <optional>
#include <span>
#include <vector>

#include "analysis/boat_motion.h"
#include "analysis/course_legs.h"
#include "analysis/current_estimate.h"
#include "analysis/debrief.h"
#include "analysis/gap_curves.h"
#include "analysis/made_good.h"
#include "analysis/manoeuvres.h"
#include "analysis/polar.h"
#include "analysis/race_numbers.h"
#include "analysis/race_wind.h"
#include "analysis/ranking.h"
#include "analysis/start_report.h"
#include "analysis/wind_estimate.h"

namespace keelview {

/// All that a race answers to a coach. It stands by itself: the race may change or go meanwhile.
struct CoachAnswers {
    RaceControl Race;   ///< as it was when it was asked
    MarkPasses Passes;  ///< likewise
    FleetMotion Motion;
    FleetTurns Turns;
    RaceWind Wind;
    OneBased<CourseLeg> Legs;
    StartReport Start;
    OneBased<std::vector<Manoeuvre>> Manoeuvres;  ///< by boat
    CourseProgress Progress;                      ///< the order at any moment, and all gaps
    GapCurves Gaps;                               ///< to the leader, each 10 s
    FleetMadeGood MadeGood;                       ///< by boat and leg
    std::optional<CurrentEstimate> Current;
    Polar Speeds;                      ///< over ground
    std::optional<Polar> WaterSpeeds;  ///< less the current, where it is known
    Debrief Losses;
};

/// Works the answers out piece by piece, for whoever has no thread for it. The race's tracks must stay as
/// they are until all is done; the rest of it is copied.
class CoachWork {
  public:
    explicit CoachWork(const RaceNumbers& numbers);

    /// Does the next piece, on all processors; nothing where all is done.
    void DoNext();
    bool IsDone() const;
    /// 0 to 1, about as the time that it takes.
    double ShareDone() const;
    /// Hands the answers over, once, when all is done.
    CoachAnswers Take();

  private:
    struct Piece;
    static std::span<const Piece> Pieces();
    void TakeMotion();
    void FindTheTurns();
    void FindTheWind();
    void FollowCourse();
    void JudgeTurns();
    void SumLegs();
    void FindSpeeds();
    void FindWaterSpeeds();
    void SplitLosses();

    const Tracks& tracks_;
    EarthScale scale_;
    WindData wind_;
    CoachAnswers answers_;
    std::size_t next_ = 0;
};

/// Told the share that is done before each piece; false stops the work.
using CoachProgress = std::function<bool(double share)>;

/// The answers of a race, all at once; nothing if it was stopped. It may run in a thread of its own.
std::optional<CoachAnswers> AnswerCoach(const RaceNumbers& numbers, const CoachProgress& progress = {});

}  // namespace keelview
