#pragma once

#include <charconv>
#include <cmath>
#include <limits>
#include <string_view>

#include "racedata/tracks/recording.h"

namespace keelview {

/// No number: what a text that holds none reads as, so that a sum with it is none either.
inline constexpr double NoNumber = std::numeric_limits<double>::quiet_NaN();

/// A speed, an angle or a length as a fix holds it; NotTold for NoNumber and for what is none of these, as
/// it is beyond a million.
inline float Told(double value) {
    return std::abs(value) <= 1e6 ? static_cast<float>(value) : NotTold;
}

/// Takes the decimal number off the head of a text, with an optional sign; NoNumber, and the text stays,
/// where none stands there or none that a double can hold. "inf" and "nan" are none. A point is a point in
/// every locale.
inline double TakeNumber(std::string_view& text) {
    const char* begin = text.data();
    const char* const end = begin + text.size();
    if (begin != end && *begin == '+') ++begin;
    const char* digit = begin;
    if (digit != end && *digit == '-' && begin == text.data()) ++digit;
    if (digit == end || (*digit != '.' && (*digit < '0' || *digit > '9'))) return NoNumber;
    double value = 0.0;
    const auto [behind, error] = std::from_chars(begin, end, value);
    if (error != std::errc{} || !std::isfinite(value)) return NoNumber;
    text.remove_prefix(static_cast<std::size_t>(behind - text.data()));
    return value;
}

/// The whole text as a decimal number; NoNumber where anything else stands in it, blanks too.
inline double WholeNumber(std::string_view text) {
    const double value = TakeNumber(text);
    return text.empty() ? value : NoNumber;
}

/// The number that is written by digits alone, up to nine; -1 where there is none or anything else.
constexpr int Digits(std::string_view text) {
    if (text.empty() || text.size() > 9) return -1;
    int value = 0;
    for (const char c : text) {
        if (c < '0' || c > '9') return -1;
        value = value * 10 + (c - '0');
    }
    return value;
}

/// The milliseconds of a fraction's digits, as behind the point of "12.0345": 35. A half and more goes up,
/// so it may come to 1000; none is 0, and -1 stands for anything else.
constexpr int Milliseconds(std::string_view digits) {
    int tenths = 0;
    for (std::size_t place = 0; place < digits.size() || place < 4; ++place) {
        const char c = place < digits.size() ? digits[place] : '0';
        if (c < '0' || c > '9') return -1;
        if (place < 4) tenths = tenths * 10 + (c - '0');
    }
    return (tenths + 5) / 10;
}

/// Two numbers in one, as devices write degrees and minutes: 3517.25 is 35 + 17.25 / 60. Keeps the sign;
/// NoNumber for 60 minutes and more.
inline double FromDegreesMinutes(double packed) {
    const double degrees = std::trunc(packed / 100.0);
    const double minutes = packed - degrees * 100.0;
    return std::abs(minutes) < 60.0 ? degrees + minutes / 60.0 : NoNumber;
}

}  // namespace keelview
