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

ReadDigits DigitsAtHead(std::string_view text) {
    double value = 0.0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{}) return {};
    return {value, static_cast<std::size_t>(end - text.data())};
}

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
