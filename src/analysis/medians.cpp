#include "analysis/medians.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace keelview {

double QuantileOf(std::vector<double> values, double share) {
    if (values.empty()) return 0.0;
    const auto number = static_cast<std::ptrdiff_t>(static_cast<double>(values.size()) * share);
    const auto there = values.begin() + std::min(number, std::ssize(values) - 1);
    std::ranges::nth_element(values, there);
    return *there;
}

double MedianOf(std::vector<double> values) {
    return QuantileOf(std::move(values), 0.5);
}

double ScatterAbout(double middle, const std::vector<double>& values) {
    std::vector<double> off;
    off.reserve(values.size());
    for (const double value : values) off.push_back(std::abs(value - middle));
    return MedianOf(std::move(off)) / 0.6745;
}

double MedianSigma(double scatter, std::size_t count) {
    return scatter * std::sqrt(std::numbers::pi / 2 / static_cast<double>(count));
}

double BestTenthSigma(double scatter, std::size_t count) {
    return 1.71 * scatter / std::sqrt(static_cast<double>(count));
}

}  // namespace keelview
