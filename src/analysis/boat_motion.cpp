#include "analysis/boat_motion.h"

#include <algorithm>
#include <cmath>

#include "analysis/medians.h"
#include "analysis/parabola.h"
#include "base/angles.h"
#include "base/parallel.h"

namespace keelview {

namespace {

constexpr double LongestReach = 5.0;  // seconds to either side that are fitted together
constexpr double ShortestReach = 1.0;
constexpr double SureVelocity = 0.15;  // metres a second, to which a velocity is sought
constexpr double LeastNoise = 0.002;  // metres that a boat makes in the millisecond to which times are told
constexpr double LongestGap = 12.0;   // seconds between fixes that are one way
constexpr double GapsInAll = 200'000;  // seconds of a track by the second
constexpr int FewestFitted = 5;
constexpr double AgreementSpan = 20.0;       // seconds over which own velocities are compared with places
constexpr double LeastTold = 0.95;           // share of the fixes that must tell a velocity
constexpr double LargestDisagreement = 0.4;  // metres a second

/// Standard deviation of a component of single values, from the median of their third differences: white
/// noise has third differences of sqrt(20) of its own deviation, and the median of a length in the plane is
/// 1.1774 of that.
double NoiseOf(const std::vector<Way>& values) {
    std::vector<double> lengths;
    lengths.reserve(values.size());
    for (std::size_t i = 3; i < values.size(); ++i)
        lengths.push_back((values[i] - values[i - 3] + (values[i - 2] - values[i - 1]) * 3.0).Length());
    return MedianOf(std::move(lengths)) / (std::sqrt(20.0) * 1.1774);
}

/// Seconds to either side that make a velocity sure: the variance of a slope over 2 R seconds with f places
/// a second is that of a place over 2 f R^3 / 3.
double ReachFor(double noise, const std::vector<double>& times) {
    std::vector<double> spacings;
    spacings.reserve(times.size());
    for (std::size_t i = 1; i < times.size(); ++i) spacings.push_back(times[i] - times[i - 1]);
    const double ratio = noise / SureVelocity;
    return std::clamp(std::cbrt(1.5 * ratio * ratio * MedianOf(std::move(spacings))), ShortestReach,
                      LongestReach);
}

}  // namespace

BoatMotion::BoatMotion(const Track& track, const Plane& plane) {
    times_.reserve(static_cast<std::size_t>(track.Count()));
    places_.reserve(static_cast<std::size_t>(track.Count()));
    for (int fix = 1; fix <= track.Count(); ++fix) {
        times_.push_back(track.TrackTime[fix]);
        places_.push_back(plane.To(track.At(fix)));
    }
    if (!std::ranges::is_sorted(times_, std::ranges::less_equal())) {
        times_.clear();  // a clock that falls back tells no motion
        places_.clear();
    }
    noise_ = std::max(NoiseOf(places_), LeastNoise);
    reach_ = ReachFor(noise_, times_);
    TakeOwnVelocities(track);
    KeepSeconds();
}

void BoatMotion::KeepSeconds() {
    // Few fixes that are spread over weeks are not worth it.
    const auto most = LongestGap * static_cast<double>(times_.size()) + GapsInAll;
    if (times_.empty() || times_.back() - times_.front() > most) return;
    firstSecond_ = std::ceil(times_.front());
    int next = 0;
    for (double t = firstSecond_; t <= times_.back(); ++t) {
        while (times_[static_cast<std::size_t>(next)] < t) ++next;
        const auto now = FitAt(t, next);
        seconds_.push_back(now ? Second{now->At, static_cast<float>(now->Velocity.East),
                                        static_cast<float>(now->Velocity.North),
                                        static_cast<float>(now->PlaceSigma),
                                        static_cast<float>(now->VelocitySigma)}
                               : Second());
    }
}

const BoatMotion::Second* BoatMotion::KeptAt(double t) const {
    const double second = t - firstSecond_;
    const bool kept = std::floor(t) == t && second >= 0 && second < static_cast<double>(seconds_.size());
    return kept ? &seconds_[static_cast<std::size_t>(second)] : nullptr;
}

int BoatMotion::First(double t) const {
    return static_cast<int>(std::ranges::lower_bound(times_, t) - times_.begin());
}

void BoatMotion::TakeOwnVelocities(const Track& track) {
    if (!track.HasOwnVelocity() || times_.empty()) return;
    int told = 0;
    for (int fix = 1; fix <= track.Count(); ++fix) {
        const double speed = track.TrackOwnSpeed[fix];
        const double course = track.TrackOwnCourse[fix];
        const bool tells = std::isfinite(speed) && std::isfinite(course);
        told += tells;
        const Way before = velocities_.empty() ? Way{} : velocities_.back();
        velocities_.push_back(tells ? Towards(course) * (speed * KnotMetres) : before);
    }
    if (told < LeastTold * track.Count() || !OwnAgree()) {
        velocities_.clear();
        return;
    }
    velocityNoise_ = NoiseOf(velocities_);
    sums_.assign(1, Way{});
    for (std::size_t i = 1; i < times_.size(); ++i)
        sums_.push_back(sums_.back() +
                        (velocities_[i - 1] + velocities_[i]) * ((times_[i] - times_[i - 1]) / 2));
    source_ = VelocitySource::Receiver;
}

/// Compares the sums of velocities with the ways between the places, over stretches all along the track.
bool BoatMotion::OwnAgree() const {
    std::vector<double> differences;
    std::size_t begin = 0;
    Way sum;
    for (std::size_t i = 1; i < times_.size(); ++i) {
        sum = sum + (velocities_[i - 1] + velocities_[i]) * ((times_[i] - times_[i - 1]) / 2);
        const double seconds = times_[i] - times_[begin];
        if (seconds < AgreementSpan) continue;
        differences.push_back((places_[i] - places_[begin] - sum).Length() / seconds);
        begin = i;
        sum = {};
    }
    const double allowed = LargestDisagreement + 2 * noise_ / AgreementSpan;
    return !differences.empty() && MedianOf(std::move(differences)) <= allowed;
}

Way BoatMotion::OwnVelocityAt(double t, int next) const {
    const auto i = static_cast<std::size_t>(next);
    const double f = (t - times_[i - 1]) / (times_[i] - times_[i - 1]);
    return velocities_[i - 1] * (1 - f) + velocities_[i] * f;
}

Way BoatMotion::SumAt(double t, int next) const {
    const auto i = static_cast<std::size_t>(next - 1);
    return sums_[i] + (velocities_[i] + OwnVelocityAt(t, next)) * ((t - times_[i]) / 2);
}

std::optional<Motion> BoatMotion::AtByOwn(double t, int next, std::size_t begin, std::size_t end) const {
    const auto count = static_cast<double>(end - begin);
    const Way here = SumAt(t, next);
    Way place;
    for (std::size_t i = begin; i < end; ++i) place = place + (places_[i] - sums_[i] + here) * (1 / count);
    double squares = 0.0;
    for (std::size_t i = begin; i < end; ++i) squares += (places_[i] - sums_[i] + here - place).Square();
    const double sigma = std::max(noise_, std::sqrt(squares / (2 * (count - 1))));
    return Motion{place, OwnVelocityAt(t, next), sigma / std::sqrt(count), velocityNoise_};
}

std::optional<BoatMotion::Fitted> BoatMotion::FittedAbout(double t, int first) const {
    const int next = std::max(first, 1);
    const auto i = static_cast<std::size_t>(next);
    if (i >= times_.size() || t < times_.front() || times_[i] - times_[i - 1] > LongestGap) return {};
    // Sparse fixes: as many as a parabola and its scatter need.
    const double reach = std::max(reach_, 2.5 * (times_[i] - times_[i - 1]));
    Fitted fitted{next, i, i};
    while (fitted.Begin > 0 && times_[fitted.Begin - 1] >= t - reach) --fitted.Begin;
    while (fitted.End < times_.size() && times_[fitted.End] <= t + reach) ++fitted.End;
    return fitted;
}

std::optional<Way> BoatMotion::VelocityAt(double t) const {
    if (const Second* kept = KeptAt(t))
        return std::isnan(kept->PlaceSigma) ? std::nullopt : std::optional(Way{kept->East, kept->North});
    const auto fitted = FittedAbout(t, First(t));
    if (!fitted) return {};
    if (!velocities_.empty()) return OwnVelocityAt(t, fitted->Next);
    ParabolaSums<Way> fit;
    for (std::size_t i = fitted->Begin; i < fitted->End; ++i) fit.Add(times_[i] - t, places_[i]);
    const auto solution = fit.Solve(FewestFitted);
    return solution ? std::optional(solution->Slope) : std::nullopt;
}

std::optional<Motion> BoatMotion::At(double t) const {
    const Second* const kept = KeptAt(t);
    if (!kept) return FitAt(t, First(t));
    if (std::isnan(kept->PlaceSigma)) return {};
    return Motion{kept->At, {kept->East, kept->North}, kept->PlaceSigma, kept->VelocitySigma};
}

/// Works At out; `first` is the first fix at or after the moment.
std::optional<Motion> BoatMotion::FitAt(double t, int first) const {
    const auto fitted = FittedAbout(t, first);
    if (!fitted) return {};
    const std::size_t begin = fitted->Begin, end = fitted->End;
    if (!velocities_.empty()) return AtByOwn(t, fitted->Next, begin, end);
    ParabolaSums<Way> fit;
    for (std::size_t i = begin; i < end; ++i) fit.Add(times_[i] - t, places_[i]);
    const auto solution = fit.Solve(FewestFitted);
    if (!solution) return {};
    double squares = 0.0;
    for (std::size_t k = begin; k < end; ++k) {
        const double s = times_[k] - t;
        squares += (places_[k] - solution->Place - solution->Slope * s - solution->Bend * (s * s)).Square();
    }
    const double scatter = std::sqrt(squares / (2.0 * (fit.Count - 3)));
    const double sigma = std::max(noise_, scatter);
    return Motion{solution->Place, solution->Slope, sigma * std::sqrt(solution->PlaceShare),
                  sigma * std::sqrt(solution->SlopeShare)};
}

std::optional<Stretch> BoatMotion::Over(double from, double to) const {
    const auto begin = static_cast<std::size_t>(First(from));
    std::size_t end = begin;
    while (end < times_.size() && times_[end] <= to) ++end;
    if (end - begin < 3 || times_[begin] > from + LongestGap / 2 || times_[end - 1] < to - LongestGap / 2)
        return {};
    const auto count = static_cast<double>(end - begin);
    Stretch stretch;
    stretch.Seconds = times_[end - 1] - times_[begin];
    for (std::size_t i = begin; i < end; ++i) {
        if (i > begin && times_[i] - times_[i - 1] > LongestGap) return {};
        stretch.Middle += times_[i] / count;
        stretch.MiddleAt = stretch.MiddleAt + places_[i] * (1 / count);
    }
    double spread = 0.0;
    for (std::size_t i = begin; i < end; ++i) {
        const double s = times_[i] - stretch.Middle;
        spread += s * s;
        stretch.Velocity = stretch.Velocity + (places_[i] - stretch.MiddleAt) * s;
    }
    stretch.Velocity = stretch.Velocity * (1 / spread);
    double squares = 0.0;
    for (std::size_t i = begin; i < end; ++i) squares += (places_[i] - stretch.At(times_[i])).Square();
    const double sigma = std::max(noise_, std::sqrt(squares / (2 * std::max(count - 2, 1.0))));
    stretch.MiddleSigma = sigma / std::sqrt(count);
    stretch.VelocitySigma = sigma / std::sqrt(spread);
    stretch.Bend = BendOf(begin, end, stretch, spread / count);
    if (!velocities_.empty()) TakeMeanVelocity(begin, end, stretch);
    return stretch;
}

/// How far a parabola through the places has its ends off their line, beyond twice what noise makes of it.
/// `square` is the mean of the squared times from the middle.
double BoatMotion::BendOf(std::size_t begin, std::size_t end, const Stretch& line, double square) const {
    Way sum;
    double weight = 0.0;
    for (std::size_t i = begin; i < end; ++i) {
        const double s = times_[i] - line.Middle, q = s * s - square;
        sum = sum + (places_[i] - line.At(times_[i])) * q;
        weight += q * q;
    }
    if (!(weight > 0)) return 0.0;
    const double bend = sum.Square() / (weight * weight) - 4 * noise_ * noise_ / weight;
    return bend > 0 ? std::sqrt(bend) * (line.Seconds * line.Seconds / 4 - square) : 0.0;
}

void BoatMotion::TakeMeanVelocity(std::size_t begin, std::size_t end, Stretch& stretch) const {
    const auto count = static_cast<double>(end - begin);
    Way mean;
    for (std::size_t i = begin; i < end; ++i) mean = mean + velocities_[i] * (1 / count);
    double squares = 0.0;
    for (std::size_t i = begin; i < end; ++i) squares += (velocities_[i] - mean).Square();
    stretch.Velocity = mean;
    stretch.VelocitySigma = std::sqrt(squares / (2 * (count - 1)) / count);
}

std::optional<Way> BoatMotion::SumOfVelocities(double from, double to) const {
    if (velocities_.empty() || !(from >= times_.front() && to <= times_.back())) return {};
    const int begin = std::max(First(from), 1), end = std::max(First(to), 1);
    for (auto i = static_cast<std::size_t>(begin); i <= static_cast<std::size_t>(end); ++i)
        if (times_[i] - times_[i - 1] > LongestGap) return {};
    return SumAt(to, end) - SumAt(from, begin);
}

namespace {

Position FirstPlace(const Tracks& tracks) {
    for (const Track& track : tracks.Boats)
        if (track.Count() > 0) return track.At(1);
    return {};
}

}  // namespace

FleetMotion::FleetMotion(const Tracks& tracks, const EarthScale& scale)
    : Water(scale, FirstPlace(tracks)), Boats(tracks.Boats.Count(), BoatMotion({}, Water)) {
    ForEachInParallel(Boats.Count(),
                      [&](int boat) { Boats[boat] = BoatMotion(tracks.Boats[boat], Water); });
}

}  // namespace keelview
