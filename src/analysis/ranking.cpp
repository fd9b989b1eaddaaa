#include "analysis/ranking.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "base/parallel.h"

namespace keelview {

namespace {

constexpr double LedToMark = 60.0;  // seconds about a passing in which the distance is led to it
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

    std::optional<double> At(double t) const {
        int done = passes_.Count();
        while (done > 0 && !(passes_[done] && *passes_[done] <= t)) --done;
        if (done > legs_.Count()) return 0.0;
        const auto here = OnLeg(done, t);
        return here ? std::optional(*here + behind_[done + 1]) : std::nullopt;
    }

  private:
    /// Metres to the end of a leg, as the boat's place tells; of leg 0 those to the start.
    std::optional<double> Raw(int leg, double t) const {
        const auto now = motion_.At(t);
        if (!now) return {};
        const CourseLeg& axis = legs_[std::max(leg, 1)];
        return ((leg == 0 ? axis.From : axis.To) - now->At).Along(axis.LadderAxis(wind_.Upwind(t)));
    }

    std::optional<double> OnLeg(int leg, double t) const {
        auto toGo = Raw(leg, t);
        if (!toGo) return {};
        const double length = leg > 0 ? legs_[leg].Length : 0.0;
        const auto begin = leg > 0 ? passes_[leg] : std::nullopt;
        const auto& end = passes_[leg + 1];
        const double fade =
            begin && end ? std::max(1.0, std::min(LedToMark, (*end - *begin) / 2.0)) : LedToMark;
        if (begin) {
            const double share = std::max(0.0, 1 - (t - *begin) / fade);
            if (const auto there = share > 0 ? Raw(leg, *begin) : std::nullopt)
                *toGo += (length - *there) * share;
            if (t - *begin < fade) *toGo = std::min(*toGo, length - StillToGo * (t - *begin));
        }
        if (end) {
            const double share = std::max(0.0, 1 - (*end - t) / fade);
            if (const auto there = share > 0 ? Raw(leg, *end) : std::nullopt) *toGo -= *there * share;
            return std::max(*toGo, StillToGo * (*end - t));
        }
        return std::max(*toGo, StillToGo);
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
        const double last = std::max<double>(race.RaceDuration, fleet.Boats[boat].Span().second);
        double least = std::numeric_limits<double>::infinity();
        for (int second = 0; second <= std::min<double>(last, LongestRace); ++second) {
            const auto toGo = progress.At(second);
            curve.ToGo.push_back(toGo.value_or(std::numeric_limits<double>::quiet_NaN()));
            if (toGo) least = std::min(least, *toGo);
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
    if (found == least.end()) return {};
    const auto second = static_cast<double>(found - least.begin());
    if (found == least.begin() || !std::isfinite(*(found - 1)) || *found == toGo) return second;
    const double before = *(found - 1);
    return second - (toGo - *found) / (before - *found);
}

/// A moment, or when the boat had finished.
double CourseProgress::Until(int boat, double t) const {
    return std::min<double>(curves_[boat].Finish.value_or(t), t);
}

bool CourseProgress::IsAhead(const RankedBoat& one, const RankedBoat& other, double t) const {
    if (one.ToGo != other.ToGo) return one.ToGo < other.ToGo;
    return Until(one.Boat, t) < Until(other.Boat, t);
}

double CourseProgress::Last() const {
    std::size_t seconds = 0;
    for (const Curve& curve : curves_) seconds = std::max(seconds, curve.ToGo.size());
    return static_cast<double>(seconds) - 1;
}

std::optional<int> CourseProgress::LeaderAt(double t) const {
    std::optional<RankedBoat> leader;
    for (int boat = 1; boat <= curves_.Count(); ++boat)
        if (const auto toGo = ToGo(boat, t)) {
            const RankedBoat here{boat, *toGo, 0, {}};
            if (!leader || IsAhead(here, *leader, t)) leader = here;
        }
    return leader ? std::optional(leader->Boat) : std::nullopt;
}

std::optional<double> CourseProgress::GapSeconds(int boat, int other, double t) const {
    const auto own = ToGo(boat, t), others = ToGo(other, t);
    if (!own || !others) return {};
    const RankedBoat one{boat, *own, 0, {}}, another{other, *others, 0, {}};
    const bool ahead = IsAhead(one, another, t);
    if (!ahead && !IsAhead(another, one, t)) return 0.0;
    const auto then = ahead ? TimeAt(boat, *others) : TimeAt(other, *own);
    if (!then) return {};
    return ahead ? -std::max(0.0, Until(other, t) - *then) : std::max(0.0, Until(boat, t) - *then);
}

std::vector<RankedBoat> CourseProgress::OrderAt(double t) const {
    std::vector<RankedBoat> order;
    for (int boat = 1; boat <= curves_.Count(); ++boat)
        if (const auto toGo = ToGo(boat, t)) order.push_back({boat, *toGo, 0, {}});
    std::ranges::stable_sort(
        order, [&](const RankedBoat& one, const RankedBoat& other) { return IsAhead(one, other, t); });
    for (RankedBoat& ranked : order) {
        const RankedBoat& leader = order.front();
        ranked.GapMetres = ranked.ToGo - leader.ToGo;
        ranked.GapSeconds = GapSeconds(ranked.Boat, leader.Boat, t);
    }
    return order;
}

}  // namespace keelview
