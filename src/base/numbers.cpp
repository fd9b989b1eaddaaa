#include "base/numbers.h"

#include <cmath>
#include <limits>

#include "base/digits.h"
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
    const ReadDigits digits = DigitsAtHead(text.substr(sign));
    if (digits.Length == 0 || !std::isfinite(digits.Value)) return {};
    return {text[0] == '-' ? -digits.Value : digits.Value, sign + digits.Length};
}

/// A finite number that is not negative, with at most 15 significant digits.
std::string MagnitudeText(double magnitude) {
    const std::string written = SignificantDigits(magnitude, 15);
    std::string_view power = written;
    std::string digits(CutHead(power, 'e'));
    if (power.empty()) return digits;
    const int exponent = static_cast<int>(LenientNumber(power));
    if (exponent < -9 || exponent > 15) return digits + "E" + std::to_string(exponent);
    std::erase(digits, '.');
    if (exponent < 0) return "0." + std::string(static_cast<std::size_t>(-exponent - 1), '0') + digits;
    digits.resize(16, '0');  // 15, the only power of ten that is left
    return digits;
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
    double power = 1.0;
    for (int decimal = 0; decimal < decimals; ++decimal) power *= 10.0;
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
    return (value < 0.0 ? "-" : "") + MagnitudeText(std::fabs(value));
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
