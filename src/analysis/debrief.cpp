#include "analysis/debrief.h"

#include <algorithm>
#include <cmath>

#include "analysis/steady_stretches.h"
#include "base/angles.h"
#include "base/parallel.h"

namespace keelview {

namespace {

constexpr double StartWindow = 20.0;  // seconds behind the crossing that belong to the start
constexpr double PaceUnsure = 0.013;  // share of it, as noise moves the windows; from simulated fleets
constexpr double BeforeTurn = 5.0, BehindTurn = 15.0;  // seconds that the loss of a turn speaks of
constexpr double LeastFree = 20.0;                     // seconds of free sailing that tell a pace
constexpr double LeastCovered = 0.9;                   // of a leg, by its track
constexpr double LeastTargeted = 0.8;                  // share of free seconds whose target is known
constexpr int FewestBoats = 3;                         // that a target rests on, where there are as many

/// A mean over the seconds of some windows.
struct WindowMean {
    double Count = 0.0, Sum = 0.0;
    double Square = 0.0, Product = 0.0, Weight = 0.0;  // over closed windows, of their sums and counts
    double WindowCount = 0.0, WindowSum = 0.0;         // of the open one

    void Add(double value) { ++WindowCount, WindowSum += value, ++Count, Sum += value; }
    void CloseWindow() {
        Square += WindowSum * WindowSum;
        Product += WindowSum * WindowCount;
        Weight += WindowCount * WindowCount;
        WindowCount = WindowSum = 0.0;
    }
    double Value() const { return Sum / Count; }
    /// By how much noise moves the sum as it moves the ends of the windows: 0.45 of what their own
    /// scatter makes it unsure by, as simulated fleets show.
    double Unsure() const {
        const double mean = Value();
        return 0.45 * std::sqrt(std::max(0.0, Square - 2 * mean * Product + mean * mean * Weight));
    }
};

/// Sums over seconds of one kind.
struct Seconds {
    double Count = 0.0;
    double Good = 0.0;        // metres made good along the leg
    WindowMean Speed;         // metres a second
    WindowMean Ratio;         // of the speed to its target, where that is known
    double PlaceSigma = 0.0;  // sum, metres
    double OwnSquares = 0.0;  // metres, where velocities are the receiver's own
    int Windows = 0;          // stretches that they lie in

    /// Standard deviation of the metres sailed in all. Velocities of positions add up to the way between
    /// the ends of each stretch, each end with 8/15 of the variance of a place (slopes of parabolas over R
    /// seconds, summed, weigh a place by R^2 - s^2); the receiver's own are each for themselves.
    double MetresSigma() const {
        return OwnSquares > 0 ? std::sqrt(OwnSquares) : EndSigma() * std::sqrt(2.0 * Windows);
    }
    /// Share of the pace by which noise moves it as it moves the windows.
    double Unsure() const {
        const WindowMean& told = Ratio.Count >= LeastFree ? Ratio : Speed;
        return told.Unsure() / told.Sum;
    }
    double EndSigma() const { return PlaceSigma / std::max(Count, 1.0) * std::sqrt(8.0 / 15); }

    void CloseWindows() {
        Speed.CloseWindow();
        Ratio.CloseWindow();
    }
};

/// A boat's time on a leg, taken apart.
struct LegPace {
    bool Known = false;
    double Whole = 0.0;  // seconds
    LostSeconds Start, Turns, Rest;
    double Free = 0.0;  // what the leg would have taken at the pace of free sailing
    Seconds Sailed;     // freely
};

/// The fleet's speeds by band and angle, looked up.
class Targets {
  public:
    explicit Targets(const DebriefSources& from) : wind_(from.Wind), polar_(from.Speeds) {
        const int fewest = std::min(FewestBoats, from.Motion.Boats.Count());
        for (const PolarBand& band : polar_.Bands) {
            speeds_.emplace_back();
            for (int step = 0; step <= 180 * StepsADegree; ++step)
                speeds_.back().push_back(
                    PolarSpeed(band.Fleet, static_cast<double>(step) / StepsADegree, fewest).value_or(0) *
                    KnotMetres);
        }
        if (speeds_.size() < 2) return;
        double last = 0.0;
        for (const BoatMotion& boat : from.Motion.Boats) last = std::max(last, boat.Span().second);
        for (double t = 0; t <= std::min(last, MostKept); ++t) bands_.push_back(BandAt(t));
    }
    /// Metres a second at a velocity's angle off the wind, at a whole second; 0 where it is not known.
    double At(double t, Way velocity, Way upwind) const {
        const bool kept = t >= 0 && t < static_cast<double>(bands_.size());
        const std::size_t band = speeds_.size() < 2 ? 0
                                 : kept             ? bands_[static_cast<std::size_t>(t)]
                                                    : BandAt(t);
        if (band >= speeds_.size()) return 0.0;
        const double angle =
            std::atan2(std::abs(velocity.Across(upwind)), velocity.Along(upwind)) / DegToRad;
        return speeds_[band][static_cast<std::size_t>(std::lround(angle * StepsADegree))];
    }

