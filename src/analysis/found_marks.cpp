#include "analysis/found_marks.h"

#include <algorithm>
#include <cmath>
#include <tuple>
#include <unordered_map>

#include "analysis/mark_passing.h"
#include "analysis/medians.h"
#include "base/angles.h"

namespace keelview {

namespace {

constexpr double Taken = 32;           // metres about a place within which all turns are its own
constexpr double Near = 25;            // metres that turns at one mark lie apart
constexpr double LeastOfAll = 0.45;    // of the boats, that make a mark
constexpr double LeastOfGate = 0.15;   // of the boats, and
constexpr double LeastOfOther = 0.25;  // of those at the other one, at the lesser mark of a gate
constexpr double WidestGate = 130;     // metres
constexpr double NarrowestGate = 18;   // metres
constexpr double SameVisit = 60;       // seconds
constexpr double MostScatter = 20;     // metres
constexpr double LeastOneWay = 0.72;
constexpr double Waist = 40;  // metres: all boats come by so close at a mark, whether they turn or not
constexpr double LeastOfChanges = 0.7, LeastLarge = 25, LeastOfHairpin = 40, LeastCourse = 20;
constexpr int LegReach = 180;
constexpr double LeastPassing = 0.78, LeastLike = 0.9;     // of the boats, and of their passings, at a mark
constexpr double LeastOfTacks = 0.75, LeastTurning = 0.3;  // of the boats, that turn at a mark
constexpr int BendReach = 60, BendApart = 10;              // seconds from a passing
constexpr double LeastBend = 12;                           // degrees
constexpr double LeastApart = 30;                          // metres
constexpr double WaistApart = 350;                         // metres from another mark
constexpr int Late = 120;  // seconds that boats may come by before and behind those that turn
constexpr int LeadsOn = 100,
              TackLeadsOn = 170;  // seconds from the last tack or gybe to the mark that it leads to
constexpr int MostMarks = 48;
constexpr double LeastScore = 0.06;
constexpr double TrackedNear = 60;  // metres from a mark at which something lying is it
constexpr double InnerShare = 0.75;
constexpr double Berth = 4;  // metres that the closest boats leave

double WeightOf(const Corner& corner, const std::optional<double>& wind) {
    switch (KindOf(corner, wind)) {
        case CornerKind::Tack:
            return 0.3;
        case CornerKind::Gybe:
            return 0.5;
        case CornerKind::Change:
            break;
    }
    return std::abs(corner.Turn) < 40 ? 0.75 : 1.0;
}

/// The corners by the squares of water in which they lie.
class Squares {
  public:
    explicit Squares(const std::vector<Corner>& corners) : corners_(corners) {
        for (std::size_t i = 0; i < corners.size(); ++i) squares_[KeyOf(corners[i].At, 0, 0)].push_back(i);
    }

    template <class Take>
    void ForEachNear(Way at, double metres, Take take) const {
        const int reach = static_cast<int>(std::ceil(metres / Side));
        for (int east = -reach; east <= reach; ++east)
            for (int north = -reach; north <= reach; ++north) {
                const auto square = squares_.find(KeyOf(at, east, north));
                if (square == squares_.end()) continue;
                for (const std::size_t i : square->second)
                    if ((corners_[i].At - at).Square() <= metres * metres) take(i);
            }
    }

  private:
    static constexpr double Side = 25;
    static std::int64_t KeyOf(Way at, int east, int north) {
        constexpr std::int64_t row = 1 << 20;
        return (std::llround(at.East / Side) + east) * row + std::llround(at.North / Side) + north;
    }

    const std::vector<Corner>& corners_;
    std::unordered_map<std::int64_t, std::vector<std::size_t>> squares_;
};

/// The search for places, the best first.
class MarkSearch {
  public:
    MarkSearch(const std::vector<Corner>& corners, int boats, const std::optional<double>& wind)
        : corners_(corners),
          squares_(corners),
          taken_(corners.size()),
          best_(static_cast<std::size_t>(boats)) {
        for (const Corner& corner : corners) {
            weights_.push_back(WeightOf(corner, wind));
            boats_ = std::max(boats_, corner.Boat + 1);
        }
        best_.resize(static_cast<std::size_t>(boats_));
    }

