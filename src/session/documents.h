#pragma once

#include <string>

#include "session/app_state.h"

namespace keelview {

/// Opens a document or an address with the system's program for it; says in a message box what went wrong.
/// True if it was opened.
bool OpenDocument(const Settings& settings, Services& services, const std::string& target);

/// The manual in the program's language, below its folder.
std::filesystem::path ManualPath(const Settings& settings);

}  // namespace keelview
