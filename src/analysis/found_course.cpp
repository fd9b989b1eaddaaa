#include "analysis/found_course.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace keelview {

namespace {

constexpr double LeftOut = 1.0, NotDue = 0.7, Unlike = 0.3, UnlikeNotDue = 0.25, SailedBy = 0.35,
                 GaveUp = 0.6;
constexpr double ForEachLeft = 0.05;  // more for each entry that a boat that gave up did not see
constexpr double NearBy = 40;         // metres
constexpr int SameVisit = 75;         // seconds between turns of one rounding
constexpr std::size_t MostEntries = 40, MostTried = 4;

/// One boat's visits beside an order of places.
class Alignment {
  public:
    Alignment(const std::vector<Visit>& visits, const std::vector<int>& order)
        : visits_(visits), order_(order), width_(visits.size() + 1), costs_(width_ * (order.size() + 1)) {
        for (std::size_t entry = 0; entry <= order.size(); ++entry)
            for (std::size_t visit = 0; visit < width_; ++visit) Fill(entry, visit);
        end_ = order.size();
        best_ = At(end_, visits.size());
        for (std::size_t entry = 0; entry < order.size(); ++entry) {
            const auto left = static_cast<double>(order.size() - entry);
            const double cost = At(entry, visits.size()) + GaveUp + ForEachLeft * left;
            if (cost < best_) best_ = cost, end_ = entry;
        }
    }

    double Cost() const { return best_; }
    std::size_t Reached() const { return end_; }

    /// The visit of each entry up to where the boat came; nothing where it left the entry out.
    std::vector<std::optional<Visit>> Matches() const {
        std::vector<std::optional<Visit>> matches(end_);
        std::size_t entry = end_, visit = visits_.size();
        while (entry > 0 || visit > 0) {
            if (entry > 0 && visit > 0 && Same(entry, visit) &&
                At(entry, visit) == At(entry - 1, visit - 1) + MatchCost(visit)) {
                matches[--entry] = visits_[--visit];
            } else if (visit > 0 && At(entry, visit) == At(entry, visit - 1) + ExtraCost(visit)) {
                --visit;
            } else {
                --entry;
            }
        }
        return matches;
    }

  private:
    double At(std::size_t entry, std::size_t visit) const { return costs_[entry * width_ + visit]; }
    bool Same(std::size_t entry, std::size_t visit) const {
        return order_[entry - 1] == visits_[visit - 1].Place;
    }
    double MatchCost(std::size_t visit) const {
        const Visit& each = visits_[visit - 1];
        return each.Suits ? 0.0 : !each.Turns ? SailedBy : each.Unlike ? Unlike : 0.0;
    }
    double ExtraCost(std::size_t visit) const {
        const Visit& each = visits_[visit - 1];
        return !each.Turns ? 0.0 : each.Unlike ? UnlikeNotDue : NotDue;
    }

    void Fill(std::size_t entry, std::size_t visit) {
        double cost = entry == 0 && visit == 0 ? 0.0 : std::numeric_limits<double>::infinity();
        if (entry > 0) cost = std::min(cost, At(entry - 1, visit) + LeftOut);
        if (visit > 0) cost = std::min(cost, At(entry, visit - 1) + ExtraCost(visit));
        if (entry > 0 && visit > 0 && Same(entry, visit))
            cost = std::min(cost, At(entry - 1, visit - 1) + MatchCost(visit));
        costs_[entry * width_ + visit] = cost;
    }

    const std::vector<Visit>& visits_;
    const std::vector<int>& order_;
    std::size_t width_;
    std::vector<double> costs_;
    std::size_t end_ = 0;
    double best_ = 0.0;
};

double CostOf(const FleetVisits& visits, const std::vector<int>& order) {
    double cost = 0;
    for (const auto& boat : visits) cost += Alignment(boat, order).Cost();
    return cost;
}

/// The places at which a boat turned, in its order.
std::vector<int> OrderOf(const std::vector<Visit>& visits) {
    std::vector<int> order;
    for (const Visit& visit : visits)
        if (visit.Turns && (order.empty() || order.back() != visit.Place)) order.push_back(visit.Place);
    if (order.size() > MostEntries) order.resize(MostEntries);
    return order;
}

/// Takes entries out and puts others in for as long as that costs the fleet less.
double Improve(const FleetVisits& visits, int places, std::vector<int>& order) {
    double cost = CostOf(visits, order);
    for (bool better = true; better;) {
        better = false;
        std::vector<int> best = order;
        const auto consider = [&](std::vector<int> other) {
            if (std::ranges::adjacent_find(other) != other.end()) return;
            const double now = CostOf(visits, other);
            if (now >= cost - 1e-9) return;
            cost = now;
            best = std::move(other);
            better = true;
        };
        for (std::size_t i = 0; i < order.size(); ++i) {
            std::vector<int> other = order;
            other.erase(other.begin() + static_cast<std::ptrdiff_t>(i));
            consider(std::move(other));
        }
        for (std::size_t i = 0; i <= order.size() && order.size() < MostEntries; ++i)
            for (int place = 0; place < places; ++place) {
                std::vector<int> other = order;
                other.insert(other.begin() + static_cast<std::ptrdiff_t>(i), place);
                consider(std::move(other));
            }
        order = std::move(best);
    }
    return cost;
}

void Explain(const FleetVisits& visits, FoundCourse& course) {
    int seen = 0, turned = 0;
    for (const auto& boat : visits) {
        const auto matches = Alignment(boat, course.Places).Matches();
        std::vector<std::optional<int>> times;
        for (const auto& match : matches) {
            times.push_back(match ? std::optional(match->Time) : std::nullopt);
            turned += match && match->Turns;
        }
        seen += static_cast<int>(matches.size());
        course.Agreeing += matches.size() == course.Places.size() &&
                           std::ranges::all_of(times, [](const auto& time) { return time.has_value(); });
        course.Times.push_back(std::move(times));
    }
    course.Support = seen > 0 ? static_cast<double>(turned) / seen : 0.0;
}

}  // namespace