  private:
    static constexpr int StepsADegree = 4;
    static constexpr double MostKept = 100'000;  // seconds

    std::size_t BandAt(double t) const {
        const PolarBand* const band = polar_.BandOf(wind_.Speed(t));
        return band ? static_cast<std::size_t>(band - &polar_.Bands[1]) : speeds_.size();
    }

    const RaceWind& wind_;
    const Polar& polar_;
    std::vector<std::vector<double>> speeds_;
    std::vector<std::size_t> bands_;  // by second, where there are several
};

/// What a second of a leg belongs to.
enum class Kind { Free, Start, Turn, Other };

/// One boat on one leg.
class LegSailor {
  public:
    LegSailor(const DebriefSources& from, const Targets& targets, int boat, int leg, double begin,
              double end)
        : from_(from), targets_(targets), boat_(boat), leg_(leg), begin_(begin), end_(end) {
        for (const Manoeuvre& turn : from.Manoeuvres[boat])
            if (turn.LossSeconds && turn.Time >= begin && turn.Time <= end) lost_.push_back(&turn);
        if (from.Passes.MarkPassTime.Holds(boat))
            steady_ = SteadyTimes(from.Turns[boat], from.Passes.MarkPassTime[boat], {begin, end});
    }

    LegPace Tell(double whole, double crossing) const {
        LegPace pace;
        pace.Whole = whole;
        const BoatMotion& motion = from_.Motion.Boats[boat_];
        if (!motion.IsDense() || motion.Span().second < begin_ + LeastCovered * (end_ - begin_))
            return pace;
        Seconds start, other;
        SumSeconds(pace.Sailed, start, other);
        const double good = pace.Sailed.Good / std::max(pace.Sailed.Count, 1.0);
        const bool slow = pace.Sailed.Count < LeastFree || good <= KnotMetres / 2;
        if (slow ||
            pace.Sailed.Count + start.Count + other.Count + LostWindows() < LeastCovered * (end_ - begin_))
            return pace;
        for (const Manoeuvre* turn : lost_)
            pace.Turns = pace.Turns + LostSeconds{turn->LossSeconds.value_or(0), turn->LossSecondsSigma};
        // Where it heads at a mark is a matter of distance.
        const WindowMean& speed = pace.Sailed.Speed;
        const double atPace = other.Speed.Sum / speed.Value();
        pace.Rest = {other.Count - atPace,
                     std::hypot(other.MetresSigma() / speed.Value(), atPace * pace.Sailed.Unsure())};
        if (leg_ == 1) {
            const double begin = std::ceil(crossing);  // of the seconds that are summed
            const auto behind = Behind(begin);
            if (!behind) return pace;
            // An error of the crossing's place is made good behind it.
            const double sigma = std::hypot(start.EndSigma() / good, StartWindow * PaceUnsure);
            pace.Start = {begin + start.Count + (*behind - start.Good) / good, sigma};
        }
        pace.Free = whole - pace.Start.Seconds - pace.Turns.Seconds - pace.Rest.Seconds;
        pace.Known = pace.Free > 0;
        return pace;
    }

  private:
    double LostWindows() const { return static_cast<double>(lost_.size()) * (BeforeTurn + BehindTurn); }

    /// Metres that the boat is to leeward of the middle of the line at a moment.
    std::optional<double> Behind(double t) const {
        const auto now = from_.Motion.Boats[boat_].At(t);
        const CourseLeg& leg = from_.Legs[leg_];
        if (!now) return {};
        return (leg.From - now->At).Along(leg.LadderAxis(from_.Wind.Upwind(t)));
    }

    Kind KindOf(double t) const {
        for (const Manoeuvre* turn : lost_)
            if (t >= turn->Time - BeforeTurn && t < turn->Time + BehindTurn) return Kind::Turn;
        if (leg_ == 1 && t < begin_ + StartWindow) return Kind::Start;
        const auto next = std::ranges::upper_bound(steady_, t, {}, &TimeSpan::first);
        return next != steady_.begin() && (next - 1)->second > t ? Kind::Free : Kind::Other;
    }

    void SumSeconds(Seconds& free, Seconds& start, Seconds& other) const {
        Kind last = Kind::Turn;
        for (double t = std::ceil(begin_); t < end_; ++t) {
            const Kind kind = KindOf(t);
            if (kind != last) free.CloseWindows();
            if (kind != Kind::Turn) {
                Seconds& sums = kind == Kind::Free ? free : kind == Kind::Start ? start : other;
                sums.Windows += kind != last;
                Add(t, kind == Kind::Free, sums);
            }
            last = kind;
        }
        free.CloseWindows();
    }

