#include "base/file_names.h"

#include <algorithm>
#include <array>
#include <string>

#include "base/strings.h"

namespace keelview {
namespace {

constexpr std::string_view Forbidden = "/\\:*?\"<>|";
constexpr std::array<std::string_view, 6> Devices{"CON", "PRN", "AUX", "NUL", "CONIN$", "CONOUT$"};
constexpr std::array<std::string_view, 3> RaisedDigits{"\u00B9", "\u00B2",
                                                       "\u00B3"};  // count as digits there

bool IsDevice(std::string_view name) {
    const std::string stem = UpperAscii(Trim(name.substr(0, name.find('.'))));
    if (std::ranges::find(Devices, stem) != Devices.end()) return true;
    if (!stem.starts_with("COM") && !stem.starts_with("LPT")) return false;
    const std::string_view number = std::string_view(stem).substr(3);
    return (number.size() == 1 && number.front() >= '0' && number.front() <= '9') ||
           std::ranges::find(RaisedDigits, number) != RaisedDigits.end();
}

}  // namespace

bool EverySystemTakes(std::string_view name) {
    const auto forbidden = [](unsigned char c) {
        return c < ' ' || Forbidden.find(static_cast<char>(c)) != std::string_view::npos;
    };
    return !name.empty() && name.back() != '.' && name.back() != ' ' &&
           std::ranges::none_of(name, forbidden) && !IsDevice(name);
}

}  // namespace keelview
