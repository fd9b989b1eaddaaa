#include "analysis/found_starts.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

#include "analysis/medians.h"

namespace keelview {

namespace {

constexpr int ScanStep = 5;            // seconds
constexpr int LongestDay = 1'000'000;  // seconds that are looked at
constexpr int Leaves = 60;             // seconds that a start is followed
constexpr int Gathers = 240;           // seconds that boats lie about before it
constexpr int Apart = 150;             // seconds between starts
constexpr int Rivals = 900;            // seconds within which a larger start leaves no smaller one
constexpr double LeastShare = 0.4;     // of the boats
constexpr double LeastSpeed = 0.7;     // metres a second
constexpr double Behind = 45;          // metres that boats of a start lie behind the first
constexpr double OnTheWay = 0.35;      // of the usual way, along the common direction
constexpr int LeastKnown = 60;         // seconds that must be recorded before it
constexpr double Idle = 75;            // seconds of the usual speed, that gathering boats go away at most
constexpr double MostBeyond = 25;      // metres beyond the crossings at which something lying is an end
constexpr double EndRoom = 8;          // metres that ends lie beyond the crossings
constexpr int Sweep = 45;              // seconds to either side in which the gun is looked for

/// One boat about a moment.
struct Departure {
    int Boat;
    Way At, Next;   ///< the place, and the way of the next minute
    double Before;  ///< metres to the farthest place in the time before
    Way Last;       ///< the way of the last minute
};

std::vector<Departure> DeparturesAt(const std::vector<WayBySecond>& fleet, int t) {
    std::vector<Departure> all;
    for (int boat = 0; boat < std::ssize(fleet); ++boat) {
        const WayBySecond& way = fleet[static_cast<std::size_t>(boat)];
        const auto at = way.At(t), next = way.At(t + Leaves);
        if (!at || !next) continue;
        if (!way.At(t - LeastKnown)) continue;
        double farthest = 0;
        for (int s = 30; s <= Gathers; s += 30)
            if (const auto before = way.At(t - s)) farthest = std::max(farthest, (*at - *before).Length());
        const auto last = way.At(t - Leaves);
        all.push_back({boat, *at, *next - *at, farthest, last ? *at - *last : Way{}});
    }
    return all;
}

/// The direction across which places lie closest together, of length 1, on the side of `ahead`.
Way NormalOf(const std::vector<Way>& places, Way ahead) {
    std::vector<Way> kept = places;
    Way normal = ahead;
    for (int round = 0; round < 3 && kept.size() > 2; ++round) {
        Way mean;
        for (const Way& at : kept) mean = mean + at * (1.0 / static_cast<double>(kept.size()));
        double ee = 0, en = 0, nn = 0;
        for (const Way& at : kept) {
            const Way off = at - mean;
            ee += off.East * off.East, en += off.East * off.North, nn += off.North * off.North;
        }
        const double angle = std::atan2(2 * en, ee - nn) / 2;  // of the longer axis
        normal = {-std::sin(angle), std::cos(angle)};
        if (normal.Along(ahead) < 0) normal = normal * -1;
        std::vector<double> off;
        off.reserve(places.size());
        for (const Way& at : places) off.push_back(std::abs((at - mean).Along(normal)));
        const double limit = std::max(2 * MedianOf(off), 1.0);
        kept.clear();
        for (std::size_t i = 0; i < places.size(); ++i)
            if (off[i] <= limit) kept.push_back(places[i]);
    }
    return normal.Along(ahead) > 0.5 ? normal : ahead;
}

/// How much a moment is like a start.
struct Moment {
    int Time = 0;
    double Share = 0.0;
    double Next = 0.0;  ///< metres that boats usually sail in the minute behind it
    Way Normal;
    double Front = 0.0;  ///< metres along the normal of the first boats
    std::vector<int> Boats;
};

Moment LookAt(const std::vector<WayBySecond>& fleet, int t) {
    Moment moment;
    moment.Time = t;
    const std::vector<Departure> all = DeparturesAt(fleet, t);
    if (all.size() < 2) return moment;
    std::vector<double> lengths;
    lengths.reserve(all.size());
    for (const Departure& each : all) lengths.push_back(each.Next.Length());
    const double usual = QuantileOf(lengths, 0.7);
    moment.Next = usual;
    if (usual < LeastSpeed * Leaves) return moment;
    Way ahead;
    std::vector<const Departure*> leaving;
    for (const Departure& each : all)
        if (each.Next.Length() > 0.6 * usual && each.Before < Idle * usual / Leaves) {
            leaving.push_back(&each);
            ahead = ahead + each.Next;
        }
    if (static_cast<double>(leaving.size()) < LeastShare * static_cast<double>(all.size()) ||
        leaving.size() < 2)
        return moment;
    ahead = ahead * (1 / std::max(ahead.Length(), 1e-9));
    std::vector<Way> places;
    places.reserve(leaving.size());
    for (const Departure* each : leaving) places.push_back(each->At);
    moment.Normal = NormalOf(places, ahead);
    std::vector<double> fronts;
    fronts.reserve(places.size());
    for (const Way& at : places) fronts.push_back(at.Along(moment.Normal));
    moment.Front = QuantileOf(fronts, 0.9);
    for (const Departure* each : leaving) {
        const double way = each->Next.Along(moment.Normal);
        const double gap = moment.Front - each->At.Along(moment.Normal);
        if (way > OnTheWay * usual && gap < Behind && gap > -Behind / 2 &&
            each->Last.Along(moment.Normal) < 0.6 * way)
            moment.Boats.push_back(each->Boat);
    }
    moment.Share = static_cast<double>(moment.Boats.size()) / static_cast<double>(all.size());
    return moment;
}

/// How the boats of a start come under way.
struct Run {
    int Goes = 0;  ///< second at which the middle boat has begun it
    int Rest = 0, Fast = 0;
};

/// The seconds to either side of a velocity: more of them where the fixes scatter.
int ReachFor(const WayBySecond& way) {
    return 3 + static_cast<int>(way.Noise() / 2);
}

/// The usual speed of a boat behind a moment, metres a second.
double SpeedBehind(const WayBySecond& way, int t) {
    std::vector<double> speeds;
    const int reach = ReachFor(way);
    for (int s = t + 20; s <= t + Leaves; s += 8)
        if (const auto velocity = way.Velocity(s - reach, s + reach)) speeds.push_back(velocity->Length());
    return MedianOf(std::move(speeds));
}

/// How fast the boats of a moment sail in a direction at second t: the middle one, as a share of what each
/// of them does once all are under way.
double PaceAt(const std::vector<WayBySecond>& fleet, const Moment& moment, const std::vector<double>& usual,
              Way direction, int t) {
    std::vector<double> shares;
    for (std::size_t i = 0; i < moment.Boats.size(); ++i) {
        const WayBySecond& way = fleet[static_cast<std::size_t>(moment.Boats[i])];
        const int reach = ReachFor(way);
        const auto velocity = way.Velocity(t - reach, t + reach);
        if (velocity && usual[i] > 0) shares.push_back(velocity->Along(direction) / usual[i]);
    }
    return MedianOf(std::move(shares));
}

std::optional<Run> RunOf(const std::vector<WayBySecond>& fleet, const Moment& moment,
                         const std::vector<double>& usual, Way direction, int from) {
    constexpr double underWay = 0.85, begun = 0.5, still = 0.15;  // of the usual speed
    Run run;
    const auto pace = [&](int t) { return PaceAt(fleet, moment, usual, direction, t); };
    run.Fast = from - Sweep;
    while (run.Fast < from + Sweep && pace(run.Fast) < underWay) ++run.Fast;
    if (run.Fast == from + Sweep) return {};
    run.Goes = run.Fast;
    while (run.Goes > run.Fast - Sweep && pace(run.Goes) > begun) --run.Goes;
    if (run.Goes == run.Fast - Sweep) return {};
    run.Rest = run.Goes;
    while (run.Rest > run.Goes - Sweep && pace(run.Rest) > still) --run.Rest;
    return run;
}

/// The direction of length 1 in which the boats of a moment sail from one second to another.
Way DirectionOf(const std::vector<WayBySecond>& fleet, const Moment& moment, int from, int to) {
    Way sum;
    for (const int boat : moment.Boats) {
        const WayBySecond& way = fleet[static_cast<std::size_t>(boat)];
        const auto begin = way.At(from), end = way.At(to);
        if (begin && end) sum = sum + (*end - *begin);
    }
    return sum * (1 / std::max(sum.Length(), 1e-9));
}

/// The run at the line: looked for along the way ahead first, then along the one tack on which most begin
/// it.
std::optional<Run> RunOf(const std::vector<WayBySecond>& fleet, const Moment& moment) {
    constexpr int onOneTack = 20;  // seconds
    std::vector<double> ahead, usual;
    for (const int boat : moment.Boats) {
        const WayBySecond& way = fleet[static_cast<std::size_t>(boat)];
        const auto from = way.At(moment.Time + 20), to = way.At(moment.Time + Leaves);
        ahead.push_back(from && to ? (*to - *from).Along(moment.Normal) / (Leaves - 20) : 0.0);
        usual.push_back(SpeedBehind(way, moment.Time));
    }
    const auto first = RunOf(fleet, moment, ahead, moment.Normal, moment.Time);
    if (!first) return {};
    const Way tack = DirectionOf(fleet, moment, first->Goes, first->Goes + onOneTack);
    const auto second = RunOf(fleet, moment, usual, tack, first->Goes);
    return second ? second : first;
}

/// The gun: the middle boat begins its run at the line a quarter of a minute before it, and guns go at
/// whole minutes where that is near.
std::optional<int> GunOf(const std::vector<WayBySecond>& fleet, const Moment& moment,
                         const StartHints& hints, FoundStart& start) {
    constexpr double runs = 14, nearMinute = 14;  // seconds
    const auto run = RunOf(fleet, moment);
    if (!run) return {};
    start.Spread = run->Fast - run->Rest;
    const double gun = run->Goes + runs;
    const double minute = hints.MinuteAt + 60 * std::round((gun - hints.MinuteAt) / 60);
    start.AtMinute = std::abs(minute - gun) <= nearMinute;
    return static_cast<int>(std::lround(start.AtMinute ? minute : gun));
}

/// The line: it lies at the front of the boats as the gun goes, and ends at the outermost of them, or at
/// what lies still there.
FoundLine LineOf(const std::vector<WayBySecond>& fleet, const Moment& moment, int gun,
                 const StartHints& hints) {
    std::vector<Way> places;
    for (const int boat : moment.Boats)
        if (const auto at = fleet[static_cast<std::size_t>(boat)].Mean(gun - 1, gun + 1))
            places.push_back(*at);
    const Way normal = NormalOf(places, moment.Normal);
    const Way along{normal.North, -normal.East};
    std::vector<double> fronts, sides;
    for (const Way& at : places) fronts.push_back(at.Along(normal)), sides.push_back(at.Along(along));
    const double front = QuantileOf(fronts, 0.9) + 1.5;
    for (const int boat : moment.Boats) {
        const WayBySecond& way = fleet[static_cast<std::size_t>(boat)];
        for (int t = gun; t < gun + Leaves; ++t) {
            const auto at = way.At(t);
            if (!at || at->Along(normal) < front) continue;
            sides.push_back(at->Along(along));
            break;
        }
    }
    const auto [low, high] = std::ranges::minmax(sides);
    FoundLine line{along * (low - EndRoom) + normal * front, along * (high + EndRoom) + normal * front};
    const auto take = [&](Way& end) {
        for (const Way& lying : hints.Lying)
            if ((lying - end).Length() < MostBeyond + EndRoom) end = lying;
    };
    take(line.Left);
    take(line.Right);
    return line;
}

void TakeHints(const StartHints& hints, FoundStart& start) {
    if (hints.Gun && std::abs(*hints.Gun - start.Gun) < 2 * Sweep) {
        start.Gun = *hints.Gun;
        start.HintedGun = true;
    }
    if (!hints.Line) return;
    const Way ahead = start.Line.Ahead();
    const Way middle = (start.Line.Left + start.Line.Right) * 0.5;
    FoundLine line = *hints.Line;
    if (line.Ahead().Along(ahead) < 0) std::swap(line.Left, line.Right);
    if (((line.Left + line.Right) * 0.5 - middle).Length() >
        (start.Line.Right - start.Line.Left).Length() + 100)
        return;
    start.Line = line;
    start.HintedLine = true;
}

/// True if the boats of a start are those of a larger one.
bool Includes(const FoundStart& larger, const FoundStart& start) {
    const auto both = std::ranges::count_if(
        start.Boats, [&](int boat) { return std::ranges::find(larger.Boats, boat) != larger.Boats.end(); });
    return 4 * both >= 3 * std::ssize(start.Boats);
}

/// How likely some stretch of the two minutes in which boats go off one by one holds as many of them as
/// some stretch does here, the least likely one; a bound for the scan statistic (J. I. Naus, 1965): each
/// boat may be the first of them.
double ChanceOf(const std::vector<int>& times) {
    constexpr double within = 120;  // seconds
    const auto boats = static_cast<int>(times.size());
    double least = 1;
    for (int first = 0; first < boats; ++first)
        for (int last = first + 1; last < boats; ++last) {
            const double share =
                (times[static_cast<std::size_t>(last)] - times[static_cast<std::size_t>(first)] + 1) /
                within;
            if (share >= 1) break;
            const int others = last - first;
            double chance = boats * std::pow(1 - share, boats - 1 - others);
            for (int i = 0; i < others; ++i) chance *= share * (boats - 1 - i) / (i + 1);
            least = std::min(least, chance);
        }
    return least;
}

/// How many leave the line for good at once, of those that do so at all about that time; and whether the
/// first of them does as a minute begins.
void TellCrossings(const std::vector<WayBySecond>& fleet, const StartHints& hints, FoundStart& start) {
    constexpr int about = 150, follow = 60, nearMinute = 4;  // seconds
    constexpr int atOnce = 30, ofFew = 12;                   // seconds
    constexpr double beyond = 150, away = 50;                // metres
    std::vector<int> times;
    for (const WayBySecond& way : fleet) {
        const auto time = LastCrossing(way, start.Line, start.Gun - about, start.Gun + about, beyond);
        const auto at = time ? way.At(*time + follow) : std::nullopt;
        if (at && (*at - start.Line.Left).Along(start.Line.Ahead()) >= away) times.push_back(*time);
    }
    if (times.empty()) return;
    std::ranges::sort(times);
    const int within = times.size() < 4 ? ofFew : atOnce;
    std::ptrdiff_t most = 0;
    int first = 0;
    for (const int time : times) {
        const auto count =
            std::ranges::count_if(times, [&](int each) { return each >= time && each <= time + within; });
        if (count > most) most = count, first = time;
    }
    start.Chance = ChanceOf(times);
    start.Together = static_cast<double>(most) / static_cast<double>(times.size());
    const double over = first - 2 - hints.MinuteAt;
    start.Punctual = std::abs(over - 60 * std::round(over / 60)) <= nearMinute;
}

std::optional<FoundStart> StartAt(const std::vector<WayBySecond>& fleet, const Moment& moment,
                                  const StartHints& hints) {
    FoundStart start;
    const auto gun = GunOf(fleet, moment, hints, start);
    if (!gun) return {};
    start.Gun = *gun;
    start.Line = LineOf(fleet, moment, *gun, hints);
    start.Boats = moment.Boats;
    start.Share = moment.Share;
    TakeHints(hints, start);
    TellCrossings(fleet, hints, start);
    return start;
}

}  // namespace

std::optional<int> LastCrossing(const WayBySecond& way, const FoundLine& line, int from, int to,
                                double beyond) {
    const Way ahead = line.Ahead(), along = line.Along();
    const double length = (line.Right - line.Left).Length();
    for (int t = std::min(to, way.Last()); t > std::max(from, way.First()); --t) {
        const auto at = way.At(t), before = way.At(t - 1);
        if (!at || !before) continue;
        const double now = (*at - line.Left).Along(ahead), then = (*before - line.Left).Along(ahead);
        if (!(then < 0 && now >= 0)) continue;
        const double place = (*at - line.Left).Along(along);
        if (place >= -beyond && place <= length + beyond) return t;
    }
    return {};
}

std::vector<FoundStart> FindStarts(const std::vector<WayBySecond>& fleet, const StartHints& hints) {
    int first = std::numeric_limits<int>::max(), last = std::numeric_limits<int>::min();
    for (const WayBySecond& way : fleet)
        if (!way.Empty()) first = std::min(first, way.First()), last = std::max(last, way.Last());
    if (first < last) last = std::min(last, first + LongestDay);
    std::vector<Moment> all;
    double fastest = 0;
    for (int t = first; t < last - Leaves && first < last; t += ScanStep) {
        Moment moment = LookAt(fleet, t);
        fastest = std::max(fastest, moment.Next);
        if (moment.Share >= LeastShare && moment.Boats.size() >= 2) all.push_back(std::move(moment));
    }
    const auto worth = [&](const Moment& moment) {
        return moment.Share * std::min(moment.Next, 0.7 * fastest);
    };
    std::vector<Moment> moments;
    for (Moment& moment : all) {
        if (moments.empty() || moment.Time - moments.back().Time >= Apart)
            moments.push_back(std::move(moment));
        else if (worth(moment) > worth(moments.back()))
            moments.back() = std::move(moment);
    }
    std::vector<FoundStart> starts;
    for (const Moment& moment : moments)
        if (auto start = StartAt(fleet, moment, hints)) starts.push_back(*std::move(start));
    std::erase_if(starts, [all = starts](const FoundStart& start) {
        return std::ranges::any_of(all, [&](const FoundStart& other) {
            return std::abs(other.Gun - start.Gun) < Rivals && 0.75 * other.Share > start.Share &&
                   Includes(other, start);
        });
    });
    for (FoundStart& start : starts)
        start.Chance = std::min(1.0, start.Chance * static_cast<double>(starts.size()));
    return starts;
}

}  // namespace keelview
