#pragma once

#include <optional>
#include <string>

#include "session/voice.h"

namespace keelview {

/// A date as it was typed, where it reads in one way alone or in none; where "03/10/2026" may be the 10th
/// of March or the 3rd of October the person is asked, and it comes back year first. Nothing where the
/// person means none of the days.
std::optional<std::string> SettleDate(const Voice& voice, const std::string& typed);

}  // namespace keelview
