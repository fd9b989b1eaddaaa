#include "analysis/ranking.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "base/parallel.h"

namespace keelview {

namespace {

constexpr double LedToMark = 60.0;  // seconds about a passing in which the distance is led to it
constexpr double FittedWith = 5.0;  // seconds
constexpr double PaceWithin = 5.0;  // seconds to either side
constexpr double LeastPace = 0.2;   // metres a second, of a leader whose gap is told in seconds
constexpr double StillToGo =
    0.01;  // metres for each second before a passing, and gone behind one, at least

/// The distances of one boat.
class BoatProgress {
  public:
    BoatProgress(const OneBased<CourseLeg>& legs, const BoatMotion& motion, const RaceWind& wind,
                 const MarkPasses& passes, int boat)
        : legs_(legs), motion_(motion), wind_(wind), behind_(legs.Count() + 1) {
        for (int entry = 1; entry <= legs_.Count() + 1; ++entry) passes_.Add(PassTime(passes, boat, entry));
        for (int entry = legs_.Count(); entry >= 1; --entry)
            behind_[entry] = behind_[entry + 1] + legs_[entry].Length;
    }

    struct Distance {
        double ToGo = 0.0;
        double Sigma = 0.0;
    };
    std::optional<Distance> At(double t) const {
        int done = passes_.Count();
        const auto isDone = [&](const std::optional<int>& pass) { return pass && *pass <= t; };
        while (done > 0 && !isDone(passes_[done])) --done;
        if (done > legs_.Count()) return Distance{};
        auto here = OnLeg(done, t);
        if (here) here->ToGo += behind_[done + 1];
        return here;
    }

  private:
    /// Metres to the end of a leg, as the boat's place tells; of leg 0 those to the start.
    std::optional<Distance> Raw(int leg, double t) const {
        const auto now = motion_.At(t);
        if (!now) return {};
        const CourseLeg& axis = legs_[std::max(leg, 1)];
        return Distance{
            ((leg == 0 ? axis.From : axis.To) - now->At).Along(axis.LadderAxis(wind_.Upwind(t))),
            now->PlaceSigma};
    }

    /// Adds what leads a distance to that of a mark which was passed, or will be, so many seconds away.
    /// What is unsure goes with it: places within some seconds are fitted to the same fixes.
    void Lead(int leg, double pass, double length, double away, double fade, Distance& toGo) const {
        const double share = std::max(0.0, 1 - away / fade);
        const auto there = share > 0 ? Raw(leg, pass) : std::nullopt;
        if (!there) return;
        const double alike = std::max(0.0, 1 - away / FittedWith);
        toGo.ToGo += (length - there->ToGo) * share;
        toGo.Sigma *= std::sqrt(std::max(0.0, 1 + share * share - 2 * share * alike));
    }

    std::optional<Distance> OnLeg(int leg, double t) const {
        auto toGo = Raw(leg, t);
        if (!toGo) return {};
        const double length = leg > 0 ? legs_[leg].Length : 0.0;
        const auto begin = leg > 0 ? passes_[leg] : std::nullopt;
        const auto& end = passes_[leg + 1];
        const double fade =
            begin && end ? std::max(1.0, std::min(LedToMark, (*end - *begin) / 2.0)) : LedToMark;
        if (begin) {
            Lead(leg, *begin, length, t - *begin, fade, *toGo);
            if (t - *begin < fade) toGo->ToGo = std::min(toGo->ToGo, length - StillToGo * (t - *begin));
        }
        if (end) Lead(leg, *end, 0.0, *end - t, fade, *toGo);
        toGo->ToGo = std::max(toGo->ToGo, end ? StillToGo * (*end - t) : StillToGo);
        return toGo;
    }

