#include "analysis/pass_candidates.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <utility>
#include <vector>

namespace keelview {

namespace {

constexpr double WrongSideReach =
    50;  // metres: how far off an end or a mark may lie from where it is stored
constexpr double WrongSideCost = 0.5;
constexpr double WrongSideScale = 50;  // metres for a cost of 1
constexpr double RayScale = 1000;
constexpr double AtTheMark = 100;  // metres within which one passing is as good as another
constexpr double ApproachReach = 100;
constexpr double ApproachCost = 1;
constexpr double ApproachScale = 100;
constexpr double TurnedBack = 25;  // metres short of a mark, from which on it was not rounded

constexpr int SamePassing = 5;       // seconds between two tests of one passing
constexpr int MostCandidates = 500;  // a boat that drifts on a line all day has no more
constexpr int LongestStep = 30;      // seconds between two fixes; a longer step is a hole
constexpr double HoleHaste = 1.5;    // how much faster than else a boat may have sailed through a hole

double MetresOf(double minutes) {
    return minutes * MetresPerNauticalMile;
}

/// Minutes of arc a second that nine out of ten steps of the track do not exceed, its holes left out.
double UsualPace(const CourseOnWater& course, const Track& track) {
    std::vector<double> paces;
    for (int fix = 1; fix < track.Count(); ++fix) {
        const double seconds = track.TrackTime[fix + 1] - track.TrackTime[fix];
        if (seconds > 0 && seconds <= LongestStep)
            paces.push_back(course.Distance(track.At(fix), track.At(fix + 1)) / seconds);
    }
    if (paces.empty()) return 0.0;
    const auto ninth = paces.begin() + static_cast<std::ptrdiff_t>(paces.size() * 9 / 10);
    std::ranges::nth_element(paces, ninth);
    return *ninth;
}

/// The place of an entry that lies nearest: a mark, or a place on the line.
Position NearestPlace(const CourseOnWater& course, const PlacedEntry& entry, const Position& to) {
    if (entry.IsGate && course.Distance(entry.SecondEnd, to) < course.Distance(entry.At, to))
        return entry.SecondEnd;
    if (!entry.IsLine) return entry.At;
    const double length = course.LengthOf(entry);
    if (!(length > 0)) return entry.At;
    const double north = entry.SecondEnd.Lat - entry.At.Lat;
    const double east = course.East(entry.At, entry.SecondEnd);
    const double along = ((to.Lat - entry.At.Lat) * north + course.East(entry.At, to) * east) / length;
    const double part = std::clamp(along / length, 0.0, 1.0);
    return {entry.At.Lat + north * part, entry.At.Lon + (entry.SecondEnd.Lon - entry.At.Lon) * part};
}

}  // namespace

/// Follows the boat through its stays within some metres of a mark; gives the nearest approach of a stay
/// when it is over.
class CandidateSearch::Stay {
  public:
    explicit Stay(double reach) : reach_(reach) {}

    std::optional<Approach> Next(int t, int cameIn, double metres) {
        const bool goesOn = metres < reach_ && before_ == t - 1;
        const std::optional<Approach> over = goesOn ? std::nullopt : std::exchange(nearest_, {});
        if (metres < reach_ && (!nearest_ || metres < nearest_->Metres)) nearest_ = {t, cameIn, metres};
        before_ = t;
        return over;
    }
    /// That of the stay in which the track ends.
    std::optional<Approach> Rest() const { return nearest_; }

