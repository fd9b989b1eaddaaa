#pragma once

#include <cmath>

namespace keelview {

/// How far estimates lie off the truth.
struct Errors {
    double Squares = 0, Sum = 0;
    int Count = 0, WithinTwo = 0, WithinHalf = 0;

    void Add(double error, double sigma) {
        Squares += error * error;
        Sum += error;
        WithinTwo += std::abs(error) <= 2 * sigma;
        WithinHalf += std::abs(error) <= sigma / 2;
        ++Count;
    }
    double Rms() const { return std::sqrt(Squares / Count); }
    double Mean() const { return Sum / Count; }
    /// Sigmas are as large as the errors: most lie within two of them, and not too many within half of one.
    bool SigmasHold() const { return WithinTwo >= 0.9 * Count && WithinHalf <= 0.6 * Count; }
};

}  // namespace keelview
