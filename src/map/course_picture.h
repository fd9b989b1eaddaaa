#pragma once

#include <optional>
#include <string>

#include "analysis/mark_rounding.h"
#include "display/canvas.h"
#include "session/app_state.h"

namespace keelview {

/// The time since the first boat reached an entry of the course, counted up beside its mark for five
/// minutes.
struct PassClock {
    int Entry = 0;     ///< of the course
    std::string Text;  ///< "2:05"
};

/// The clock of the latest such entry at a moment (seconds from the start), nothing where there is none.
/// The first entry, at which the race starts, has none.
std::optional<PassClock> PassClockAt(const MarkPasses& passes, double time);

/// Draws marks and lines with their names over what is on the map, with lay lines and pass clock if wanted.
void DrawCourse(Canvas& map, const AppState& app, bool layLines, bool passClock);

}  // namespace keelview
