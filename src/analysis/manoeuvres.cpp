#include "analysis/manoeuvres.h"

#include <algorithm>
#include <cmath>

#include "base/angles.h"
#include "base/parallel.h"

namespace keelview {

namespace {

constexpr double NearEdge = 2.0, FarEdge = 12.0;  // seconds from a turn, between which angles are taken
constexpr double LeastSide = 8.0;                 // degrees off the wind's axis
constexpr double LeastCourseChange = 40.0;        // degrees of a turn on one side of the wind
constexpr double FullTurnDegrees = 270.0;
constexpr double MarkWithin = 8.0;  // seconds between a turn and the passing of a mark
constexpr double LargestShift = 10.0;
constexpr double Begin = -5, End = 15;  // seconds from the turn, of the way that is judged
constexpr double Window = 10;           // seconds, before it and behind it

bool HoldsPass(const OneBased<std::optional<int>>& passes, double from, double to) {
    // The start is no turn.
    for (int entry = 2; entry <= passes.Count(); ++entry)
        if (const auto& pass = passes[entry]; pass && *pass >= from && *pass <= to) return true;
    return false;
}

/// An angle off the wind before or behind a turn, and how sure it is; degrees.
struct WindAngle {
    double Degrees = 0.0;
    double Sigma = 0.0;

    WindAngle(double wind, const Stretch& stretch)
        : Degrees(TurnBetween(wind, stretch.Velocity.Bearing())),
          Sigma(std::atan2(stretch.VelocitySigma, stretch.Velocity.Length()) / DegToRad) {}

    /// On one side of the wind beyond doubt.
    bool IsClear() const {
        const double off = std::abs(Degrees);
        return std::min(off, 180 - off) >= std::max(LeastSide, 3 * Sigma);
    }
};

/// The kind of a turn between two angles off the wind; nothing for a swing that is none.
std::optional<ManoeuvreKind> KindOf(const CourseTurn& turn, const WindAngle& before,
                                    const WindAngle& after) {
    const double from = before.Degrees, to = after.Degrees;
    if (std::abs(turn.Degrees) >= FullTurnDegrees) return ManoeuvreKind::FullTurn;
    const bool changesSide = from * to < 0;
    if (changesSide && before.IsClear() && after.IsClear()) {
        // Through the wind, or with the stern through it.
        const double through = turn.Degrees > 0 ? to - from : from - to;
        return through > 0 ? ManoeuvreKind::Tack : ManoeuvreKind::Gybe;
    }
    const double least = std::max(LeastCourseChange, 4 * std::hypot(before.Sigma, after.Sigma));
    if (changesSide || std::abs(to - from) < least) return {};
    return std::abs(to) < std::abs(from) ? ManoeuvreKind::HeadUp : ManoeuvreKind::BearAway;
}

/// What the judgment of one loss rests on.
struct LossBasis {
    Stretch Before, After;
    Way Good;  ///< the way in which ground is to be made
};

void TakeLoss(const BoatMotion& motion, const LossBasis& basis, double t, Manoeuvre& manoeuvre) {
    const Stretch& before = basis.Before;
    const Stretch& after = basis.After;
    const double seconds = End - Begin;
    const double whole = before.Seconds + after.Seconds;
    const double shareBefore = before.Seconds / whole, shareAfter = after.Seconds / whole;
    const double good =
        before.Velocity.Along(basis.Good) * shareBefore + after.Velocity.Along(basis.Good) * shareAfter;
    double placeVariance = 0.0;
    // How far a velocity's error moves the end of its line beside what it moves the velocity made good.
    double armBefore = seconds * shareBefore, armAfter = seconds * shareAfter;
    const std::optional<Way> sum = motion.SumOfVelocities(t + Begin, t + End);
    const Way sailed = sum ? *sum : after.At(t + End) - before.At(t + Begin);
    if (sum) {
        const double spacing = seconds / std::max(1, motion.FixesBetween(t + Begin, t + End));
        placeVariance = std::pow(motion.VelocityNoise(), 2) * seconds * spacing;
    } else {
        armBefore += t + Begin - before.Middle;
        armAfter += after.Middle - (t + End);
        placeVariance = std::pow(before.MiddleSigma, 2) + std::pow(after.MiddleSigma, 2);
    }
    manoeuvre.LossMetres = good * seconds - sailed.Along(basis.Good);
    manoeuvre.LossSigma = std::sqrt(placeVariance + std::pow(armBefore * before.VelocitySigma, 2) +
                                    std::pow(armAfter * after.VelocitySigma, 2));
    if (good <= KnotMetres / 2) return;
    manoeuvre.LossSeconds = *manoeuvre.LossMetres / good;
    manoeuvre.LossSecondsSigma = manoeuvre.LossSigma / good;
}

/// One boat's turns, judged one by one.
class Judge {
  public:
    Judge(const BoatMotion& motion, const std::vector<CourseTurn>& turns, const RaceWind& wind,
          const OneBased<std::optional<int>>& passes)
        : motion_(motion), turns_(turns), wind_(wind), passes_(passes) {}

