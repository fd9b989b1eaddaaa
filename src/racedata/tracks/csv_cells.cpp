#include "racedata/tracks/csv_cells.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

#include "base/strings.h"
#include "racedata/tracks/numbers.h"

namespace keelview {
namespace {

/// Puts the pieces of an angle together: degrees with minutes and seconds that may follow.
double FromPieces(const std::array<double, 3>& pieces, std::size_t count) {
    const bool fits = pieces[1] < 60.0 && pieces[2] < 60.0;
    if (count == 0 || !fits) return NoNumber;
    return pieces[0] + pieces[1] / 60.0 + pieces[2] / 3600.0;
}

/// The angle of a text that is not a bare number.
double AngleOfText(std::string_view text, GlobeSides sides) {
    std::string points = UpperAscii(text);
    std::ranges::replace(points, ',', '.');
    text = points;
    std::array<double, 3> pieces{};
    std::size_t count = 0;
    bool negative = false;
    bool hasSide = false;
    while (!text.empty()) {
        const char c = text[0];
        if ((c >= '0' && c <= '9') || c == '.') {
            const double value = TakeNumber(text);
            if (count == pieces.size() || std::isnan(value)) return NoNumber;
            pieces[count++] = value;
            continue;
        }
        const bool isSide = c == sides.Positive || c == sides.Negative;
        if (c >= 'A' && c <= 'Z' && !isSide) return NoNumber;
        hasSide = hasSide || isSide;
        negative = negative || c == sides.Negative || (c == '-' && count == 0);
        text.remove_prefix(1);
    }
    const bool packed = count == 1 && hasSide && pieces[0] > sides.Largest;
    const double value = packed ? FromDegreesMinutes(pieces[0]) : FromPieces(pieces, count);
    return negative ? -value : value;
}

}  // namespace

double CsvNumber(std::string_view cell) {
    const double value = WholeNumber(cell);
    std::array<char, 64> digits{};
    const std::size_t comma = std::isnan(value) ? cell.find(',') : std::string_view::npos;
    if (comma == std::string_view::npos || cell.size() > digits.size()) return value;
    std::ranges::copy(cell, digits.begin());
    digits[comma] = '.';
    return WholeNumber({digits.data(), cell.size()});
}

double CsvAngle(std::string_view cell, GlobeSides sides) {
    const double value = CsvNumber(cell);
    return std::isnan(value) ? AngleOfText(cell, sides) : value;
}

}  // namespace keelview
