#pragma once

#include <vector>

namespace keelview {

/// A measured value of a course of time.
struct SmoothedValue {
    double Time = 0.0;    ///< seconds; rising, equal ones allowed
    double Value = 0.0;   ///< as measured
    double Sigma = 0.0;   ///< of the measurement; infinite for a moment at which the value is only sought
    double Smooth = 0.0;  ///< what all values together make of it
    double SmoothSigma = 0.0;  ///< of that
};

/// Smooths values forward and backward as a line whose slope wanders by white noise of a density
/// (degrees^2 / s^3): the filter of Kalman and the smoother of Rauch, Tung and Striebel. Returns the log of
/// the likelihood of the values, up to a constant.
double SmoothValues(double density, std::vector<SmoothedValue>& values);

/// The same with the density, of several powers of ten, that makes the values likeliest.
void SmoothLikeliest(std::vector<SmoothedValue>& values);

}  // namespace keelview
