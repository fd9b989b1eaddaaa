#include "analysis/mark_candidates.h"

#include <algorithm>
#include <cmath>

#include "analysis/mark_passing.h"
#include "analysis/medians.h"
#include "base/angles.h"

namespace keelview {

namespace {

constexpr double SameVisit = 60;    // seconds
constexpr double MostScatter = 20;  // metres
constexpr double LeastOneWay = 0.72;
constexpr double InnerShare = 0.75;
constexpr double Berth = 4;   // metres that the closest boats leave
constexpr double Waist = 40;  // metres: all boats come by so close at a mark, whether they turn or not
constexpr int Late = 120;     // seconds that boats may come by before and behind those that turn
constexpr double LeastPassing = 0.78, LeastLike = 0.9;  // of the boats, and of their passings, at a mark
constexpr double LeastOfChanges = 0.7;                  // of the passings, where most turn
constexpr double LeastOfAll = 0.45;    // of the boats, that change to another angle off the wind
constexpr double LeastOfTacks = 0.75;  // or turn the same way
constexpr double LeastTurning = 0.3;   // or turn, where they come together
constexpr double LeastAtWaist = 0.15;
constexpr double LeastLarge = 25, LeastOfHairpin = 40;  // degrees
constexpr int BendReach = 60, BendApart = 10;           // seconds from a passing
constexpr double LeastBend = 12;                        // degrees
constexpr int LegReach = 180;                           // seconds
constexpr double LeastCourse = 20;                      // degrees
constexpr double LeastApart = 30;                       // metres

double MiddleBearing(const std::vector<double>& bearings) {
    Way sum;
    for (const double each : bearings) sum = sum + Towards(each);
    return sum.Bearing();
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

/// The boats that are still racing about when others make some turns: those that make one later.
double BoatsAt(const std::vector<Corner>& turns, const std::vector<int>& lastTurns) {
    std::vector<double> times;
    times.reserve(turns.size());
    for (const Corner& corner : turns) times.push_back(corner.Time);
    const double time = MedianOf(std::move(times)) - SameVisit / 2;
    const auto racing = std::ranges::count_if(lastTurns, [&](int last) { return last >= time; });
    return std::max({static_cast<double>(racing), 0.6 * static_cast<double>(lastTurns.size()), 1.0});
}

/// How boats pass where they turn.
std::vector<Passing> TurnsOf(const std::vector<const WayBySecond*>& fleet,
                             const std::vector<Corner>& turns) {
    std::vector<Passing> passings;
    passings.reserve(turns.size());
    for (const Corner& corner : turns)
        passings.push_back({fleet[static_cast<std::size_t>(corner.Boat)], corner.Time});
    return passings;
}

/// How the boats pass a place where some of them turn: those about their turns, the others where they come
/// near while others turn. A boat passes once in a minute.
std::vector<Passing> PassingsAt(const std::vector<const WayBySecond*>& fleet,
                                const std::vector<Corner>& turns, Way place) {
    std::vector<Passing> passings;
    std::vector<std::vector<int>> times(fleet.size());
    for (const Corner& corner : turns) {
        const auto boat = static_cast<std::size_t>(corner.Boat);
        const int aside = static_cast<int>(SameVisit) / 2;
        const int when = NearestSecond(*fleet[boat], place, Waist, corner.Time - aside, corner.Time + aside)
                             .value_or(corner.Time);
        if (std::ranges::any_of(times[boat], [&](int other) { return std::abs(other - when) < SameVisit; }))
            continue;
        times[boat].push_back(when);
        passings.push_back({fleet[boat], when});
    }
    const auto [first, last] = std::ranges::minmax(turns, {}, &Corner::Time);
    for (std::size_t boat = 0; boat < fleet.size(); ++boat) {
        if (!times[boat].empty()) continue;
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

PassedPlace PassedAt(const std::vector<Passing>& passings, const FoundMark& mark, double boats) {
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
    for (const int seconds : {40, 80, 120})
        place.Waist |= std::max(ApartAt(passings, -seconds), ApartAt(passings, seconds)) >= LeastApart;
    Way before, behind;
    for (const Passing& each : passings) {
        const auto from = each.Sails->At(each.About - LegReach), at = each.Sails->At(each.About);
        const auto to = each.Sails->At(each.About + LegReach);
        if (from && at && to) before = before + (*at - *from), behind = behind + (*to - *at);
    }
    place.Course = TurnBetween(before.Bearing(), behind.Bearing());
    double best = -1;
    for (const bool toPort : {true, false}) {
        if (mark.OneWay >= LeastOneWay ? toPort != mark.ToPort
                                       : std::abs(place.Bend) >= LeastBend && toPort != (place.Bend < 0))
            continue;
        const Way at = FitMark(passings, toPort, mark.At);
        const auto berths = BerthsAt(passings, at);
        const double like = MarkLike(berths, toPort);
        if (like <= best) continue;
        best = like;
        place.At = at, place.ToPort = toPort, place.Like = like;
        std::vector<const WayBySecond*> seen;
        for (std::size_t i = 0; i < passings.size(); ++i) {
            const std::optional<double>& berth = berths[i];
            if (berth && IsMarkLike(*berth, toPort) &&
                std::ranges::find(seen, passings[i].Sails) == seen.end())
                seen.push_back(passings[i].Sails);
        }
        place.Share = std::min(1.0, static_cast<double>(seen.size()) / boats);
    }
    return place;
}

/// The turns of a place by their kinds.
struct TurnKinds {
    std::vector<Corner> Changes;   ///< to another angle off the wind
    std::vector<Corner> Large;     ///< those of them that are no mere bends
    std::vector<Corner> Rounding;  ///< and those that turn about
    std::vector<Corner> WithoutTacks;
};

TurnKinds KindsOf(const std::vector<Corner>& turns, const std::optional<double>& wind) {
    TurnKinds kinds;
    for (const Corner& corner : turns) {
        const CornerKind kind = KindOf(corner, wind);
        if (kind != CornerKind::Tack) kinds.WithoutTacks.push_back(corner);
        if (kind != CornerKind::Change) continue;
        kinds.Changes.push_back(corner);
        if (std::abs(corner.Turn) >= LeastLarge) kinds.Large.push_back(corner);
        if (std::abs(corner.Turn) >= LeastOfHairpin) kinds.Rounding.push_back(corner);
    }
    return kinds;
}

/// The mark as the turns tell it, but for tacks where there are others.
FoundMark MarkOfTurns(const TurnPlace& place, const TurnKinds& kinds, double boats,
                      const std::optional<double>& wind) {
    FoundMark mark = MarkOf(kinds.WithoutTacks.empty() ? place.Turns : kinds.WithoutTacks, boats);
    const auto like = static_cast<double>(kinds.WithoutTacks.size());
    const auto unlike = static_cast<double>(std::ranges::count_if(
        place.Others, [&](const Corner& corner) { return KindOf(corner, wind) != CornerKind::Tack; }));
    mark.OneWay = like / std::max(like + unlike, 1.0);
    return mark;
}

}  // namespace

int BoatsOf(const std::vector<Corner>& corners) {
    std::vector<int> seen;
    for (const Corner& corner : corners)
        if (std::ranges::find(seen, corner.Boat) == seen.end()) seen.push_back(corner.Boat);
    return static_cast<int>(seen.size());
}

bool IsSharp(const FoundMark& mark) {
    return mark.Scatter <= MostScatter && mark.OneWay >= LeastOneWay;
}

MarkCandidate CandidateOf(const TurnPlace& place, const std::vector<int>& lastTurns,
                          const std::vector<const WayBySecond*>& fleet, const std::optional<double>& wind) {
    const std::vector<Corner>& turns = place.Turns;
    const double boats = BoatsAt(turns, lastTurns);
    const TurnKinds kinds = KindsOf(turns, wind);
    std::vector<Corner> both = turns;
    both.insert(both.end(), place.Others.begin(), place.Others.end());
    MarkCandidate candidate;
    candidate.Mark = MarkOfTurns(place, kinds, boats, wind);
    const PassedPlace passed = PassedAt(PassingsAt(fleet, both, candidate.Mark.At), candidate.Mark, boats);
    const bool passes = passed.Share >= LeastPassing && passed.Like >= LeastOfChanges;
    const bool leg = passes && std::abs(passed.Course) >= LeastCourse;
    const bool close = leg && passed.Like >= LeastLike;
    const bool most = BoatsOf(turns) >= LeastOfTacks * boats && MarkOf(turns, boats).Scatter <= MostScatter;
    const bool bends = passed.Bends && BoatsOf(kinds.Changes) >= LeastTurning * boats;
    candidate.Changing = passes && BoatsOf(kinds.Large) >= LeastOfAll * boats && IsSharp(candidate.Mark);
    candidate.Certain = candidate.Changing || (leg && most) || (close && bends);
    candidate.ByWaist =
        close && !candidate.Certain && passed.Waist && BoatsOf(both) >= LeastAtWaist * boats;
    candidate.Certain |= candidate.ByWaist;
    candidate.Rounding = kinds.Rounding;
    candidate.OfGate = MarkOf(kinds.Rounding, boats);
    candidate.OfGate.OneWay = candidate.Mark.OneWay;
    if (!kinds.Rounding.empty())
        candidate.OfGate.At =
            FitMark(TurnsOf(fleet, kinds.Rounding), candidate.OfGate.ToPort, candidate.OfGate.At);
    if (passes) {
        candidate.Mark.At = passed.At;
        candidate.Mark.ToPort = passed.ToPort;
    }
    candidate.Mark.Changing = candidate.Changing;
    candidate.Mark.Passed = candidate.ByWaist;
    candidate.Tacks = 2 * kinds.WithoutTacks.size() < turns.size();
    candidate.Turns = turns;
    return candidate;
}

}  // namespace keelview