  private:
    double reach_;
    std::optional<int> before_;
    std::optional<Approach> nearest_;
};

void LetWalkedStand(const std::optional<int>& walked, PassCandidates& candidates) {
    if (!walked) return;
    for (PassCandidate& candidate : candidates)
        if (std::abs(candidate.Second - *walked) <= SamePassing) candidate.Second = *walked;
}

CandidateSearch::CandidateSearch(const CourseOnWater& course, const Track& track, SecondRange range,
                                 int steps)
    : course_(course), track_(track), range_(range), scan_(track, steps, course, at_) {
    const auto& times = track.TrackTime;
    for (int fix = 1; fix < track.Count() && holes_.Count() < MostCandidates; ++fix)
        if (times[fix + 1] - times[fix] > LongestStep && times[fix] >= range.From && times[fix] <= range.To)
            holes_.Add(fix);
    std::ranges::stable_sort(holes_, {}, [&times](int fix) { return times[fix]; });
    if (!holes_.Empty()) holePace_ = HoleHaste * UsualPace(course, track);
}

PassCandidates CandidateSearch::Find(const PlacedEntry& entry) {
    found_.Clear();
    if (entry.IsLine) {
        lastNear_.reset();
        CrossLine(entry);
    } else {
        for (const PlacedEntry& mark : MarksOf(entry)) {
            lastNear_.reset();
            mark.HasCorner ? RoundMark(mark) : ReachLastMark(mark);
        }
    }
    std::ranges::stable_sort(found_, {}, &PassCandidate::Second);
    return found_;
}

void CandidateSearch::CrossLine(const PlacedEntry& line) {
    const double length = course_.LengthOf(line);
    const double radius = LineRadius(course_, line);
    const Axis axis(course_, line.At, course_.Bearing(line.At, line.SecondEnd));
    scan_.Run(range_, {line.At, radius}, [&](int t, int segment) {
        if (segment == 0 || !(course_.Distance(line.At, at_) < radius)) return false;
        ComeIn(t);
        const std::optional<double> along = axis.MetBy(at_, scan_.On(segment, t + 1));
        if (along >= 0 && along <= length)
            Add({.Second = t, .CameIn = cameIn_});
        else if (along)
            AddInside(t, MetresOf(std::max(-*along, *along - length)), true);
        return found_.Count() >= MostCandidates;
    });
}

void CandidateSearch::RoundMark(const PlacedEntry& mark) {
    const Axis axis(course_, mark.At, mark.RoundingBearing);
    std::optional<int> before;
    Position from;
    Stay stay(ApproachReach);
    const auto addApproach = [&](const std::optional<Approach>& nearest) {
        if (nearest)
            Add({.Second = nearest->Second,
                 .CameIn = nearest->CameIn,
                 .Cost = ApproachCost + nearest->Metres / ApproachScale,
                 .MayEnd = nearest->Metres <= TurnedBack});
    };
    ScanCircle(mark, [&](int t, double metres) {
        if (before == t - 1) {
            const std::optional<double> along = axis.MetBy(from, at_);
            if (along >= 0) AddOutside(t, MetresOf(*along));
            if (along && *along < 0) AddInside(t, MetresOf(-*along), *along >= -MinutesOf(TurnedBack));
        }
        addApproach(stay.Next(t, cameIn_, metres));
        before = t;
        from = at_;
    });
    addApproach(stay.Rest());
}

void CandidateSearch::ReachLastMark(const PlacedEntry& mark) {
    Stay stay(MetresOf(RoundingRadius));
    const auto addApproach = [&](const std::optional<Approach>& nearest) {
        if (nearest)
            Add({.Second = nearest->Second + 1,
                 .CameIn = nearest->CameIn,
                 .Cost = nearest->Metres / ApproachScale});
    };
    ScanCircle(mark, [&](int t, double metres) { addApproach(stay.Next(t, cameIn_, metres)); });
    addApproach(stay.Rest());
}

/// The boat is near at second t; it came in there unless it was near a second before.
void CandidateSearch::ComeIn(int t) {
    if (lastNear_ != t - 1) cameIn_ = t;
    lastNear_ = t;
}

void CandidateSearch::Add(const PassCandidate& candidate) {
    if (found_.Count() < MostCandidates) found_.Add(candidate);
}

/// A passing of the outward bisector, so many metres off the mark.
void CandidateSearch::AddOutside(int t, double metres) {
    const bool isWide = metres > AtTheMark;
    Add({.Second = t, .CameIn = cameIn_, .Cost = isWide ? metres / RayScale : 0.0, .MayEnd = !isWide});
}

/// A passing on the wrong side of a mark or of a line's end, so many metres off it.
void CandidateSearch::AddInside(int t, double metres, bool mayEnd) {
    if (metres > WrongSideReach) return;
    Add({.Second = t,
         .CameIn = cameIn_,
         .Cost = WrongSideCost + metres / WrongSideScale,
         .MayEnd = mayEnd});
}

/// Has each second judged, with the metres to the mark, at which the boat is where marks are rounded.
template <class Judge>
void CandidateSearch::ScanCircle(const PlacedEntry& mark, Judge judge) {
    scan_.Run(range_, {mark.At, RoundingRadius}, [&](int t, int segment) {
        const double distance = course_.Distance(mark.At, at_);
        if (segment > 0 && distance < RoundingRadius) {
            ComeIn(t);
            judge(t, MetresOf(distance));
        }
        return found_.Count() >= MostCandidates;
    });
}

PassCandidates CandidateSearch::FindHidden(const PlacedEntry& entry) const {
    PassCandidates hidden;
    for (const int hole : holes_) {
        const double seconds = track_.TrackTime[hole + 1] - track_.TrackTime[hole];
        const Position place = NearestPlace(course_, entry, track_.At(hole));
        const double way =
            course_.Distance(track_.At(hole), place) + course_.Distance(place, track_.At(hole + 1));
        if (way <= holePace_ * seconds)
            hidden.Add({.Second = FloorToInt(track_.TrackTime[hole]), .Hidden = true});
    }
    return hidden;
}

}  // namespace keelview
