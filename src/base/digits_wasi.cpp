#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>

#include "base/digits.h"

namespace keelview {

namespace {

std::string Written(const char* form, int digits, double value) {
    std::array<char, 512> text{};
    const int size = std::snprintf(text.data(), text.size(), form, digits, value);
    return {text.data(), static_cast<std::size_t>(std::clamp(size, 0, static_cast<int>(text.size()) - 1))};
}

}  // namespace

ReadDigits DigitsAtHead(std::string_view text) {
    // It would read more than decimals.
    const std::string decimal(
        text.substr(0, std::min(text.find_first_not_of("0123456789.eE+-"), text.size())));
    char* end = nullptr;
    const double value = std::strtod(decimal.c_str(), &end);
    return {value, static_cast<std::size_t>(end - decimal.c_str())};
}

std::string ShortestDigits(double value) {
    std::string scientific;
    for (const int behind : {14, 15, 16}) {
        scientific = Written("%.*e", behind, value);
        if (std::strtod(scientific.c_str(), nullptr) == value) break;
    }
    const std::size_t mark = scientific.find('e');
    std::string digits = scientific.substr(0, mark);
    while (digits.find('.') != std::string::npos && (digits.back() == '0' || digits.back() == '.')) {
        const bool point = digits.back() == '.';
        digits.pop_back();
        if (point) break;
    }
    const int power = std::atoi(scientific.c_str() + mark + 1);
    const std::size_t sign = digits.front() == '-' ? 1 : 0;
    const int behind = static_cast<int>(digits.size() - sign) - (digits.size() - sign > 1 ? 2 : 1);
    // With a point alone, where that is no longer.
    const std::string fixed = Written("%.*f", std::clamp(behind - power, 0, 340), value);
    scientific = digits + scientific.substr(mark);
    return fixed.size() <= scientific.size() ? fixed : scientific;
}

std::string SignificantDigits(double value, int digits) {
    return Written("%.*g", digits, value);
}

std::string FixedDigits(double value, int decimals) {
    return Written("%.*f", decimals, value);
}

}  // namespace keelview
