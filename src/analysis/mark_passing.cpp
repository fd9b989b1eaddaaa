#include "analysis/mark_passing.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

namespace keelview {

namespace {

constexpr int Before = 26, Step = 2;    // seconds about a passing
constexpr double Usual = 6;             // metres that boats keep off a mark
constexpr double MostOff = 25;          // metres from it, that count
constexpr int LegFrom = 8, LegTo = 32;  // seconds from a passing to its straight ways
constexpr std::size_t MostFitted = 60;  // passings that a place is told by
constexpr double MostUneven = 8;        // metres between the berths of both, that count
constexpr double WrongSide = -5, Widest = 28;
constexpr double Fastest = 10;  // metres a second

/// The places of a passing; empty with gaps.
std::vector<Way> PlacesOf(const Passing& boat) {
    std::vector<Way> places;
    const int smooth = 1 + static_cast<int>(boat.Sails->Noise() / 2.5);
    for (int t = boat.About - Before; t <= boat.About + Before; t += Step)
        if (const auto at = boat.Sails->Mean(t - smooth, t + smooth)) places.push_back(*at);
    return places;
}

/// Metres to the nearest point of a way, positive where a place is to port of it.
double BerthOf(const std::vector<Way>& places, Way place) {
    double least = 1e18, side = 1;
    for (std::size_t i = 1; i < places.size(); ++i) {
        const Way leg = places[i] - places[i - 1], off = place - places[i - 1];
        const double along = off.Along(leg), across = off.Across(leg), whole = leg.Square();
        const double square = along <= 0       ? off.Square()
                              : along >= whole ? (place - places[i]).Square()
                                               : across * across / whole;
        if (square < least) least = square, side = across > 0 ? -1 : 1;
    }
    return side * std::sqrt(least);
}

/// A straight way.
struct Leg {
    Way At, Ahead;  ///< Ahead of length 1

    double Berth(Way place) const { return -(place - At).Across(Ahead); }
};

std::optional<Leg> LegOf(const WayBySecond& way, int from, int to) {
    const auto at = way.Mean(from, to);
    const auto velocity = way.Velocity(from, to);
    if (!at || !velocity || velocity->Length() < 0.3) return {};
    return Leg{*at, *velocity * (1 / velocity->Length())};
}

/// How one boat passes a mark: its ways about it, and the straight ones before it and behind it.
struct Rounding {
    std::vector<Way> Places;
    std::optional<Leg> In, Out;
};

Rounding RoundingOf(const Passing& boat) {
    return {PlacesOf(boat), LegOf(*boat.Sails, boat.About - LegTo, boat.About - LegFrom),
            LegOf(*boat.Sails, boat.About + LegFrom, boat.About + LegTo)};
}

/// What speaks against a place; where that is `most` or more, at least so much.
double CostOf(const std::vector<Rounding>& boats, double side, Way at, double most) {
    double cost = 0;
    for (const Rounding& boat : boats) {
        if (cost >= most) break;
        cost += std::min(std::abs(side * BerthOf(boat.Places, at) - Usual), MostOff);
        if (boat.In && boat.Out)
            cost += std::min(std::abs(boat.In->Berth(at) - boat.Out->Berth(at)) / 2, MostUneven);
    }
    return cost;
}

}  // namespace

std::optional<int> NearestSecond(const WayBySecond& way, Way place, double metres, int from, int to) {
    std::optional<int> when;
    double least = metres;
    for (int t = std::max(from, way.First()); t <= std::min(to, way.Last());) {
        const auto at = way.At(t);
        const double away = at ? std::sqrt((*at - place).Square()) : 2 * Fastest + least;
        if (away < least) least = away, when = t;
        t += std::max(1, static_cast<int>((away - least) / Fastest));
    }
    return when;
}

std::vector<std::optional<double>> BerthsAt(const std::vector<Passing>& boats, Way place) {
    std::vector<std::optional<double>> berths;
    for (const Passing& boat : boats) {
        const std::vector<Way> places = PlacesOf(boat);
        berths.push_back(places.size() > 1 ? std::optional(BerthOf(places, place)) : std::nullopt);
    }
    return berths;
}

bool IsMarkLike(double berth, bool toPort) {
    const double off = toPort ? berth : -berth;
    return off > WrongSide && off < Widest;
}

double MarkLike(const std::vector<std::optional<double>>& berths, bool toPort) {
    int like = 0, all = 0;
    for (const auto& berth : berths) {
        if (!berth) continue;
        ++all;
        like += IsMarkLike(*berth, toPort);
    }
    return all > 0 ? static_cast<double>(like) / all : 0.0;
}

Way FitMark(const std::vector<Passing>& boats, bool toPort, Way from) {
    std::vector<Rounding> roundings;
    const std::size_t step = 1 + boats.size() / MostFitted;
    for (std::size_t i = 0; i < boats.size(); i += step)
        if (Rounding each = RoundingOf(boats[i]); each.Places.size() > 1)
            roundings.push_back(std::move(each));
    const double side = toPort ? 1 : -1;
    Way best = from;
    double least = CostOf(roundings, side, best, std::numeric_limits<double>::max());
    for (const double step : {5.0, 1.5}) {
        const Way middle = best;
        const int reach = step > 2 ? 4 : 3;
        for (int east = -reach; east <= reach; ++east)
            for (int north = -reach; north <= reach; ++north) {
                const Way at = middle + Way{east * step, north * step};
                const double cost = CostOf(roundings, side, at, least);
                if (cost < least) least = cost, best = at;
            }
    }
    return best;
}

}  // namespace keelview