std::vector<int> PlacesOf(const std::vector<FoundMark>& marks) {
    std::vector<int> places;
    int count = 0;
    for (std::size_t i = 0; i < marks.size(); ++i) {
        const int partner = marks[i].Partner;
        const bool second = partner >= 0 && partner < static_cast<int>(i);
        places.push_back(second ? places[static_cast<std::size_t>(partner)] : count++);
    }
    return places;
}

std::vector<Visit> VisitsOf(const WayBySecond& way, const std::vector<Corner>& corners,
                            const std::vector<FoundMark>& marks, const std::optional<double>& wind,
                            int from, int to) {
    const std::vector<int> places = PlacesOf(marks);
    std::vector<Visit> visits;
    for (const Corner& corner : corners) {
        if (corner.Time < from || corner.Time > to) continue;
        double nearest = MarkReach;
        for (std::size_t mark = 0; mark < marks.size(); ++mark) {
            const double away = (marks[mark].At - corner.At).Length();
            if (away >= nearest) continue;
            if (nearest < MarkReach) visits.pop_back();
            nearest = away;
            const bool unlike = (corner.Turn < 0) != marks[mark].ToPort ||
                                (marks[mark].Changing && KindOf(corner, wind) == CornerKind::Tack);
            visits.push_back({places[mark], corner.Time, true, marks[mark].Passed, unlike});
        }
    }
    for (std::size_t mark = 0; mark < marks.size(); ++mark) {
        double nearest = NearBy;
        int when = 0;
        for (int t = std::max(from, way.First()); t <= std::min(to, way.Last()); t += 2) {
            const auto at = way.At(t);
            const double away = at ? (*at - marks[mark].At).Length() : NearBy;
            if (away < nearest) nearest = away, when = t;
            const bool out = away >= NearBy || t + 2 > std::min(to, way.Last());
            if (!out || nearest >= NearBy) continue;
            const bool turned = std::ranges::any_of(visits, [&](const Visit& visit) {
                return visit.Place == places[mark] && std::abs(visit.Time - when) < SameVisit;
            });
            if (!turned) visits.push_back({places[mark], when, false, marks[mark].Passed, false});
            nearest = NearBy;
        }
    }
    std::ranges::stable_sort(visits, {}, &Visit::Time);
    std::vector<Visit> apart;  // turns of one rounding are one visit
    for (const Visit& visit : visits) {
        if (!apart.empty() && apart.back().Place == visit.Place &&
            visit.Time - apart.back().Time < SameVisit) {
            apart.back().Turns |= visit.Turns;
            apart.back().Unlike &= visit.Unlike;
        } else {
            apart.push_back(visit);
        }
    }
    return apart;
}

FoundCourse FindCourse(const FleetVisits& visits, int places) {
    std::vector<std::pair<double, std::vector<int>>> tried;
    for (const auto& boat : visits) {
        std::vector<int> order = OrderOf(boat);
        if (std::ranges::any_of(tried, [&](const auto& each) { return each.second == order; })) continue;
        const double cost = CostOf(visits, order);
        tried.emplace_back(cost, std::move(order));
    }
    std::ranges::sort(tried);
    if (tried.size() > MostTried) tried.resize(MostTried);
    FoundCourse course;
    double least = std::numeric_limits<double>::infinity();
    for (auto& [cost, order] : tried) {
        const double now = Improve(visits, places, order);
        if (now < least) least = now, course.Places = order;
    }
    Explain(visits, course);
    return course;
}

}  // namespace keelview