    const OneBased<CourseLeg>& legs_;
    const BoatMotion& motion_;
    const RaceWind& wind_;
    OneBased<std::optional<int>> passes_;  // by entry
    OneBased<double> behind_;              // metres of the course behind each entry
};

}  // namespace

CourseProgress::CourseProgress(const RaceControl& race, const FleetMotion& fleet, const RaceWind& wind,
                               const MarkPasses& passes)
    : curves_(fleet.Boats.Count()) {
    const OneBased<CourseLeg> legs = CourseLegs(race, fleet.Water);
    if (legs.Empty()) return;
    ForEachInParallel(curves_.Count(), [&](int boat) {
        Curve& curve = curves_[boat];
        curve.Finish = FinishTime(passes, boat);
        const BoatProgress progress(legs, fleet.Boats[boat], wind, passes, boat);
        if (!fleet.Boats[boat].IsDense()) return;
        const double last = std::min<double>(fleet.Boats[boat].Span().second, LongestRace);
        const auto seconds = static_cast<std::size_t>(std::max(0.0, last + 1));
        curve.ToGo.reserve(seconds);
        curve.Sigma.reserve(seconds);
        curve.Least.reserve(seconds);
        double least = std::numeric_limits<double>::infinity();
        for (int second = 0; second <= last; ++second) {
            const auto toGo = progress.At(second);
            curve.ToGo.push_back(toGo ? toGo->ToGo : std::numeric_limits<double>::quiet_NaN());
            curve.Sigma.push_back(static_cast<float>(toGo ? toGo->Sigma : 0.0));
            if (toGo) least = std::min(least, toGo->ToGo);
            curve.Least.push_back(least);
        }
    });
}

std::optional<double> CourseProgress::ToGo(int boat, double t) const {
    const Curve& curve = curves_[boat];
    if (!(t >= 0)) return {};
    if (curve.Finish && t >= *curve.Finish) return 0.0;
    if (t > static_cast<double>(curve.ToGo.size()) - 1) return {};
    const double whole = std::floor(t);
    const auto second = static_cast<std::size_t>(whole);
    const double before = curve.ToGo[second];
    const double after = t > whole ? curve.ToGo[second + 1] : before;
    const double toGo = before + (after - before) * (t - whole);
    return std::isfinite(toGo) ? std::optional(toGo) : std::nullopt;
}

std::optional<double> CourseProgress::TimeAt(int boat, double toGo) const {
    const std::vector<double>& least = curves_[boat].Least;
    const auto found = std::ranges::lower_bound(least, toGo, std::ranges::greater());
    if (found == least.end()) return curves_[boat].Finish;  // its track ended before
    const auto second = static_cast<double>(found - least.begin());
    if (found == least.begin() || !std::isfinite(*(found - 1)) || *found == toGo) return second;
    const double before = *(found - 1);
    return second - (toGo - *found) / (before - *found);
}

/// A moment, or when the boat had finished.
double CourseProgress::Until(int boat, double t) const {
    return std::min<double>(curves_[boat].Finish.value_or(t), t);
}

bool CourseProgress::IsAhead(const Standing& one, const Standing& other, double t) const {
    if (one.ToGo != other.ToGo) return one.ToGo < other.ToGo;
    return Until(one.Boat, t) < Until(other.Boat, t);
}

double CourseProgress::Last() const {
    std::size_t seconds = 0;
    for (const Curve& curve : curves_) seconds = std::max(seconds, curve.ToGo.size());
    return static_cast<double>(seconds) - 1;
}

std::optional<int> CourseProgress::LeaderAt(double t) const {
    std::optional<Standing> leader;
    for (int boat = 1; boat <= curves_.Count(); ++boat)
        if (const auto toGo = ToGo(boat, t)) {
            const Standing here{boat, *toGo};
            if (!leader || IsAhead(here, *leader, t)) leader = here;
        }
    return leader ? std::optional(leader->Boat) : std::nullopt;
}

std::optional<double> CourseProgress::GapSeconds(int boat, int other, double t) const {
    const auto own = ToGo(boat, t), others = ToGo(other, t);
    if (!own || !others) return {};
    const Standing one{boat, *own}, another{other, *others};
    const bool ahead = IsAhead(one, another, t);
    if (!ahead && !IsAhead(another, one, t)) return 0.0;
    const auto then = ahead ? TimeAt(boat, *others) : TimeAt(other, *own);
    if (!then) return {};
    return ahead ? -std::max(0.0, Until(other, t) - *then) : std::max(0.0, Until(boat, t) - *then);
}

double CourseProgress::ToGoSigma(int boat, double t) const {
    const std::vector<float>& sigmas = curves_[boat].Sigma;
    const bool known = t >= 0 && t < static_cast<double>(sigmas.size());
    return known ? sigmas[static_cast<std::size_t>(t)] : 0.0;
}

double CourseProgress::GapSecondsSigma(int boat, int other, double t) const {
    const auto toGo = ToGo(boat, t);
    const auto then = toGo ? TimeAt(other, *toGo) : std::nullopt;
    if (!then || boat == other) return 0.0;
    const auto before = ToGo(other, std::max(0.0, *then - PaceWithin)),
               after = ToGo(other, *then + PaceWithin);
    const double pace = before && after ? (*before - *after) / (2 * PaceWithin) : 0.0;
    return std::hypot(ToGoSigma(boat, Until(boat, t)), ToGoSigma(other, *then)) / std::max(pace, LeastPace);
}

std::vector<RankedBoat> CourseProgress::OrderAt(double t) const {
    std::vector<RankedBoat> order;
    for (int boat = 1; boat <= curves_.Count(); ++boat)
        if (const auto toGo = ToGo(boat, t)) {
            order.emplace_back();
            order.back().Boat = boat;
            order.back().ToGo = *toGo;
        }
    std::ranges::stable_sort(order, [&](const RankedBoat& one, const RankedBoat& other) {
        return IsAhead({one.Boat, one.ToGo}, {other.Boat, other.ToGo}, t);
    });
    for (RankedBoat& ranked : order) {
        const RankedBoat& leader = order.front();
        ranked.GapMetres = ranked.ToGo - leader.ToGo;
        ranked.GapSeconds = GapSeconds(ranked.Boat, leader.Boat, t);
        ranked.ToGoSigma = ToGoSigma(ranked.Boat, Until(ranked.Boat, t));
        if (ranked.Boat == leader.Boat) continue;
        ranked.GapMetresSigma = std::hypot(ranked.ToGoSigma, leader.ToGoSigma);
        ranked.GapSecondsSigma = GapSecondsSigma(ranked.Boat, leader.Boat, t);
    }
    return order;
}

}  // namespace keelview
