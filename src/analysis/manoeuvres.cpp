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

/// One loss.
class LossOfTurn {
  public:
    /// The way in which ground is made goes by the wind of each moment, to leeward for a gybe.
    LossOfTurn(const BoatMotion& motion, const RaceWind& wind, const Stretch& before, const Stretch& after,
               const Manoeuvre& manoeuvre)
        : motion_(motion),
          wind_(wind),
          before_(before),
          after_(after),
          time_(manoeuvre.Time),
          sign_(manoeuvre.Kind == ManoeuvreKind::Gybe ? -1.0 : 1.0) {}

    void Take(Manoeuvre& manoeuvre) const {
        const double whole = before_.Seconds + after_.Seconds;
        const double shareBefore = before_.Seconds / whole, shareAfter = after_.Seconds / whole;
        const double good = before_.Velocity.Along(Good(before_.Middle)) * shareBefore +
                            after_.Velocity.Along(Good(after_.Middle)) * shareAfter;
        double placeVariance = 0.0;
        // How far a velocity's error moves the end of its line beside what it moves the velocity made good.
        double armBefore = Length * shareBefore, armAfter = Length * shareAfter;
        const std::optional<Way> sum = motion_.SumOfVelocities(time_ + Begin, time_ + End);
        const Way sailed = sum ? *sum : after_.At(time_ + End) - before_.At(time_ + Begin);
        if (sum) {
            const double spacing = Length / std::max(1, motion_.FixesBetween(time_ + Begin, time_ + End));
            placeVariance = std::pow(motion_.VelocityNoise(), 2) * Length * spacing;
        } else {
            armBefore += time_ + Begin - before_.Middle;
            armAfter += after_.Middle - (time_ + End);
            placeVariance = std::pow(before_.MiddleSigma, 2) + std::pow(after_.MiddleSigma, 2) +
                            std::pow(before_.Bend, 2) + std::pow(after_.Bend, 2);
        }
        manoeuvre.LossMetres = good * Length - sailed.Along(Good(time_)) - ByWindOnTheWay();
        manoeuvre.LossSigma = std::sqrt(placeVariance + std::pow(armBefore * before_.VelocitySigma, 2) +
                                        std::pow(armAfter * after_.VelocitySigma, 2));
        if (good <= KnotMetres / 2) return;
        manoeuvre.LossSeconds = *manoeuvre.LossMetres / good;
        manoeuvre.LossSecondsSigma = manoeuvre.LossSigma / good;
    }

  private:
    static constexpr double Length = End - Begin;

    Way Good(double t) const { return wind_.Upwind(t).value_or(Way{}) * sign_; }

    /// The metres that are made good on the way because the wind is not that of the turn's moment.
    double ByWindOnTheWay() const {
        double metres = 0.0;
        for (double t = time_ + Begin + 0.5; t < time_ + End; ++t)
            if (const auto velocity = motion_.VelocityAt(t))
                metres += velocity->Along(Good(t) - Good(time_));
        return metres;
    }

    const BoatMotion& motion_;
    const RaceWind& wind_;
    const Stretch& before_;
    const Stretch& after_;
    double time_;
    double sign_;
};

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
        manoeuvre.FromSigma = angleBefore.Sigma;
        manoeuvre.ToSigma = angleAfter.Sigma;
        const auto kind = HoldsPass(passes_, turn.Start - MarkWithin, turn.End + MarkWithin)
                              ? ManoeuvreKind::Rounding
                              : KindOf(turn, angleBefore, angleAfter);
        if (!kind) return {};
        manoeuvre.Kind = *kind;
        manoeuvre.Time = turn.Middle;
        manoeuvre.Duration = turn.End - turn.Start;
        manoeuvre.Rate = std::abs(turn.Degrees) / std::max(manoeuvre.Duration, 1.0);
        // Courses that are smoothed over so many seconds to either side turn earlier and for longer; by so
        // much on simulated fleets.
        manoeuvre.TimeSigma = std::hypot(0.3, motion_.Reach() / 5);
        manoeuvre.DurationSigma = std::hypot(0.55, 0.55 * motion_.Reach());
        manoeuvre.RateSigma = manoeuvre.Rate * manoeuvre.DurationSigma /
                              std::max(manoeuvre.Duration - manoeuvre.DurationSigma, 1.0);
        TakeSpeeds(turn, *before, *after, manoeuvre);
        TakeLossOrReason(number, manoeuvre);
        return manoeuvre;
    }

  private:
    void TakeSpeeds(const CourseTurn& turn, const Stretch& before, const Stretch& after,
                    Manoeuvre& manoeuvre) const {
        double least = before.Velocity.Length(), sigma = before.VelocitySigma;
        const auto take = [&](double speed, double speedSigma) {
            if (speed < least) least = speed, sigma = speedSigma;
        };
        take(after.Velocity.Length(), after.VelocitySigma);
        for (double t = turn.Start - NearEdge; t <= turn.End + NearEdge; t += 0.5)
            if (const auto now = motion_.At(t)) take(now->Speed(), now->VelocitySigma);
        manoeuvre.SpeedBefore = before.Velocity.Length() / KnotMetres;
        manoeuvre.SpeedBeforeSigma = before.VelocitySigma / KnotMetres;
        manoeuvre.SpeedLeast = least / KnotMetres;
        manoeuvre.SpeedLeastSigma = sigma / KnotMetres;
        manoeuvre.SpeedAfter = after.Velocity.Length() / KnotMetres;
        manoeuvre.SpeedAfterSigma = after.VelocitySigma / KnotMetres;
    }

    void TakeLossOrReason(std::size_t number, Manoeuvre& manoeuvre) const {
        const double t = manoeuvre.Time;
        const double from = t + Begin - Window, to = t + End + Window;
        const auto windBefore = wind_.From(t + Begin - Window / 2);
        const auto windAfter = wind_.From(t + End + Window / 2);
        if (windBefore && windAfter) manoeuvre.Shift = TurnBetween(*windBefore, *windAfter);
        manoeuvre.ShiftSigma =
            std::hypot(wind_.FromSigma(t + Begin - Window / 2), wind_.FromSigma(t + End + Window / 2));
        const auto refuse = [&](NoLoss why) { manoeuvre.Why = why; };
        if (manoeuvre.Kind != ManoeuvreKind::Tack && manoeuvre.Kind != ManoeuvreKind::Gybe)
            return refuse(NoLoss::Kind);
        if (HoldsAnotherTurn(turns_, number, from, to) || HoldsPass(passes_, from, to))
            return refuse(NoLoss::OtherTurn);
        if (std::abs(manoeuvre.Shift) > LargestShift) return refuse(NoLoss::Shift);
        const auto before = motion_.Over(from, t + Begin);
        const auto after = motion_.Over(t + End, to);
        if (!before || !after) return refuse(NoLoss::Track);
        LossOfTurn(motion_, wind_, *before, *after, manoeuvre).Take(manoeuvre);
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
