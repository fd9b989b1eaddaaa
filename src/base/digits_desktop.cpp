#include <array>
#include <charconv>

#include "base/digits.h"

namespace keelview {

namespace {

/// The longest that a number can be: 309 digits before the point, and as many behind it as are asked for.
template <class... Form>
std::string Written(double value, Form... form) {
    std::array<char, 512> digits{};
    const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), value, form...);
    return error == std::errc{} ? std::string(digits.data(), end) : std::string();
}

}  // namespace

std::string ShortestDigits(double value) {
    return Written(value);
}

std::string SignificantDigits(double value, int digits) {
    return Written(value, std::chars_format::general, digits);
}

std::string FixedDigits(double value, int decimals) {
    return Written(value, std::chars_format::fixed, decimals);
}

}  // namespace keelview