    /// The turns of each place, all to one side, and those to the other side there.
    std::vector<std::pair<std::vector<Corner>, std::vector<Corner>>> Run(int boats) {
        std::vector<std::pair<std::vector<Corner>, std::vector<Corner>>> places;
        std::vector<std::pair<double, std::size_t>> seeds;
        seeds.reserve(corners_.size());
        for (std::size_t i = 0; i < corners_.size(); ++i) seeds.emplace_back(ScoreAt(i), i);
        std::ranges::make_heap(seeds);
        while (!seeds.empty() && places.size() < MostMarks) {
            std::ranges::pop_heap(seeds);
            const auto [score, seed] = seeds.back();
            seeds.pop_back();
            if (score < std::max(0.8, LeastScore * boats)) break;
            if (taken_[seed]) continue;
            const double now = ScoreAt(seed);
            if (now < score) {
                seeds.emplace_back(now, seed);
                std::ranges::push_heap(seeds);
                continue;
            }
            places.push_back(TakeAt(seed));
        }
        return places;
    }

  private:
    bool SameSide(std::size_t a, std::size_t b) const {
        return (corners_[a].Turn < 0) == (corners_[b].Turn < 0);
    }

    /// The weights of the boats that turn about a corner, to its side.
    double ScoreAt(std::size_t seed) {
        std::vector<int> seen;
        squares_.ForEachNear(corners_[seed].At, Near, [&](std::size_t i) {
            if (taken_[i] || !SameSide(i, seed)) return;
            double& best = best_[static_cast<std::size_t>(corners_[i].Boat)];
            if (best == 0) seen.push_back(corners_[i].Boat);
            best = std::max(best, weights_[i]);
        });
        double score = 0;
        for (const int boat : seen) score += std::exchange(best_[static_cast<std::size_t>(boat)], 0.0);
        return score;
    }

    /// The turns about a place, whose middle is sought from a corner; they make no other place.
    std::pair<std::vector<Corner>, std::vector<Corner>> TakeAt(std::size_t seed) {
        Way at = corners_[seed].At;
        for (int round = 0; round < 3; ++round) {
            std::vector<double> easts, norths;
            squares_.ForEachNear(at, Near + 5, [&](std::size_t i) {
                if (taken_[i] || !SameSide(i, seed)) return;
                easts.push_back(corners_[i].At.East);
                norths.push_back(corners_[i].At.North);
            });
            if (!easts.empty()) at = {MedianOf(std::move(easts)), MedianOf(std::move(norths))};
        }
        std::pair<std::vector<Corner>, std::vector<Corner>> turns;
        squares_.ForEachNear(at, Taken, [&](std::size_t i) {
            if (!SameSide(i, seed)) {
                if ((corners_[i].At - at).Length() <= Near) turns.second.push_back(corners_[i]);
            } else if (!taken_[i]) {
                taken_[i] = true;
                turns.first.push_back(corners_[i]);
            }
        });
        return turns;
    }

