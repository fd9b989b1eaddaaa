#pragma once

#include <optional>

#include "base/position.h"
#include "racedata/earth_scale.h"
#include "racedata/race_control.h"

namespace keelview {

/// The mark or line that a pointer at `at` means: the nearest mark or line end closer than 0.1 /
/// `zoomFactor` minutes; nothing where there is none. At equal distances the earlier one counts, marks
/// before lines and first ends before second ones.
std::optional<CourseKey> NearestEntry(const RaceControl& race, const EarthScale& scale, double zoomFactor,
                                      const Position& at);

}  // namespace keelview
