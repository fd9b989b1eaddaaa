#pragma once

#include "base/bilingual.h"
#include "racedata/tracks/recording.h"

namespace keelview {

/// Why a track file gives no track, to stand behind its name: "a closed Velocitek file: not readable,
/// export it as GPX". Empty for Refusal::None.
Text RefusalText(Refusal why);

}  // namespace keelview
