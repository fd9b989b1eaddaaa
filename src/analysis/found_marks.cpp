#include "analysis/found_marks.h"

#include <algorithm>
#include <cmath>
#include <tuple>

#include "analysis/mark_candidates.h"
#include "analysis/mark_passing.h"
#include "analysis/medians.h"
#include "base/angles.h"

namespace keelview {

namespace {

constexpr double LeastOfBoth = 0.45;   // of the boats, at a gate
constexpr double LeastOfGate = 0.15;   // of the boats, and
constexpr double LeastOfOther = 0.25;  // of those at the other one, at the lesser mark of it
constexpr double WidestGate = 130;     // metres
constexpr double NarrowestGate = 18;   // metres
constexpr double SameVisit = 60;       // seconds
constexpr double WaistApart = 350;     // metres from another mark
constexpr int LeadsOn = 100,
              TackLeadsOn = 170;    // seconds from the last gybe or tack to the mark it leads to
constexpr double TrackedNear = 60;  // metres from a mark at which something lying is it

/// True if most boats that turn at one place are at another one soon after it.
bool LeadsTo(const MarkCandidate& from, const MarkCandidate& to) {
    const int seconds = from.Tacks ? TackLeadsOn : LeadsOn;
    int count = 0;
    for (const Corner& corner : from.Turns)
        count += std::ranges::any_of(to.Turns, [&](const Corner& next) {
            return next.Boat == corner.Boat && next.Time > corner.Time && next.Time < corner.Time + seconds;
        });
    return 2 * count > static_cast<int>(from.Turns.size());
}

/// True if most boats that turn at one place come by another one, which lies near, on the same way.
bool IsOnTheWay(const MarkCandidate& one, const MarkCandidate& other,
                const std::vector<const WayBySecond*>& fleet) {
    if ((other.Mark.At - one.Mark.At).Length() >= WaistApart) return false;
    int count = 0;
    for (const Corner& corner : one.Turns)
        count += NearestSecond(*fleet[static_cast<std::size_t>(corner.Boat)], other.Mark.At, MarkReach,
                               corner.Time - TackLeadsOn, corner.Time + TackLeadsOn)
                     .has_value();
    return 2 * count > static_cast<int>(one.Turns.size());
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
        return (other.At - mark.At).Length() < (other.ToPort == mark.ToPort ? MarkReach : TurnReach);
    });
}

bool MakeGate(const MarkCandidate& one, const MarkCandidate& two) {
    const FoundMark& a = one.OfGate;
    const FoundMark& b = two.OfGate;
    const double apart = (a.At - b.At).Length();
    if (one.Rounding.empty() || two.Rounding.empty()) return false;
    const auto [lesser, other] = std::minmax(a.Share, b.Share);
    return IsSharp(a) && IsSharp(b) && a.ToPort != b.ToPort && apart > NarrowestGate &&
           apart < WidestGate && std::abs(TurnBetween(a.In, b.In)) < 75 &&
           lesser >= std::max(LeastOfGate, LeastOfOther * other) && lesser + other >= LeastOfBoth &&
           std::min(BoatsOf(one.Rounding), BoatsOf(two.Rounding)) > 1 &&
           TakeOneOfTwo(one.Rounding, two.Rounding);
}

std::vector<MarkCandidate> CandidatesIn(const std::vector<Corner>& corners,
                                        const std::vector<const WayBySecond*>& fleet,
                                        const std::optional<double>& wind) {
    const int boats = static_cast<int>(fleet.size());
    std::vector<int> lastTurns(static_cast<std::size_t>(boats));
    for (const Corner& corner : corners) {
        int& last = lastTurns[static_cast<std::size_t>(corner.Boat)];
        last = std::max(last, corner.Time);
    }
    std::vector<MarkCandidate> all;
    for (const TurnPlace& place : FindTurnPlaces(corners, boats, wind))
        all.push_back(CandidateOf(place, lastTurns, fleet, wind));
    // The last tacks and gybes before a mark lie together, too.
    std::vector<bool> leads;
    leads.reserve(all.size());
    for (const MarkCandidate& each : all)
        leads.push_back(!each.Changing && std::ranges::any_of(all, [&](const MarkCandidate& other) {
            return (other.Changing && LeadsTo(each, other)) ||
                   (each.ByWaist && other.Certain && !other.ByWaist && IsOnTheWay(each, other, fleet));
        }));
    for (std::size_t i = 0; i < all.size(); ++i)
        if (leads[i]) all[i].Certain = false;
    return all;
}

}  // namespace

std::vector<FoundMark> FindMarks(const std::vector<Corner>& corners,
                                 const std::vector<const WayBySecond*>& fleet,
                                 const std::optional<double>& wind, const std::vector<Way>& lying) {
    const std::vector<MarkCandidate> all = CandidatesIn(corners, fleet, wind);
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