    std::optional<Manoeuvre> Take(std::size_t number) const {
        const CourseTurn& turn = turns_[number];
        const auto wind = wind_.From(turn.Middle);
        const auto before = motion_.Over(turn.Start - FarEdge, turn.Start - NearEdge);
        const auto after = motion_.Over(turn.End + NearEdge, turn.End + FarEdge);
        if (!wind || !before || !after) return {};
        Manoeuvre manoeuvre;
        const WindAngle angleBefore(*wind, *before), angleAfter(*wind, *after);
        manoeuvre.From = angleBefore.Degrees;
        manoeuvre.To = angleAfter.Degrees;
        const auto kind = HoldsPass(passes_, turn.Start - MarkWithin, turn.End + MarkWithin)
                              ? ManoeuvreKind::Rounding
                              : KindOf(turn, angleBefore, angleAfter);
        if (!kind) return {};
        manoeuvre.Kind = *kind;
        manoeuvre.Time = turn.Middle;
        manoeuvre.Duration = turn.End - turn.Start;
        manoeuvre.Rate = std::abs(turn.Degrees) / std::max(manoeuvre.Duration, 1.0);
        TakeSpeeds(turn, before->Velocity, after->Velocity, manoeuvre);
        TakeLossOrReason(number, *wind, manoeuvre);
        return manoeuvre;
    }

  private:
    void TakeSpeeds(const CourseTurn& turn, Way before, Way after, Manoeuvre& manoeuvre) const {
        double least = std::min(before.Length(), after.Length());
        for (double t = turn.Start - NearEdge; t <= turn.End + NearEdge; t += 0.5)
            if (const auto now = motion_.At(t)) least = std::min(least, now->Velocity.Length());
        manoeuvre.SpeedBefore = before.Length() / KnotMetres;
        manoeuvre.SpeedLeast = least / KnotMetres;
        manoeuvre.SpeedAfter = after.Length() / KnotMetres;
    }

    void TakeLossOrReason(std::size_t number, double wind, Manoeuvre& manoeuvre) const {
        const double t = manoeuvre.Time;
        const double from = t + Begin - Window, to = t + End + Window;
        const auto windBefore = wind_.From(t + Begin - Window / 2);
        const auto windAfter = wind_.From(t + End + Window / 2);
        if (windBefore && windAfter) manoeuvre.Shift = TurnBetween(*windBefore, *windAfter);
        const auto refuse = [&](NoLoss why) { manoeuvre.Why = why; };
        if (manoeuvre.Kind != ManoeuvreKind::Tack && manoeuvre.Kind != ManoeuvreKind::Gybe)
            return refuse(NoLoss::Kind);
        if (HoldsAnotherTurn(turns_, number, from, to) || HoldsPass(passes_, from, to))
            return refuse(NoLoss::OtherTurn);
        if (std::abs(manoeuvre.Shift) > LargestShift) return refuse(NoLoss::Shift);
        const auto before = motion_.Over(from, t + Begin);
        const auto after = motion_.Over(t + End, to);
        if (!before || !after) return refuse(NoLoss::Track);
        const double good = manoeuvre.Kind == ManoeuvreKind::Gybe ? wind + 180 : wind;
        TakeLoss(motion_, {*before, *after, Towards(good)}, t, manoeuvre);
    }

    const BoatMotion& motion_;
    const std::vector<CourseTurn>& turns_;
    const RaceWind& wind_;
    const OneBased<std::optional<int>>& passes_;
};

}  // namespace

std::vector<Manoeuvre> FindManoeuvres(const BoatMotion& motion, const std::vector<CourseTurn>& turns,
                                      const RaceWind& wind, const OneBased<std::optional<int>>& passes) {
    const Judge judge(motion, turns, wind, passes);
    std::vector<Manoeuvre> manoeuvres;
    for (std::size_t turn = 0; turn < turns.size(); ++turn)
        if (const auto manoeuvre = judge.Take(turn)) manoeuvres.push_back(*manoeuvre);
    return manoeuvres;
}

OneBased<std::vector<Manoeuvre>> FindFleetManoeuvres(const FleetMotion& fleet, const FleetTurns& turns,
                                                     const RaceWind& wind, const MarkPasses& passes) {
    OneBased<std::vector<Manoeuvre>> all(fleet.Boats.Count());
    ForEachInParallel(all.Count(), [&](int boat) {
        const auto none = OneBased<std::optional<int>>();
        const auto& own = passes.MarkPassTime.Holds(boat) ? passes.MarkPassTime[boat] : none;
        all[boat] = FindManoeuvres(fleet.Boats[boat], turns[boat], wind, own);
    });
    return all;
}

}  // namespace keelview
