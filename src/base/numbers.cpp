#include "base/numbers.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include "base/strings.h"

namespace keelview {
namespace {

struct Leading {
    double Value = 0.0;
    std::size_t Length = 0;  // bytes that belong to the number; 0 where there is none
};

/// The finite number at the very head of the text, with an optional sign. Words such as "inf" are none.
Leading LeadingNumber(std::string_view text) {
    const std::size_t sign = !text.empty() && (text[0] == '+' || text[0] == '-') ? 1 : 0;
    if (text.size() <= sign) return {};
    const char first = text[sign];
    if (first != '.' && (first < '0' || first > '9')) return {};
    const char* begin = text.data() + sign;
    double value = 0.0;
    const auto [end, error] = std::from_chars(begin, text.data() + text.size(), value);
    if (error != std::errc{} || !std::isfinite(value)) return {};
    return {text[0] == '-' ? -value : value, static_cast<std::size_t>(end - text.data())};
}

constexpr int SignificantDigits = 15;

/// A value taken apart: digits without zeros at their end, and the power of ten of the first of them.
struct Digits {
    std::string Text;
    int Exponent = 0;
};

Digits DigitsOf(double magnitude) {
    std::array<char, 40> buffer{};
    const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), magnitude,
                                            std::chars_format::scientific, SignificantDigits - 1);
    if (error != std::errc{}) return {"0", 0};
    std::string_view text(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
    const std::string_view mantissa = CutHead(text, 'e');
    Digits digits;
    for (const char c : mantissa) {
        if (c != '.') digits.Text += c;
    }
    while (digits.Text.size() > 1 && digits.Text.back() == '0') digits.Text.pop_back();
    digits.Exponent = static_cast<int>(LenientNumber(text));
    return digits;
}

std::string PlainForm(const Digits& digits) {
    if (digits.Exponent < 0) {
        return "0." + std::string(static_cast<std::size_t>(-digits.Exponent - 1), '0') + digits.Text;
    }
    const auto whole = static_cast<std::size_t>(digits.Exponent) + 1;
    if (digits.Text.size() <= whole) return digits.Text + std::string(whole - digits.Text.size(), '0');
    return digits.Text.substr(0, whole) + "." + digits.Text.substr(whole);
}

std::string ExponentForm(const Digits& digits) {
    std::string text = digits.Text.substr(0, 1);
    if (digits.Text.size() > 1) text += "." + digits.Text.substr(1);
    return text + "E" + std::to_string(digits.Exponent);
}

std::string WithoutLeadingZero(std::string text) {
    const std::size_t zero = text.starts_with('-') ? 1 : 0;
    if (text.compare(zero, 2, "0.") == 0) text.erase(zero, 1);
    return text;
}

}  // namespace

double LenientNumber(std::string_view text) {
    return LeadingNumber(Trim(text)).Value;
}

std::optional<double> StrictNumber(std::string_view text) {
    text = Trim(text);
    const Leading number = LeadingNumber(text);
    if (number.Length == 0 || number.Length != text.size()) return std::nullopt;
    return number.Value;
}

std::optional<int> StrictInteger(std::string_view text) {
    const std::optional<double> number = StrictNumber(text);
    if (!number) return std::nullopt;
    const double whole = std::nearbyint(*number);  // the default rounding mode: halves to even
    if (whole < std::numeric_limits<std::int16_t>::min() ||
        whole > std::numeric_limits<std::int16_t>::max()) {
        return std::nullopt;
    }
    return static_cast<int>(whole);
}

double RoundDecimals(double value, int decimals) {
    const double power = std::pow(10.0, decimals);
    return std::floor(value * power + 0.5) / power;
}

int FloorToInt(double value) {
    if (std::isnan(value)) return 0;
    const double whole = std::floor(value);
    if (whole <= std::numeric_limits<int>::min()) return std::numeric_limits<int>::min();
    if (whole >= std::numeric_limits<int>::max()) return std::numeric_limits<int>::max();
    return static_cast<int>(whole);
}

std::string NumberText(double value) {
    if (value == 0.0 || !std::isfinite(value)) return "0";
    const Digits digits = DigitsOf(std::fabs(value));
    const bool plain = digits.Exponent >= -9 && digits.Exponent <= 15;
    return (value < 0.0 ? "-" : "") + (plain ? PlainForm(digits) : ExponentForm(digits));
}

std::string SurfaceNumberText(double value) {
    return WithoutLeadingZero(NumberText(value));
}

std::string SpeedText(double knots) {
    const double rounded = RoundDecimals(std::isfinite(knots) ? knots : 0.0, 2);
    std::string text = NumberText(rounded);
    const std::size_t point = text.find('.');
    if (point == std::string::npos) return WithoutLeadingZero(text + ".00");
    if (text.size() - point == 2) text += "0";
    return WithoutLeadingZero(text);
}

std::string WholeText(double value) {
    return NumberText(std::round(value));
}

}  // namespace keelview
