#include "analysis/clock_offsets.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

#include "base/angles.h"
#include "base/parallel.h"
#include "racedata/earth_scale.h"

namespace keelview {

namespace {

constexpr double Unknown = std::numeric_limits<double>::infinity();
constexpr double LongestWay = 2 * 86400;  // seconds
constexpr UnixMs StepMs = 5000;
constexpr int StepSeconds = 5;
constexpr int HalfHour = 1800 / StepSeconds;
constexpr int FarthestZone = 28;  // half hours
constexpr int AroundZone = 120 / StepSeconds;
constexpr int Coarse = 3;  // steps
constexpr int FewestCommon = 600 / StepSeconds;
constexpr int MostLooks = 240;
constexpr int Stretch = 400 / StepSeconds;  // of the way, for which a lag is told
constexpr int Around = 300 / StepSeconds;   // from the lag of the whole way
constexpr int Beside = 60 / StepSeconds;
constexpr double StandsOut = 1.25;
constexpr std::size_t FewestStretches = 3;
constexpr int Scatter = 25 / StepSeconds;
constexpr int MostDrift = 600 / StepSeconds;
constexpr double Dominates = 0.4;  // of what the boat loses on the whole way
constexpr int AgreedLag = 40 / StepSeconds;
constexpr int LeastLag = 60 / StepSeconds;
constexpr double MuchNearer = 0.7;

/// Metres from the first place of all.
struct Offset {
    double East, North;
};

/// A track on a beat of five seconds. Of one that goes on for days nothing is taken.
struct Beaten {
    std::int64_t First = 0;  ///< its first beat
    std::vector<Offset> At;

    std::int64_t End() const { return First + static_cast<std::int64_t>(At.size()); }
};

/// Beats, from one up to before another.
struct Beats {
    std::int64_t Begin, End;
    std::int64_t Count() const { return End - Begin; }
};

Beaten BeatOut(const FoundTrack& track, const EarthScale& scale, const GpsFix& origin) {
    Beaten beaten;
    beaten.First = (track.First + StepMs - 1) / StepMs;
    if (track.Seconds() > LongestWay) return beaten;
    for (std::int64_t beat = beaten.First; beat * StepMs <= track.Last; ++beat) {
        const auto place = PlaceAt(track, beat * StepMs);
        if (!place) break;
        beaten.At.push_back(
            {(LongitudeNear(place->Lon, origin.Lon) - origin.Lon) * scale.MetresPerLonMinute,
             (place->Lat - origin.Lat) * scale.MetresPerLatMinute});
    }
    return beaten;
}

/// Two tracks, of which the first is moved in time.
class Pair {
  public:
    Pair(const Beaten& moved, const Beaten& kept) : moved_(moved), kept_(kept) {}

    /// The beats of the kept track at which both are there.
    Beats Common(int lag) const {
        return {std::max(moved_.First + lag, kept_.First), std::min(moved_.End() + lag, kept_.End())};
    }

    /// Metres between both in the mean over some beats; Unknown where one of them is not there.
    double Metres(const Beats& beats, int lag) const {
        const Beats common = Common(lag);
        if (beats.Count() <= 0 || beats.Begin < common.Begin || beats.End > common.End) return Unknown;
        const std::int64_t step = beats.Count() / MostLooks + 1;
        double sum = 0;
        int count = 0;
        for (std::int64_t beat = beats.Begin; beat < beats.End; beat += step, ++count) {
            const Offset& here = moved_.At[static_cast<std::size_t>(beat - lag - moved_.First)];
            const Offset& there = kept_.At[static_cast<std::size_t>(beat - kept_.First)];
            sum += std::hypot(here.East - there.East, here.North - there.North);
        }
        return sum / count;
    }

