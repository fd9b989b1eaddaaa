#pragma once

#include <array>
#include <optional>

namespace keelview {

/// A least squares fit of a parabola to values (numbers, or ways over the water) by a moment or an angle,
/// counted from the one that is sought.
template <class Value>
struct ParabolaSums {
    std::array<double, 5> T{};  ///< sums of the powers of time
    std::array<Value, 3> X{};   ///< sums of the values times those powers
    int Count = 0;

    void Add(double t, Value value, double weight = 1.0) {
        double power = weight;
        for (std::size_t i = 0; i < T.size(); ++i, power *= t) {
            T[i] += power;
            if (i < X.size()) X[i] = X[i] + value * power;
        }
        ++Count;
    }

    /// value = Place + Slope t + Bend t^2
    struct Fit {
        Value Place, Slope, Bend;
        double PlaceShare = 0.0, SlopeShare = 0.0;  ///< of their variances in that of a single value
    };
    /// Nothing for fewer values than `fewest`, or where they lie too close for a parabola.
    std::optional<Fit> Solve(int fewest) const {
        const double m00 = T[2] * T[4] - T[3] * T[3], m01 = T[2] * T[3] - T[1] * T[4],
                     m02 = T[1] * T[3] - T[2] * T[2];
        const double d = T[0] * m00 + T[1] * m01 + T[2] * m02;
        if (Count < fewest || !(d > 1e-9)) return {};
        const double m11 = T[0] * T[4] - T[2] * T[2], m12 = T[1] * T[2] - T[0] * T[3],
                     m22 = T[0] * T[2] - T[1] * T[1], f = 1 / d;
        return Fit{(X[0] * m00 + X[1] * m01 + X[2] * m02) * f, (X[0] * m01 + X[1] * m11 + X[2] * m12) * f,
                   (X[0] * m02 + X[1] * m12 + X[2] * m22) * f, m00 * f, m11 * f};
    }
};

}  // namespace keelview