    const std::vector<Corner>& corners_;
    Squares squares_;
    std::vector<double> weights_;
    std::vector<bool> taken_;
    std::vector<double> best_;  // by boat, while a score is added up
    int boats_ = 0;
};

double MiddleBearing(const std::vector<double>& bearings) {
    Way sum;
    for (const double each : bearings) sum = sum + Towards(each);
    return sum.Bearing();
}

bool IsSharp(const FoundMark& mark) {
    return mark.Scatter <= MostScatter && mark.OneWay >= LeastOneWay;
}

/// The boats that some corners are of, each once.
int BoatsOf(const std::vector<Corner>& corners) {
    std::vector<int> seen;
    for (const Corner& corner : corners)
        if (std::ranges::find(seen, corner.Boat) == seen.end()) seen.push_back(corner.Boat);
    return static_cast<int>(seen.size());
}

/// Where the mark lies that some turns go round: inside of them, close to the closest.
FoundMark MarkOf(const std::vector<Corner>& turns, double boats) {
    FoundMark mark;
    if (turns.empty()) return mark;
    std::vector<double> easts, norths, ins, inwards;
    int toPort = 0;
    for (const Corner& corner : turns) {
        easts.push_back(corner.At.East);
        norths.push_back(corner.At.North);
        ins.push_back(corner.In);
        inwards.push_back(corner.Middle() + (corner.Turn < 0 ? -90 : 90));
        toPort += corner.Turn < 0;
    }
    const int count = static_cast<int>(turns.size());
    mark.ToPort = 2 * toPort >= count;
    mark.OneWay = static_cast<double>(mark.ToPort ? toPort : count - toPort) / count;
    mark.Share = std::min(1.0, BoatsOf(turns) / boats);
    mark.In = MiddleBearing(ins);
    const Way middle{MedianOf(easts), MedianOf(norths)};
    const Way inward = Towards(MiddleBearing(inwards));
    std::vector<double> depths, offs;
    for (const Corner& corner : turns) {
        const Way off = corner.At - middle;
        depths.push_back(off.Along(inward));
        offs.push_back(off.Length());
    }
    mark.Scatter = MedianOf(std::move(offs));
    mark.At = middle + inward * (QuantileOf(std::move(depths), InnerShare) + Berth);
    return mark;
}

/// A place where turns lie together.
struct Candidate {
    std::vector<Corner> Turns;
    FoundMark Mark;
    std::vector<Corner> Rounding;  ///< those that turn about
    FoundMark OfGate;       ///< as the turns alone tell it: the others may have gone round its partner
    double Changes = 0.0;   ///< the share of the boats that go to another angle off the wind here
    bool Tacks = false;     ///< most turns are tacks
    bool Certain = false;   ///< a mark by itself
    bool ByWaist = false;   ///< only as all boats come by
    bool Changing = false;  ///< it is one by its changes, not by tacks or gybes
};

/// The boats that are still racing about when others make some turns: those that make one later.
double BoatsAt(const std::vector<Corner>& turns, const std::vector<int>& lastTurns) {
    std::vector<double> times;
    times.reserve(turns.size());
    for (const Corner& corner : turns) times.push_back(corner.Time);
    const double time = MedianOf(std::move(times)) - SameVisit / 2;
    const auto racing = std::ranges::count_if(lastTurns, [&](int last) { return last >= time; });
    return std::max({static_cast<double>(racing), 0.6 * static_cast<double>(lastTurns.size()), 1.0});
}

std::vector<Corner> OfKind(const std::vector<Corner>& turns, CornerKind kind,
                           const std::optional<double>& wind) {
    std::vector<Corner> some;
    for (const Corner& corner : turns)
        if (KindOf(corner, wind) == kind) some.push_back(corner);
    return some;
}

/// How the boats pass a place where some of them turn: those at their turns, the others where they come
/// near while others turn.
std::vector<Passing> PassingsAt(const std::vector<const WayBySecond*>& fleet,
                                const std::vector<Corner>& turns, Way place) {
    std::vector<Passing> passings;
    std::vector<bool> turned(fleet.size());
    for (const Corner& corner : turns) {
        const auto boat = static_cast<std::size_t>(corner.Boat);
        passings.push_back({fleet[boat], corner.Time});
        turned[boat] = true;
    }
    const auto [first, last] = std::ranges::minmax(turns, {}, &Corner::Time);
    for (std::size_t boat = 0; boat < fleet.size(); ++boat) {
        if (turned[boat]) continue;
        const auto when = NearestSecond(*fleet[boat], place, Waist, first.Time - Late, last.Time + Late);
        if (when) passings.push_back({fleet[boat], *when});
    }
    return passings;
}

/// What the passings at a place tell of a mark there.
struct PassedPlace {
    Way At;               ///< where the mark fits best
    bool ToPort = false;  ///< it is left to port
    double Share = 0.0;   ///< of the boats, that leave it as boats leave a mark
    double Like = 0.0;    ///< of the passings that are such
    double Bend = 0.0;    ///< degrees between the ways to it and from it, of the middle boat
    bool Bends = false;   ///< nearly all bend the same way
    bool Waist = false;   ///< boats that were apart before it or are apart behind it
    double Course = 0.0;  ///< degrees between the fleet's way of some minutes before it and behind it
};

/// How far apart boats are so many seconds from their passings: of four in five, from the middle one.
double ApartAt(const std::vector<Passing>& passings, int seconds) {
    std::vector<Way> offs;
    std::vector<double> easts, norths, away;
    for (const Passing& each : passings) {
        const auto at = each.Sails->At(each.About), then = each.Sails->At(each.About + seconds);
        if (!at || !then) continue;
        offs.push_back(*then - *at);
        easts.push_back(offs.back().East), norths.push_back(offs.back().North);
    }
    const Way middle{MedianOf(std::move(easts)), MedianOf(std::move(norths))};
    for (const Way& off : offs) away.push_back((off - middle).Length());
    return QuantileOf(std::move(away), 0.8);
}

PassedPlace PassedAt(const std::vector<Passing>& passings, const std::vector<Corner>& turns,
                     const FoundMark& mark, double boats) {
    PassedPlace place;
    std::vector<double> bends;
    for (const Passing& each : passings) {
        const auto in = each.Sails->Velocity(each.About - BendReach, each.About - BendApart);
        const auto out = each.Sails->Velocity(each.About + BendApart, each.About + BendReach);
        if (in && out) bends.push_back(TurnBetween(in->Bearing(), out->Bearing()));
    }
    const double low = QuantileOf(bends, 0.2), high = QuantileOf(bends, 0.8);
    place.Bend = MedianOf(std::move(bends));
    place.Bends = std::abs(place.Bend) >= LeastBend && low * high > 0;
    place.Waist =
        std::max(ApartAt(passings, -BendReach * 2 / 3), ApartAt(passings, BendReach * 2 / 3)) >= LeastApart;
    Way before, behind;
    for (const Passing& each : passings) {
        const auto from = each.Sails->At(each.About - LegReach), at = each.Sails->At(each.About);
        const auto to = each.Sails->At(each.About + LegReach);
        if (from && at && to) before = before + (*at - *from), behind = behind + (*to - *at);
    }
    place.Course = TurnBetween(before.Bearing(), behind.Bearing());
    std::vector<Way> places;
    places.reserve(turns.size());
    for (const Corner& corner : turns) places.push_back(corner.At);
    double best = -1;
    for (const bool toPort : {true, false}) {
        if (mark.OneWay >= LeastOneWay ? toPort != mark.ToPort
                                       : std::abs(place.Bend) >= LeastBend && toPort != (place.Bend < 0))
            continue;
        const Way at = FitMark(passings, places, toPort, mark.At);
        const auto berths = BerthsAt(passings, at);
        const double like = MarkLike(berths, toPort);
        if (like <= best) continue;
        best = like;
        place.At = at, place.ToPort = toPort, place.Like = like;
        std::vector<const WayBySecond*> seen;
        for (std::size_t i = 0; i < passings.size(); ++i)
            if (berths[i] && IsMarkLike(*berths[i], toPort) &&
                std::ranges::find(seen, passings[i].Sails) == seen.end())
                seen.push_back(passings[i].Sails);
        place.Share = std::min(1.0, static_cast<double>(seen.size()) / boats);
    }
    return place;
}

Candidate CandidateOf(std::vector<Corner> turns, const std::vector<Corner>& others,
                      const std::vector<int>& lastTurns, const std::vector<const WayBySecond*>& fleet,
                      const std::optional<double>& wind) {
    Candidate candidate;
    const double boats = BoatsAt(turns, lastTurns);
    candidate.Changes = BoatsOf(OfKind(turns, CornerKind::Change, wind)) / boats;
    std::vector<Corner> withoutTacks = turns;
    std::erase_if(withoutTacks,
                  [&](const Corner& corner) { return KindOf(corner, wind) == CornerKind::Tack; });
    candidate.Mark = MarkOf(withoutTacks, boats);
    if (withoutTacks.empty()) candidate.Mark = MarkOf(turns, boats);
    std::vector<Corner> both = turns;
    both.insert(both.end(), others.begin(), others.end());
    const auto unlike = std::ranges::count_if(
        others, [&](const Corner& corner) { return KindOf(corner, wind) != CornerKind::Tack; });
    const auto like = std::ssize(withoutTacks);
    candidate.Mark.OneWay =
        static_cast<double>(like) / static_cast<double>(std::max<std::ptrdiff_t>(like + unlike, 1));
    const PassedPlace passed =
        PassedAt(PassingsAt(fleet, both, candidate.Mark.At), turns, candidate.Mark, boats);
    const bool passes = passed.Share >= LeastPassing && passed.Like >= LeastOfChanges;
    const auto large = [&](const Corner& corner) { return std::abs(corner.Turn) >= LeastLarge; };
    std::vector<Corner> changing = OfKind(turns, CornerKind::Change, wind);
    std::erase_if(changing, [&](const Corner& corner) { return !large(corner); });
    candidate.Changes = BoatsOf(changing) / boats;
    candidate.Changing = passes && candidate.Changes >= LeastOfAll && IsSharp(candidate.Mark);
    const bool leg = passes && std::abs(passed.Course) >= LeastCourse;
    const bool close = leg && passed.Like >= LeastLike;
    const double same = BoatsOf(turns) / boats;
    const double small = BoatsOf(OfKind(turns, CornerKind::Change, wind)) / boats;
    const bool most = same >= LeastOfTacks && MarkOf(turns, boats).Scatter <= MostScatter;
    const bool bends = passed.Bends && small >= LeastTurning;
    candidate.Certain = candidate.Changing || (leg && most) || (close && bends);
    candidate.ByWaist =
        close && !candidate.Certain && passed.Waist && BoatsOf(both) / boats >= LeastTurning;
    candidate.Certain |= candidate.ByWaist;
    candidate.Rounding = changing;
    std::erase_if(candidate.Rounding,
                  [](const Corner& corner) { return std::abs(corner.Turn) < LeastOfHairpin; });
    candidate.OfGate = MarkOf(candidate.Rounding, boats);
    candidate.OfGate.OneWay = candidate.Mark.OneWay;
    if (passes) {
        candidate.Mark.At = passed.At;
        candidate.Mark.ToPort = passed.ToPort;
    }
    candidate.Mark.Changing = candidate.Changing;
    candidate.Tacks = 2 * withoutTacks.size() < turns.size();
    candidate.Turns = std::move(turns);
    return candidate;
}

/// True if most boats that turn at one place are at another one soon after it.
bool LeadsTo(const Candidate& from, const Candidate& to) {
    const int seconds = from.Tacks ? TackLeadsOn : LeadsOn;
    int count = 0;
    for (const Corner& corner : from.Turns)
        count += std::ranges::any_of(to.Turns, [&](const Corner& next) {
            return next.Boat == corner.Boat && next.Time > corner.Time && next.Time < corner.Time + seconds;
        });
    return 2 * count > static_cast<int>(from.Turns.size());
}

/// True if boats take one of two places or the other in the same phase of the race, and hardly both at
/// once.
bool TakeOneOfTwo(const std::vector<Corner>& a, const std::vector<Corner>& b) {
    const auto& [lesser, more] = a.size() < b.size() ? std::tie(a, b) : std::tie(b, a);
    std::vector<double> times, others;
    for (const Corner& corner : lesser) times.push_back(corner.Time);
    for (const Corner& corner : more) others.push_back(corner.Time);
    const double middle = MedianOf(std::move(times));
    if (middle < QuantileOf(others, 0.05) - SameVisit || middle > QuantileOf(others, 0.95) + SameVisit)
        return false;
    int both = 0;
    for (const Corner& one : a)
        for (const Corner& other : b)
            both += one.Boat == other.Boat && std::abs(one.Time - other.Time) < SameVisit;
    return 2 * both <= static_cast<int>(std::min(a.size(), b.size()));
}

/// What lies beside a better mark and is left on the same side is a part of its roundings.
bool IsBeside(const FoundMark& mark, const std::vector<FoundMark>& better) {
    return std::ranges::any_of(better, [&](const FoundMark& other) {
        return (other.At - mark.At).Length() < (other.ToPort == mark.ToPort ? MarkReach : Near);
    });
}

bool MakeGate(const Candidate& one, const Candidate& two) {
    const FoundMark& a = one.OfGate;
    const FoundMark& b = two.OfGate;
    const double apart = (a.At - b.At).Length();
    if (one.Rounding.empty() || two.Rounding.empty()) return false;
    const auto [lesser, other] = std::minmax(a.Share, b.Share);
    return IsSharp(a) && IsSharp(b) && a.ToPort != b.ToPort && apart > NarrowestGate &&
           apart < WidestGate && std::abs(TurnBetween(a.In, b.In)) < 75 &&
           lesser >= std::max(LeastOfGate, LeastOfOther * other) && lesser + other >= LeastOfAll &&
           std::min(BoatsOf(one.Rounding), BoatsOf(two.Rounding)) > 1 &&
           TakeOneOfTwo(one.Rounding, two.Rounding);
}

std::vector<Candidate> CandidatesIn(const std::vector<Corner>& corners,
                                    const std::vector<const WayBySecond*>& fleet,
                                    const std::optional<double>& wind) {
    const int boats = static_cast<int>(fleet.size());
    std::vector<int> lastTurns(static_cast<std::size_t>(boats));
    for (const Corner& corner : corners) {
        int& last = lastTurns[static_cast<std::size_t>(corner.Boat)];
        last = std::max(last, corner.Time);
    }
    std::vector<Candidate> all;
    for (auto& [turns, others] : MarkSearch(corners, boats, wind).Run(boats))
        all.push_back(CandidateOf(std::move(turns), others, lastTurns, fleet, wind));
    // The last tacks and gybes before a mark lie together, too.
    std::vector<bool> leads;
    leads.reserve(all.size());
    for (const Candidate& each : all)
        leads.push_back(!each.Changing && std::ranges::any_of(all, [&](const Candidate& other) {
            const bool near = (other.Mark.At - each.Mark.At).Length() < WaistApart;
            return (other.Changing && LeadsTo(each, other)) ||
                   (each.ByWaist && other.Certain && !other.ByWaist && near);
        }));
    for (std::size_t i = 0; i < all.size(); ++i)
        if (leads[i]) all[i].Certain = false;
    return all;
}

}  // namespace

std::vector<FoundMark> FindMarks(const std::vector<Corner>& corners,
                                 const std::vector<const WayBySecond*>& fleet,
                                 const std::optional<double>& wind, const std::vector<Way>& lying) {
    const std::vector<Candidate> all = CandidatesIn(corners, fleet, wind);
    std::vector<FoundMark> marks;
    std::vector<int> number(all.size(), -1);  // among those that are kept
    const auto keep = [&](std::size_t i) -> FoundMark& {
        if (number[i] < 0) {
            number[i] = static_cast<int>(marks.size());
            marks.push_back(all[i].Mark);
        }
        return marks[static_cast<std::size_t>(number[i])];
    };
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (all[i].Certain && !IsBeside(all[i].Mark, marks)) keep(i);
        for (std::size_t k = 0; k < i; ++k) {
            if (!MakeGate(all[i], all[k])) continue;
            keep(k);
            FoundMark& two = keep(i);
            FoundMark& one = keep(k);
            if (one.Partner >= 0 || two.Partner >= 0) continue;
            one = all[k].OfGate;
            two = all[i].OfGate;
            one.Changing = two.Changing = true;
            one.Partner = number[i];
            two.Partner = number[k];
        }
    }
    for (FoundMark& mark : marks)
        for (const Way& at : lying)
            if ((at - mark.At).Length() < TrackedNear) mark.At = at, mark.Tracked = true;
    return marks;
}

}  // namespace keelview
