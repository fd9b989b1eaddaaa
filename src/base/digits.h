#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace keelview {

// A finite number as digits with a point, in every locale; one implementation for each kind of system, as
// the standard library's own takes tables that a page has no room for.

/// The number at the head of a text that begins with a digit or a point, and how many bytes belong to it:
/// none where it is none, and 0 for one that a double cannot hold.
struct ReadDigits {
    double Value = 0.0;
    std::size_t Length = 0;
};
ReadDigits DigitsAtHead(std::string_view text);

/// The fewest digits that read back as the number: "0.1", "1e+300".
std::string ShortestDigits(double value);

/// At most so many significant digits, without zeros at the end; with an exponent below 1e-4 and from
/// 10^digits on.
std::string SignificantDigits(double value, int digits);

/// So many digits behind the point.
std::string FixedDigits(double value, int decimals);

}  // namespace keelview
