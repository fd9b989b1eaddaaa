#include "analysis/fleet.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <map>
#include <numeric>
#include <optional>
#include <tuple>
#include <utility>

#include "base/angles.h"

namespace keelview {

namespace {

constexpr double ShortestTrack = 60;  // seconds
constexpr int FewestFixes = 10;
constexpr UnixMs EnoughTogether = 600'000;
constexpr double MeetingMetres = 3 * MetresPerNauticalMile;
constexpr double SameMetres = 5;
constexpr int Looks = 50;  // at two tracks, while both are there

using Tracks = std::vector<const FoundTrack*>;

/// A stretch of time.
struct Span {
    UnixMs Begin, End;
    UnixMs Length() const { return End - Begin; }
};

Span SpanOf(const FoundTrack& track) {
    return {track.First, track.Last};
}

/// What two spans have in common; of negative length where they lie apart.
Span Common(const Span& span, const Span& other) {
    return {std::max(span.Begin, other.Begin), std::min(span.End, other.End)};
}

EarthScale ScaleOf(const FoundTrack& track) {
    return ComputeEarthScale(track.Way.front().Lat);
}

/// Metres between two boats at a moment; nothing where one of them is not there.
std::optional<double> MetresApart(const FoundTrack& track, const FoundTrack& other, const EarthScale& scale,
                                  UnixMs time) {
    const auto here = PlaceAt(track, time);
    const auto there = PlaceAt(other, time);
    if (!here || !there) return {};
    return MetresBetween(scale, *here, *there);
}

/// The least metres between two boats at the same moments.
double ClosestMetres(const FoundTrack& track, const FoundTrack& other) {
    const Span both = Common(SpanOf(track), SpanOf(other));
    const EarthScale scale = ScaleOf(track);
    double closest = std::numeric_limits<double>::infinity();
    for (int look = 0; look <= Looks && both.Length() >= 0; ++look)
        if (const auto metres = MetresApart(track, other, scale, both.Begin + both.Length() * look / Looks))
            closest = std::min(closest, *metres);
    return closest;
}

bool AreTogether(const Span& span, const Span& other) {
    const UnixMs shorter = std::min(span.Length(), other.Length());
    return Common(span, other).Length() >= std::min(EnoughTogether, shorter / 2);
}

bool Meet(const FoundTrack& track, const FoundTrack& other) {
    return AreTogether(SpanOf(track), SpanOf(other)) && ClosestMetres(track, other) <= MeetingMetres;
}

bool IsShort(const FoundTrack& track) {
    return track.Fixes < FewestFixes || track.Seconds() < ShortestTrack;
}

/// Sets of tracks that meet: each track leads to another one of its set, or is the set's head.
class Sets {
  public:
    explicit Sets(std::size_t count) : next_(count) { std::iota(next_.begin(), next_.end(), 0U); }
    std::size_t Head(std::size_t track) {
        while (next_[track] != track) track = next_[track] = next_[next_[track]];
        return track;
    }
    void Join(std::size_t track, std::size_t other) { next_[Head(track)] = Head(other); }

  private:
    std::vector<std::size_t> next_;
};

/// The tracks of the fleet, by number.
std::vector<std::size_t> LargestSet(const Tracks& tracks) {
    Sets sets(tracks.size());
    for (std::size_t i = 0; i < tracks.size(); ++i)
        for (std::size_t j = 0; j < i && !IsShort(*tracks[i]); ++j)
            if (!IsShort(*tracks[j]) && sets.Head(i) != sets.Head(j) && Meet(*tracks[i], *tracks[j]))
                sets.Join(i, j);
    std::map<std::size_t, std::vector<std::size_t>> members;
    for (std::size_t i = 0; i < tracks.size(); ++i)
        if (!IsShort(*tracks[i])) members[sets.Head(i)].push_back(i);
    const auto size = [&](const auto& set) {
        double seconds = 0;
        for (const std::size_t track : set.second) seconds += tracks[track]->Seconds();
        return std::tuple(set.second.size(), seconds, -static_cast<std::ptrdiff_t>(set.second.front()));
    };
    const auto largest = std::ranges::max_element(members, {}, size);
    return largest == members.end() ? std::vector<std::size_t>{} : largest->second;
}

FleetPlace Outside(const FoundTrack& track, const Tracks& fleet) {
    Span whole = SpanOf(*fleet.front());
    double metres = std::numeric_limits<double>::infinity();
    for (const FoundTrack* boat : fleet) {
        whole = {std::min(whole.Begin, boat->First), std::max(whole.End, boat->Last)};
        if (AreTogether(SpanOf(track), SpanOf(*boat)))
            metres = std::min(metres, ClosestMetres(track, *boat));
    }
    if (metres > MeetingMetres && std::isfinite(metres))
        return {LeftOut::OtherPlace, metres / MetresPerNauticalMile};
    const UnixMs before = std::max<UnixMs>(whole.Begin - track.Last, 0);
    const UnixMs behind = std::max<UnixMs>(track.First - whole.End, 0);
    return {LeftOut::OtherTime, static_cast<double>(behind - before) / 1000};
}

}  // namespace

double MetresBetween(const EarthScale& scale, const Position& from, const Position& to) {
    return std::hypot((to.Lat - from.Lat) * scale.MetresPerLatMinute,
                      (LongitudeNear(to.Lon, from.Lon) - from.Lon) * scale.MetresPerLonMinute);
}

bool IsSameTrack(const FoundTrack& track, const FoundTrack& other) {
    const Span both = Common(SpanOf(track), SpanOf(other));
    const UnixMs shorter = std::min(SpanOf(track).Length(), SpanOf(other).Length());
    if (both.Length() < 0 || both.Length() * 10 < shorter * 9) return false;
    // At the fixes of the one that has fewer, so that nothing is cut off between two fixes.
    const bool fewer = track.Way.size() <= other.Way.size();
    const FoundTrack& coarse = fewer ? track : other;
    const EarthScale scale = ScaleOf(track);
    for (int look = 0; look <= Looks; ++look) {
        const auto fix = std::ranges::lower_bound(coarse.Way, both.Begin + both.Length() * look / Looks, {},
                                                  &GpsFix::Time);
        if (fix == coarse.Way.end() || fix->Time > both.End) continue;
        if (MetresApart(track, other, scale, fix->Time).value_or(SameMetres + 1) > SameMetres) return false;
    }
    return true;
}

std::vector<FleetPlace> FindFleet(const std::vector<const FoundTrack*>& tracks) {
    const std::vector<std::size_t> members = LargestSet(tracks);
    Tracks fleet;
    for (const std::size_t member : members) fleet.push_back(tracks[member]);
    std::vector<FleetPlace> places;
    for (std::size_t i = 0; i < tracks.size(); ++i) {
        if (IsShort(*tracks[i]))
            places.push_back({LeftOut::TooShort, 0});
        else if (std::ranges::binary_search(members, i))
            places.emplace_back();
        else
            places.push_back(Outside(*tracks[i], fleet));
    }
    return places;
}

}  // namespace keelview
