#include "analysis/needless_marks.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <tuple>

#include "analysis/mark_passing.h"
#include "analysis/medians.h"
#include "base/angles.h"

namespace keelview {

namespace {

constexpr double Straight = 1.06;  // of the straight way
constexpr double InTheWay = 1.08;  // of the shortest way that boats can sail
constexpr double LeastLike = 0.9;  // of the boats
constexpr std::size_t LeastTurns = 5;

/// How much longer a course gets by a mark, the most where it stands in it several times; 0 where it stands
/// nowhere but at the end.
template <class Length>
double LongerBy(const LaidCourse& laid, int place, Length length) {
    double longest = 0;
    for (std::size_t entry = 0; entry < laid.Course.Places.size(); ++entry) {
        if (laid.Course.Places[entry] != place || entry + 2 >= laid.Points.size()) continue;
        const Way in = laid.Points[entry + 1] - laid.Points[entry];
        const Way out = laid.Points[entry + 2] - laid.Points[entry + 1];
        longest = std::max(longest, (length(in) + length(out)) / std::max(length(in + out), 1.0));
    }
    return longest;
}

/// True if boats go round some place of the course more than once; what they only sail past at its end does
/// not count.
bool Repeats(const LaidCourse& laid) {
    std::vector<int> places = laid.Course.Places;
    if (!places.empty() && RoundedAt(laid, places.size() - 1) < LeastLike) places.pop_back();
    std::ranges::sort(places);
    return std::ranges::adjacent_find(places) != places.end();
}

/// The least share of the boats that have left a place as boats leave marks, of all its entries.
double PassedClosely(const LaidCourse& laid, int place) {
    double least = 1;
    for (std::size_t entry = 0; entry < laid.Course.Places.size(); ++entry)
        if (laid.Course.Places[entry] == place) least = std::min(least, RoundedAt(laid, entry));
    return least;
}

bool AreNeighbours(const std::vector<int>& places, int one, int other) {
    return std::ranges::adjacent_find(places, [&](int a, int b) {
               return (a == one && b == other) || (a == other && b == one);
           }) != places.end();
}

bool IsNeedless(const LaidCourse& laid, std::size_t mark, int place, double passed) {
    if (laid.Marks[mark].Changing || laid.Marks[mark].Partner >= 0) return false;
    const double straight = LongerBy(laid, place, [](Way way) { return way.Length(); });
    if (straight == 0) return false;
    if (straight < Straight) return true;
    if (!laid.Angles) return false;
    const double sailed = LongerBy(laid, place, [&](Way way) { return laid.Angles->Length(way); });
    return sailed < InTheWay && (Repeats(laid) || passed < LeastLike);
}

}  // namespace

double WindAngles::Length(Way way) const {
    const double length = way.Length();
    if (length == 0) return 0;
    const double off = std::abs(TurnBetween(From, way.Bearing()));
    const double angle = off < Beat ? Beat : off > Run ? Run : off;
    return length * std::cos(off * DegToRad) / std::cos(angle * DegToRad);
}

WindAngles AnglesOf(const std::vector<Corner>& corners, double wind) {
    std::vector<double> tacks, gybes;
    for (const Corner& corner : corners) {
        const CornerKind kind = KindOf(corner, wind);
        if (kind == CornerKind::Tack) tacks.push_back(std::abs(corner.Turn) / 2);
        if (kind == CornerKind::Gybe) gybes.push_back(std::abs(corner.Turn) / 2);
    }
    WindAngles angles{.From = wind};
    if (tacks.size() >= LeastTurns) angles.Beat = MedianOf(std::move(tacks));
    if (gybes.size() >= LeastTurns) angles.Run = 180 - MedianOf(std::move(gybes));
    return angles;
}

double RoundedAt(const LaidCourse& laid, std::size_t entry) {
    const std::vector<int> places = PlacesOf(laid.Marks);
    int came = 0, rounded = 0;
    for (std::size_t boat = 0; boat < laid.Course.Times.size(); ++boat) {
        const auto& times = laid.Course.Times[boat];
        if (entry >= times.size()) continue;
        ++came;
        const std::optional<int>& time = times[entry];
        if (!time) continue;
        const Passing passing{laid.Fleet[boat], *time};
        for (std::size_t mark = 0; mark < laid.Marks.size(); ++mark) {
            if (places[mark] != laid.Course.Places[entry]) continue;
            const auto berth = BerthsAt({passing}, laid.Marks[mark].At).front();
            if (!berth || !IsMarkLike(*berth, laid.Marks[mark].ToPort)) continue;
            ++rounded;
            break;
        }
    }
    return came > 0 ? static_cast<double>(rounded) / came : 0.0;
}

std::vector<std::size_t> NeedlessMarks(const LaidCourse& laid) {
    const std::vector<int> places = PlacesOf(laid.Marks);
    const auto length = [](Way way) { return way.Length(); };
    std::vector<std::tuple<double, double, std::size_t>> worths;
    for (std::size_t mark = 0; mark < laid.Marks.size(); ++mark) {
        const double passed = PassedClosely(laid, places[mark]);
        if (IsNeedless(laid, mark, places[mark], passed))
            worths.emplace_back(passed, LongerBy(laid, places[mark], length), mark);
    }
    std::ranges::sort(worths);
    std::vector<std::size_t> needless;
    for (const auto& [passed, straight, mark] : worths)
        if (std::ranges::none_of(needless, [&](std::size_t other) {
                return AreNeighbours(laid.Course.Places, places[mark], places[other]);
            }))
            needless.push_back(mark);
    std::ranges::sort(needless, std::greater());
    return needless;
}

}  // namespace keelview
