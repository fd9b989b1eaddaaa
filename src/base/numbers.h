#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace keelview {

/// The leading decimal number of a text ("4.7 m" is 4.7, "-7x" is -7); 0 if there is none, or none that a
/// double can hold. Blanks before the number are skipped, a decimal point is a point in every locale, and
/// anything behind the number is ignored. Always finite.
double LenientNumber(std::string_view text);

/// The whole text as a number; nothing if anything but one number (and blanks around it) stands in it.
std::optional<double> StrictNumber(std::string_view text);

/// The whole text as a 16-bit integer, halves rounded to the even neighbour; nothing for any other text or
/// for a value outside -32768 to 32767.
std::optional<int> StrictInteger(std::string_view text);

/// floor(value x 10^decimals + 0.5) / 10^decimals: halves go up, also below zero.
double RoundDecimals(double value, int decimals);

/// floor as an int, held inside the range of an int; 0 for a value that is no number.
int FloorToInt(double value);

/// The plain decimal form of a value with at most 15 significant digits, as files hold it: "210", "0.5",
/// "-7". Never an exponent for values between 1e-9 and 1e15; "0" for a value that is not finite.
std::string NumberText(double value);

/// As NumberText, but without the zero before the point: ".532", "-.5". The form of numbers on pictures.
std::string SurfaceNumberText(double value);

/// Two decimals, no zero before the point: "5.10", ".50". The form of speeds in the boat list.
std::string SpeedText(double knots);

/// Rounded to a whole number, halves away from zero: "-132", "0".
std::string WholeText(double value);

}  // namespace keelview