    /// Metres at a lag over all that both have in common; Unknown where that is little.
    double Metres(int lag) const {
        const auto shorter = static_cast<std::int64_t>(std::min(moved_.At.size(), kept_.At.size()));
        const Beats common = Common(lag);
        return common.Count() >= std::max<std::int64_t>(FewestCommon, shorter / 2) ? Metres(common, lag)
                                                                                   : Unknown;
    }

  private:
    const Beaten& moved_;
    const Beaten& kept_;
};

/// The lag with the least cost of those from one to another; the cost of it.
struct BestLag {
    int Lag = 0;
    double Metres = Unknown;

    template <class Cost>
    void Search(int from, int to, int step, const Cost& cost) {
        for (int lag = from; lag <= to; lag += step)
            if (const double metres = cost(lag); metres < Metres) *this = {lag, metres};
    }
};

/// What one stretch of the way tells of the lag.
struct Told {
    double Minute = 0.0;  ///< its middle, from the first of the way
    double Lag = 0.0;     ///< steps
};

/// The lags near one that the stretches of the way tell by themselves: those where a lag stands out, as it
/// does not while boats wait for the start.
std::vector<Told> LagsAlong(const Pair& pair, int lag) {
    const Beats common = pair.Common(lag);
    std::vector<Told> told;
    for (std::int64_t begin = common.Begin; begin + Stretch <= common.End; begin += Stretch / 2) {
        const Beats beats{begin, begin + Stretch};
        const auto cost = [&](int each) { return pair.Metres(beats, each); };
        BestLag best;
        best.Search(lag - Around, lag + Around, 1, cost);
        const std::array beside{cost(best.Lag - Beside), cost(best.Lag + Beside)};
        if (std::ranges::max(beside) == Unknown || std::ranges::min(beside) < StandsOut * best.Metres)
            continue;
        told.push_back({static_cast<double>(begin - common.Begin) * StepSeconds / 60, 1.0 * best.Lag});
    }
    return told;
}

double Median(std::vector<double> numbers) {
    const auto middle = numbers.begin() + static_cast<std::ptrdiff_t>(numbers.size() / 2);
    std::ranges::nth_element(numbers, middle);
    return *middle;
}

/// The lag at the first of the stretches, by a line through all: one boat sails faster than the other, and
/// leaves it behind from there on. (The line of the median slope, as in Sen, "Estimates of the regression
/// coefficient based on Kendall's tau", 1968.) Nothing where they lie on no line, or tell more of the speed
/// than of the clock.
std::optional<int> LagAtFirst(const std::vector<Told>& told) {
    if (told.size() < FewestStretches) return {};
    std::vector<double> slopes;
    for (std::size_t i = 0; i < told.size(); ++i)
        for (std::size_t j = 0; j < i; ++j)
            slopes.push_back((told[i].Lag - told[j].Lag) / (told[i].Minute - told[j].Minute));
    const double slope = Median(slopes);
    std::vector<double> starts;
    starts.reserve(told.size());
    for (const Told& each : told) starts.push_back(each.Lag - slope * (each.Minute - told.front().Minute));
    const double start = Median(starts);
    const double end = start + slope * (told.back().Minute - told.front().Minute);
    for (double& each : starts) each = std::abs(each - start);
    if (Median(starts) > Scatter || std::abs(end - start) > MostDrift) return {};
    if (std::abs(start) >= LeastLag && std::abs(start) < Dominates * std::abs(end - start)) return {};
    return static_cast<int>(std::round(start));
}

/// The steps to add to the clock of the first track so that it sails with the second; nothing where these
/// two do not tell.
std::optional<int> LagOf(const Beaten& moved, const Beaten& kept) {
    const Pair pair(moved, kept);
    const auto cost = [&](int lag) { return pair.Metres(lag); };
    BestLag best;
    best.Search(-HalfHour, HalfHour, Coarse, cost);
    for (int zone = -FarthestZone; zone <= FarthestZone; ++zone)
        best.Search(zone * HalfHour - AroundZone, zone * HalfHour + AroundZone, Coarse, cost);
    if (best.Metres == Unknown) return {};
    const double beside = std::min(cost(best.Lag - HalfHour / 3), cost(best.Lag + HalfHour / 3));
    if (beside != Unknown && best.Metres > MuchNearer * beside) return {};
    return LagAtFirst(LagsAlong(pair, best.Lag));
}

using Lags = std::vector<std::vector<std::optional<int>>>;

Lags AllLags(const std::vector<Beaten>& tracks) {
    Lags lags(tracks.size(), std::vector<std::optional<int>>(tracks.size()));
    ForEachInParallel(static_cast<int>(tracks.size()), [&](int number) {
        const auto row = static_cast<std::size_t>(number) - 1;
        for (std::size_t other = 0; other < row; ++other)
            lags[row][other] = LagOf(tracks[row], tracks[other]);
    });
    for (std::size_t row = 0; row < tracks.size(); ++row)
        for (std::size_t other = 0; other < row; ++other)
            if (const auto& lag = lags[row][other]) lags[other][row] = -*lag;
    return lags;
}

/// The largest set of tracks that agree with each other by way of one another; empty where it is not more
/// than half of those that tell anything.
std::vector<bool> AgreeingTracks(const Lags& lags) {
    const std::size_t count = lags.size();
    std::vector<bool> largest(count);
    std::vector<bool> seen(count);
    std::ptrdiff_t size = 0;
    for (std::size_t first = 0; first < count; ++first) {
        if (seen[first]) continue;
        std::vector<bool> members(count);
        std::vector<std::size_t> open{first};
        members[first] = true;
        while (!open.empty()) {
            const std::size_t track = open.back();
            open.pop_back();
            seen[track] = true;
            for (std::size_t other = 0; other < count; ++other) {
                if (members[other] || std::abs(lags[track][other].value_or(LeastLag)) > AgreedLag) continue;
                members[other] = true;
                open.push_back(other);
            }
        }
        if (const auto found = std::ranges::count(members, true); found > size) {
            size = found;
            largest = members;
        }
    }
    const auto telling = std::ranges::count_if(lags, [](const auto& row) {
        return std::ranges::any_of(row, [](const auto& lag) { return lag.has_value(); });
    });
    return size >= 2 && size * 2 > telling ? largest : std::vector<bool>(count);
}

/// The lag of a track that those who agree tell alike.
std::optional<double> CommonLag(const std::vector<std::optional<int>>& lags,
                                const std::vector<bool>& agreeing) {
    std::vector<int> told;
    for (std::size_t other = 0; other < lags.size(); ++other)
        if (const auto& lag = lags[other]; agreeing[other] && lag) told.push_back(*lag);
    if (told.size() < 2) return {};
    std::ranges::sort(told);
    const int middle = told[told.size() / 2];
    const auto near =
        std::ranges::count_if(told, [middle](int lag) { return std::abs(lag - middle) <= AgreedLag; });
    if (std::abs(middle) < LeastLag || near * 3 < std::ssize(told) * 2) return {};
    return middle * StepSeconds;
}

}  // namespace

std::vector<std::optional<double>> ProposeClocks(const std::vector<const FoundTrack*>& tracks) {
    std::vector<std::optional<double>> clocks(tracks.size());
    if (tracks.size() < 3) return clocks;
    const GpsFix& origin = tracks.front()->Way.front();
    const EarthScale scale = ComputeEarthScale(origin.Lat);
    std::vector<Beaten> beaten;
    beaten.reserve(tracks.size());
    for (const FoundTrack* track : tracks) beaten.push_back(BeatOut(*track, scale, origin));
    const Lags lags = AllLags(beaten);
    const std::vector<bool> agreeing = AgreeingTracks(lags);
    for (std::size_t track = 0; track < tracks.size(); ++track)
        if (!agreeing[track]) clocks[track] = CommonLag(lags[track], agreeing);
    return clocks;
}

}  // namespace keelview
