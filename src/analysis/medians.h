#pragma once

#include <cstddef>
#include <vector>

namespace keelview {

/// The value that a share (0 to 1) of all lies below; 0 of none.
double QuantileOf(std::vector<double> values, double share);

/// The middle one of some values, the upper one of two; 0 of none.
double MedianOf(std::vector<double> values);

/// The standard deviation of values about a middle, as the median of how far they lie off has it.
double ScatterAbout(double middle, const std::vector<double>& values);

/// The standard deviation of a median of so many values that scatter so much: sqrt(pi / 2) times that of
/// their mean.
double MedianSigma(double scatter, std::size_t count);

/// Likewise of the value that nine tenths lie below: sqrt(0.9 * 0.1) over the density of the normal
/// distribution there, 1.71 times that of the mean.
double BestTenthSigma(double scatter, std::size_t count);

}  // namespace keelview
