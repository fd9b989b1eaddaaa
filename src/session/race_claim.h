#pragma once

#include <string>

#include "display/platform.h"
#include "session/voice.h"

namespace keelview {

/// Notes for other programs that this one works on a race (Platform::ClaimFile), and gives what there is to
/// tell where another program has it open, too; empty where none has. A program that changes nothing, and a
/// race without a file, note nothing.
std::string ClaimRace(const Settings& settings, Platform& platform, const std::string& raceFileName);

}  // namespace keelview
