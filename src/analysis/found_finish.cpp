#include "analysis/found_finish.h"

#include <algorithm>
#include <cmath>

#include "analysis/medians.h"
#include "base/angles.h"

namespace keelview {

namespace {

constexpr int AfterMark = 30;      // seconds in which a boat still goes round its last mark
constexpr int SlowSeconds = 20;    // over which a loss of speed is measured
constexpr double SlowShare = 0.6;  // of the speed before
constexpr double MostOf = 0.6;     // of the boats, that must agree
constexpr double EndRoom = 15;     // metres that the ends of a line lie beyond what crossed it
constexpr double EndShare = 0.3;   // the same of a line's length: nobody may have been at the very end
constexpr int LookBack = 60;       // seconds of the last way
constexpr double WithWind = 40;    // degrees off the wind's axis

/// Seconds over which the speed of a boat is measured: more of them where its fixes scatter.
int SecondsFor(const Finisher& boat) {
    constexpr double usualNoise = 3, forNoise = 3;  // metres, seconds a metre
    return SlowSeconds + static_cast<int>(forNoise * std::max(boat.Sails->Noise() - usualNoise, 0.0));
}

/// Metres a second; 0 in a gap.
double SpeedOf(const Finisher& boat, int from, int until) {
    const auto velocity = boat.Sails->Velocity(from, until);
    return velocity ? velocity->Length() : 0.0;
}

/// True if a boat goes on from its last mark more slowly than it has raced, even at its slowest, on the
/// legs before it: it has finished already.
bool IsSlowBehindMark(const Finisher& boat) {
    constexpr int legs = 600;        // seconds
    constexpr double slowest = 0.2;  // of the time
    const int seconds = SecondsFor(boat);
    std::vector<double> speeds;
    for (int t = boat.LastMark - legs; t < boat.LastMark - AfterMark; t += seconds)
        if (const double speed = SpeedOf(boat, t, t + seconds); speed > 0) speeds.push_back(speed);
    const int from = boat.LastMark + AfterMark;
    const double behind = SpeedOf(boat, from, from + seconds);
    return behind > 0 && behind < SlowShare * QuantileOf(std::move(speeds), slowest);
}

/// When a boat stops racing, behind its last mark.
int StopOf(const Finisher& boat, const std::optional<double>& wind, int to) {
    if (IsSlowBehindMark(boat)) return std::min(boat.LastMark + AfterMark, boat.Sails->Last());
    const int seconds = SecondsFor(boat);
    int stop = std::min(to, boat.Sails->Last());
    for (const Corner& corner : *boat.Corners)
        if (corner.Time > boat.LastMark + AfterMark && corner.Time < stop &&
            KindOf(corner, wind) == CornerKind::Change && std::abs(corner.Turn) > 35)
            stop = corner.Time;
    const auto speed = [&](int from, int until) { return SpeedOf(boat, from, until); };
    for (int t = boat.LastMark + AfterMark; t < stop; t += 2) {
        const double before = speed(t - seconds, t);
        if (before > 0.8 && speed(t, t + seconds) < SlowShare * before &&
            speed(t + 8, t + 8 + seconds) < SlowShare * before)
            return t;
    }
    return stop;
}

/// The first second behind `from` at which a boat comes over a line, either way.
std::optional<int> FirstCrossing(const WayBySecond& way, const FoundLine& line, int from, int to) {
    const Way ahead = line.Ahead(), along = line.Along();
    const double length = (line.Right - line.Left).Length();
    const double beyond = std::max(EndRoom, EndShare * length);
    for (int t = std::max(from, way.First()) + 1; t <= std::min(to, way.Last()); ++t) {
        const auto at = way.At(t), before = way.At(t - 1);
        if (!at || !before) continue;
        const double now = (*at - line.Left).Along(ahead), then = (*before - line.Left).Along(ahead);
        const double place = (*at - line.Left).Along(along);
        if ((now < 0) != (then < 0) && place > -beyond && place < length + beyond) return t;
    }
    return {};
}

/// The finish at a line, where enough boats come over it no long time before they stop.
FoundFinish AtLine(const std::vector<Finisher>& boats, const std::vector<int>& stops, const FoundLine& line,
                   FoundFinish::Kind kind, int to) {
    constexpr int beforeStop = 150, behindStop = 25;
    FoundFinish finish;
    finish.Where = kind;
    finish.Line = line;
    int count = 0;
    for (std::size_t i = 0; i < boats.size(); ++i) {
        auto time = FirstCrossing(*boats[i].Sails, line, boats[i].LastMark, stops[i] + behindStop);
        const bool goesOn = stops[i] >= to && boats[i].Sails->Last() > to;
        if (time && (goesOn || *time < stops[i] - beforeStop)) time.reset();
        finish.Times.push_back(time);
        count += time.has_value();
    }
    finish.Share = static_cast<double>(count) / static_cast<double>(boats.size());
    return finish;
}

/// True if a finish lies along the start line or beside its ends: boats of which none started there finish
/// where the line goes on. A line on which few boats started close together has no direction of its own.
bool IsSameLine(const FoundLine& finish, const FoundLine& start) {
    constexpr double mostAhead = 25, mostBeyond = 45, shortest = 65;  // metres
    const auto lengthOf = [](const FoundLine& line) { return (line.Right - line.Left).Length(); };
    const bool isShort = lengthOf(start) < std::min(shortest, lengthOf(finish));
    const FoundLine& line = isShort ? finish : start;
    const Way off = (finish.Left + finish.Right) * 0.5 - (start.Left + start.Right) * 0.5;
    return std::abs(off.Along(line.Ahead())) < mostAhead &&
           std::abs(off.Along(line.Along())) < lengthOf(line) / 2 + mostBeyond &&
           (isShort || std::abs(finish.Along().Along(start.Along())) > 0.8);
}

/// The direction of length 1 in which most boats sail at the end, along the wind where it is near that.
Way LastWay(const std::vector<Finisher>& boats, const std::vector<int>& stops,
            const std::optional<double>& wind) {
    Way sum;
    for (std::size_t i = 0; i < boats.size(); ++i)
        if (const auto velocity =
                boats[i].Sails->Velocity(std::max(stops[i] - LookBack, boats[i].LastMark), stops[i] - 4))
            sum = sum + *velocity;
    const double bearing = sum.Bearing();
    if (wind)
        for (const double axis : {*wind, *wind + 180})
            if (std::abs(TurnBetween(axis, bearing)) < WithWind) return Towards(axis);
    return Towards(bearing);
}

/// The line that boats cross before they stop: in front of the first of them, but for such as give up short
/// of it or go on for long.
FoundLine LineAcross(const std::vector<Way>& places, Way ahead) {
    constexpr double mostAhead = 100, mostAside = 300;  // metres from the middle one
    const Way along{ahead.North, -ahead.East};
    std::vector<double> fronts, sides;
    for (const Way& at : places) fronts.push_back(at.Along(ahead)), sides.push_back(at.Along(along));
    const auto drop = [](std::vector<double>& all, double most) {
        std::erase_if(all,
                      [&, middle = MedianOf(all)](double each) { return std::abs(each - middle) > most; });
    };
    drop(fronts, mostAhead);
    drop(sides, mostAside);
    const double front = QuantileOf(fronts, 0.12) - 4;
    const auto [low, high] = std::ranges::minmax(sides);
    return {along * (low - EndRoom) + ahead * front, along * (high + EndRoom) + ahead * front};
}

}  // namespace

FoundFinish FindFinish(const std::vector<Finisher>& boats, const FoundLine& start,
                       const std::optional<double>& wind, int to) {
    if (boats.empty()) return {};
    std::vector<int> stops;
    std::vector<Way> places;
    int atMark = 0;
    for (const Finisher& boat : boats) {
        stops.push_back(StopOf(boat, wind, to));
        if (const auto at = boat.Sails->Mean(stops.back() - 1, stops.back())) places.push_back(*at);
        atMark += stops.back() <= boat.LastMark + AfterMark + 5;
    }
    if (atMark > MostOf * static_cast<double>(boats.size())) {
        FoundFinish finish;
        finish.Where = FoundFinish::Kind::LastMark;
        finish.Share = static_cast<double>(atMark) / static_cast<double>(boats.size());
        for (const Finisher& boat : boats) finish.Times.emplace_back(boat.LastMark);
        return finish;
    }
    FoundFinish atStart = AtLine(boats, stops, start, FoundFinish::Kind::StartLine, to);
    if (atStart.Share >= MostOf) {
        atStart.Stops = std::move(places);
        return atStart;
    }
    if (places.size() < 2) return {};
    FoundFinish own = AtLine(boats, stops, LineAcross(places, LastWay(boats, stops, wind)),
                             FoundFinish::Kind::OwnLine, to);
    if (own.Share < MostOf) return {};
    if (!IsSameLine(own.Line, start)) return own;
    own.Where = FoundFinish::Kind::StartLine;
    own.Line = start;
    own.Stops = std::move(places);
    return own;
}

FoundLine LineOfBoth(const FoundLine& start, const std::vector<Way>& stops) {
    constexpr double reach = 40, farthest = 12;  // metres
    const Way middle = (start.Left + start.Right) * 0.5;
    double high = (start.Right - start.Left).Length() / 2, low = -high;
    std::vector<double> ahead;
    for (const Way& at : stops) {
        ahead.push_back((at - middle).Along(start.Ahead()));
        if (std::abs(ahead.back()) > reach) continue;
        const double along = (at - middle).Along(start.Along());
        low = std::min(low, along - EndRoom);
        high = std::max(high, along + EndRoom);
    }
    const double nearest = QuantileOf(ahead, 0.85);
    const Way moved = middle + start.Ahead() * (nearest > 0 ? std::min(nearest, farthest) : 0);
    return {moved + start.Along() * low, moved + start.Along() * high};
}

}  // namespace keelview