    void Add(double t, bool targeted, Seconds& sums) const {
        const auto now = from_.Motion.Boats[boat_].At(t);
        if (!now) return;
        const auto upwind = from_.Wind.Upwind(t);
        ++sums.Count;
        sums.Good += now->Velocity.Along(from_.Legs[leg_].LadderAxis(upwind));
        sums.PlaceSigma += now->PlaceSigma;
        if (from_.Motion.Boats[boat_].Source() == VelocitySource::Receiver)
            sums.OwnSquares += now->VelocitySigma * now->VelocitySigma;
        const double speed = now->Speed();
        sums.Speed.Add(speed);
        if (!targeted || !upwind) return;
        if (const double target = targets_.At(t, now->Velocity, *upwind); target > 0)
            sums.Ratio.Add(speed / target);
    }

    const DebriefSources& from_;
    const Targets& targets_;
    int boat_, leg_;
    double begin_, end_;
    std::vector<const Manoeuvre*> lost_;  // turns whose loss is known
    std::vector<TimeSpan> steady_;
};

/// Takes the time of a boat on a leg apart; nothing where it did not sail all of it.
std::optional<LegPace> PaceOf(const DebriefSources& from, const Targets& targets, int boat, int leg) {
    const auto begin = PassTime(from.Passes, boat, leg), end = PassTime(from.Passes, boat, leg + 1);
    if (!end || *end < 0) return {};
    if (leg > 1) {
        if (!begin || *end <= *begin) return {};
        return LegSailor(from, targets, boat, leg, *begin, *end).Tell(*end - *begin, 0);
    }
    // Where no line tells the crossing, the passing does.
    const auto& measured = from.Start.Boats[boat].Crossing;
    const auto crossing = measured || from.Start.Line ? measured : std::optional<double>(begin);
    LegPace pace;
    pace.Whole = *end;
    if (!crossing || *crossing >= *end) return pace;
    return LegSailor(from, targets, boat, leg, *crossing, *end).Tell(*end, *crossing);
}

LegLoss LossTo(const LegPace& best, const LegPace& own, bool byPolar) {
    LegLoss loss;
    loss.Seconds = static_cast<int>(own.Whole);
    loss.Loss = static_cast<int>(own.Whole - best.Whole);
    loss.Rest.Seconds = loss.Loss;
    if (!own.Known || !best.Known) return loss;
    loss.IsSplit = true;
    if (&own == &best) return loss;  // nothing, for sure
    const auto share = [byPolar](const LegPace& pace) -> const WindowMean& {
        return byPolar ? pace.Sailed.Ratio : pace.Sailed.Speed;
    };
    const auto unsure = [&share](const LegPace& pace) {
        return std::hypot(pace.Sailed.MetresSigma() / pace.Sailed.Speed.Sum,
                          share(pace).Unsure() / share(pace).Sum);
    };
    const double p = share(own).Value(), q = p * own.Free;
    const double bestP = share(best).Value(), bestQ = bestP * best.Free;
    loss.Start = own.Start - best.Start;
    loss.Turns = own.Turns - best.Turns;
    loss.Speed = {(1 / p - 1 / bestP) * (q + bestQ) / 2,
                  std::hypot(unsure(own) / p, unsure(best) / bestP) * (q + bestQ) / 2};
    loss.Distance = {(q - bestQ) * (1 / p + 1 / bestP) / 2,
                     std::hypot(loss.Speed.Sigma, loss.Start.Sigma, loss.Turns.Sigma)};
    loss.Rest = own.Rest - best.Rest;
    // What rounding leaves.
    loss.Rest.Seconds =
        loss.Loss - loss.Start.Seconds - loss.Turns.Seconds - loss.Speed.Seconds - loss.Distance.Seconds;
    return loss;
}

LegDebrief DebriefLeg(const OneBased<std::optional<LegPace>>& paces) {
    LegDebrief told;
    double free = 0.0, targeted = 0.0;
    bool all = true;
    const LegPace* best = nullptr;
    for (int boat = 1; boat <= paces.Count(); ++boat) {
        const auto& pace = paces[boat];
        if (!pace) continue;
        if (!best || pace->Whole < best->Whole) best = &*pace, told.BestBoat = boat;
        free += pace->Sailed.Count;
        targeted += pace->Sailed.Ratio.Count;
        all = all && (!pace->Known || pace->Sailed.Ratio.Count >= LeastFree);
    }
    told.ByPolar = all && targeted >= LeastTargeted * free && free > 0;
    for (const auto& pace : paces)
        told.Boats.Add(pace && best ? std::optional(LossTo(*best, *pace, told.ByPolar)) : std::nullopt);
    return told;
}

}  // namespace

Debrief FindDebrief(const DebriefSources& from) {
    const int boats = from.Motion.Boats.Count();
    const Targets targets(from);
    OneBased<OneBased<std::optional<LegPace>>> paces(from.Legs.Count());
    for (auto& leg : paces) leg.Resize(boats);
    ForEachInParallel(boats, [&](int boat) {
        for (int leg = 1; leg <= paces.Count(); ++leg) paces[leg][boat] = PaceOf(from, targets, boat, leg);
    });
    Debrief debrief;
    for (const auto& leg : paces) debrief.Add(DebriefLeg(leg));
    return debrief;
}

}  // namespace keelview
