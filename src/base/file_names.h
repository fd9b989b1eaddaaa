#pragma once

#include <string_view>

namespace keelview {

/// Whether every system can have a file of this name (UTF-8, without folders): none of / \ : * ? " < > |
/// and no control character in it, no point or blank at its end, and before its first point no name that
/// Windows gives to a device (CON, PRN, AUX, NUL, CONIN$, CONOUT$, COM and LPT with a digit), in any case.
bool EverySystemTakes(std::string_view name);

}  // namespace keelview
