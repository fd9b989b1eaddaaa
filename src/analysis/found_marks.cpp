#include "analysis/found_marks.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <unordered_map>

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
constexpr double MostScatter = 17;     // metres
constexpr double LeastOneWay = 0.72;
constexpr double LeastOfTacks = 0.75,
                 LeastOfFew = 0.85;    // of the boats, where they tack or gybe at the mark
constexpr double Few = 10;             // boats
constexpr double ScatterOfTacks = 13;  // metres
constexpr double Waist = 35;  // metres: all boats come by so close at a mark, whether they turn or not
constexpr double LeastOfWaist = 0.4, AllOfWaist = 0.9;
constexpr double WaistApart = 350;  // metres from another mark
constexpr int Late = 120;           // seconds that boats may come by before and behind those that turn
constexpr int LeadsOn = 100;        // seconds from the last tack or gybe to the mark that it leads to
constexpr int MostMarks = 24;
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

    std::vector<std::vector<std::size_t>> Run(int boats) {
        std::vector<std::vector<std::size_t>> places;
        std::vector<std::pair<double, std::size_t>> seeds;
        seeds.reserve(corners_.size());
        for (std::size_t i = 0; i < corners_.size(); ++i) seeds.emplace_back(ScoreAt(corners_[i].At), i);
        std::ranges::make_heap(seeds);
        while (!seeds.empty() && places.size() < MostMarks) {
            std::ranges::pop_heap(seeds);
            const auto [score, seed] = seeds.back();
            seeds.pop_back();
            if (score < std::max(1.2, LeastOfGate * boats)) break;
            if (taken_[seed]) continue;
            const double now = ScoreAt(corners_[seed].At);
            if (now < score) {
                seeds.emplace_back(now, seed);
                std::ranges::push_heap(seeds);
                continue;
            }
            places.push_back(TakeAt(corners_[seed].At));
        }
        return places;
    }

  private:
    /// The weights of the boats that turn about a place.
    double ScoreAt(Way at) {
        std::vector<int> seen;
        squares_.ForEachNear(at, Near, [&](std::size_t i) {
            if (taken_[i]) return;
            double& best = best_[static_cast<std::size_t>(corners_[i].Boat)];
            if (best == 0) seen.push_back(corners_[i].Boat);
            best = std::max(best, weights_[i]);
        });
        double score = 0;
        for (const int boat : seen) score += std::exchange(best_[static_cast<std::size_t>(boat)], 0.0);
        return score;
    }

    /// The turns about a place, whose middle is sought from there; they make no other place.
    std::vector<std::size_t> TakeAt(Way at) {
        for (int round = 0; round < 3; ++round) {
            std::vector<double> easts, norths;
            squares_.ForEachNear(at, Near + 5, [&](std::size_t i) {
                if (taken_[i]) return;
                easts.push_back(corners_[i].At.East);
                norths.push_back(corners_[i].At.North);
            });
            if (!easts.empty()) at = {MedianOf(std::move(easts)), MedianOf(std::move(norths))};
        }
        std::vector<std::size_t> turns;
        squares_.ForEachNear(at, Taken, [&](std::size_t i) {
            if (taken_[i]) return;
            taken_[i] = true;
            turns.push_back(i);
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
    double Changes = 0.0;   ///< the share of the boats that go to another angle off the wind here
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

/// True if a boat comes within some metres of a place between two moments.
bool ComesBy(const WayBySecond& way, Way place, double metres, int from, int to) {
    constexpr double fastest = 10;  // metres a second
    for (int t = std::max(from, way.First()); t <= std::min(to, way.Last());) {
        const auto at = way.At(t);
        const double away = at ? (*at - place).Length() : metres + 2 * fastest;
        if (away <= metres) return true;
        t += std::max(1, static_cast<int>((away - metres) / fastest));
    }
    return false;
}

/// How many boats come by a place while others turn there.
int ComingBy(const std::vector<const WayBySecond*>& fleet, const std::vector<Corner>& turns, Way place) {
    const auto [first, last] = std::ranges::minmax(turns, {}, &Corner::Time);
    return static_cast<int>(std::ranges::count_if(fleet, [&](const WayBySecond* way) {
        return ComesBy(*way, place, Waist, first.Time - Late, last.Time + Late);
    }));
}

Candidate CandidateOf(std::vector<Corner> turns, const std::vector<int>& lastTurns,
                      const std::vector<const WayBySecond*>& fleet, const std::optional<double>& wind) {
    Candidate candidate;
    const double boats = BoatsAt(turns, lastTurns);
    candidate.Changes = BoatsOf(OfKind(turns, CornerKind::Change, wind)) / boats;
    std::vector<Corner> withoutTacks = turns;
    std::erase_if(withoutTacks,
                  [&](const Corner& corner) { return KindOf(corner, wind) == CornerKind::Tack; });
    candidate.Mark = MarkOf(withoutTacks, boats);
    candidate.Changing = candidate.Changes >= LeastOfAll && IsSharp(candidate.Mark);
    candidate.Certain = candidate.Changing;
    for (const bool toPort : {true, false}) {
        std::vector<Corner> some = turns;
        std::erase_if(some, [&](const Corner& corner) { return (corner.Turn < 0) != toPort; });
        const FoundMark mark = MarkOf(some, boats);
        const bool nearlyAll = boats >= Few && mark.Share >= LeastOfFew && mark.Scatter <= MostScatter;
        const bool waist = mark.Share >= LeastOfWaist && mark.Scatter <= ScatterOfTacks &&
                           BoatsOf(some) > 2 && ComingBy(fleet, some, mark.At) >= AllOfWaist * boats;
        const bool most =
            mark.Share >= (boats < Few ? LeastOfFew : LeastOfTacks) && mark.Scatter <= ScatterOfTacks;
        if (candidate.Certain || !(nearlyAll || most || waist)) continue;
        candidate.Mark = mark;
        candidate.ByWaist = !nearlyAll && !most;
        candidate.Certain = true;
    }
    candidate.Turns = std::move(turns);
    return candidate;
}

/// True if most boats that turn at one place are at another one soon after it.
bool LeadsTo(const Candidate& from, const Candidate& to) {
    int count = 0;
    for (const Corner& corner : from.Turns)
        count += std::ranges::any_of(to.Turns, [&](const Corner& next) {
            return next.Boat == corner.Boat && next.Time > corner.Time && next.Time < corner.Time + LeadsOn;
        });
    return 2 * count > static_cast<int>(from.Turns.size());
}

/// True if boats take one of two places or the other in the same phase of the race, and hardly both at
/// once.
bool TakeOneOfTwo(const std::vector<Corner>& a, const std::vector<Corner>& b) {
    std::vector<double> times, others;
    for (const Corner& corner : a) times.push_back(corner.Time);
    for (const Corner& corner : b) others.push_back(corner.Time);
    const auto within = [](const std::vector<double>& some, const std::vector<double>& all) {
        const double middle = MedianOf(some);
        return middle > QuantileOf(all, 0.05) - SameVisit && middle < QuantileOf(all, 0.95) + SameVisit;
    };
    if (!within(times, others) || !within(others, times)) return false;
    int both = 0;
    for (const Corner& one : a)
        for (const Corner& other : b)
            both += one.Boat == other.Boat && std::abs(one.Time - other.Time) < SameVisit;
    return 4 * both <= static_cast<int>(std::min(a.size(), b.size()));
}

/// What lies beside a better mark and is left on the same side is a part of its roundings.
bool IsBeside(const FoundMark& mark, const std::vector<FoundMark>& better) {
    return std::ranges::any_of(better, [&](const FoundMark& other) {
        return other.ToPort == mark.ToPort && (other.At - mark.At).Length() < MarkReach;
    });
}

bool MakeGate(const Candidate& one, const Candidate& two) {
    const FoundMark& a = one.Mark;
    const FoundMark& b = two.Mark;
    const double apart = (a.At - b.At).Length();
    const auto [lesser, other] = std::minmax(one.Changes, two.Changes);
    return IsSharp(a) && IsSharp(b) && a.ToPort != b.ToPort && apart > NarrowestGate &&
           apart < WidestGate && std::abs(TurnBetween(a.In, b.In)) < 75 &&
           lesser >= std::max(LeastOfGate, LeastOfOther * other) && lesser + other >= LeastOfAll &&
           std::min(BoatsOf(one.Turns), BoatsOf(two.Turns)) > 1 && TakeOneOfTwo(one.Turns, two.Turns);
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
    for (const auto& places : MarkSearch(corners, boats, wind).Run(boats)) {
        std::vector<Corner> turns;
        turns.reserve(places.size());
        for (const std::size_t i : places) turns.push_back(corners[i]);
        all.push_back(CandidateOf(std::move(turns), lastTurns, fleet, wind));
    }
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
