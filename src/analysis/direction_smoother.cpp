#include "analysis/direction_smoother.h"

#include <cmath>
#include <limits>
#include <utility>

namespace keelview {

namespace {

constexpr double FirstVariance = 1e4;       // degrees^2: nothing is known before the first value
constexpr double FirstRateVariance = 0.01;  // (degrees / s)^2

/// Value and rate, with their covariance.
struct State {
    double X = 0.0, V = 0.0;
    double Pxx = FirstVariance, Pxv = 0.0, Pvv = FirstRateVariance;

    State After(double dt, double density) const {
        State next;
        next.X = X + V * dt;
        next.V = V;
        next.Pxx = Pxx + 2 * dt * Pxv + dt * dt * Pvv + density * dt * dt * dt / 3;
        next.Pxv = Pxv + dt * Pvv + density * dt * dt / 2;
        next.Pvv = Pvv + density * dt;
        return next;
    }
    /// Takes a measurement in and returns the log of its likelihood.
    double Take(double value, double variance) {
        if (!std::isfinite(variance)) return 0.0;
        const double s = Pxx + variance;
        const double off = value - X;
        const double kx = Pxx / s, kv = Pxv / s;
        X += kx * off;
        V += kv * off;
        Pvv -= kv * Pxv;
        Pxv -= kx * Pxv;
        Pxx -= kx * Pxx;
        return -0.5 * (off * off / s + std::log(s));
    }
};

/// The state that knows what came later, too: `later` is smoothed, `predicted` what `now` made of it.
State Smoothed(const State& now, const State& predicted, const State& later, double dt) {
    // The gain is the covariance of now with later, times the inverse of that of later.
    const double cxx = now.Pxx + dt * now.Pxv, cxv = now.Pxv;
    const double cvx = now.Pxv + dt * now.Pvv, cvv = now.Pvv;
    const double d = predicted.Pxx * predicted.Pvv - predicted.Pxv * predicted.Pxv;
    if (!(d > 0)) return later;
    const double a = (cxx * predicted.Pvv - cxv * predicted.Pxv) / d;
    const double b = (cxv * predicted.Pxx - cxx * predicted.Pxv) / d;
    const double c = (cvx * predicted.Pvv - cvv * predicted.Pxv) / d;
    const double e = (cvv * predicted.Pxx - cvx * predicted.Pxv) / d;
    const double dx = later.X - predicted.X, dv = later.V - predicted.V;
    const double pxx = later.Pxx - predicted.Pxx, pxv = later.Pxv - predicted.Pxv,
                 pvv = later.Pvv - predicted.Pvv;
    State state;
    state.X = now.X + a * dx + b * dv;
    state.V = now.V + c * dx + e * dv;
    state.Pxx = now.Pxx + a * a * pxx + 2 * a * b * pxv + b * b * pvv;
    state.Pxv = now.Pxv + a * c * pxx + (a * e + b * c) * pxv + b * e * pvv;
    state.Pvv = now.Pvv + c * c * pxx + 2 * c * e * pxv + e * e * pvv;
    return state;
}

}  // namespace

double SmoothValues(double density, std::vector<SmoothedValue>& values) {
    if (values.empty()) return 0.0;
    std::vector<State> states;
    State state;
    double likelihood = 0.0;
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (i > 0) state = state.After(values[i].Time - values[i - 1].Time, density);
        likelihood += state.Take(values[i].Value, values[i].Sigma * values[i].Sigma);
        states.push_back(state);
    }
    for (std::size_t i = states.size() - 1; i-- > 0;) {
        const double dt = values[i + 1].Time - values[i].Time;
        states[i] = Smoothed(states[i], states[i].After(dt, density), states[i + 1], dt);
    }
    for (std::size_t i = 0; i < values.size(); ++i) {
        values[i].Smooth = states[i].X;
        values[i].SmoothSigma = std::sqrt(std::fmax(states[i].Pxx, 0.0));
    }
    return likelihood;
}

void SmoothLikeliest(std::vector<SmoothedValue>& values) {
    std::pair best(-std::numeric_limits<double>::infinity(), 1e-5);
    for (const double density : {1e-8, 1e-7, 1e-6, 1e-5, 1e-4, 1e-3})
        if (const double likelihood = SmoothValues(density, values); likelihood > best.first)
            best = {likelihood, density};
    SmoothValues(best.second, values);
}

}  // namespace keelview
