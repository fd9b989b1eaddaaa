#pragma once

#include "analysis/race_numbers.h"

namespace keelview {

/// True if a boat that is somewhere at a time (seconds from the start) takes part in the race then: what
/// the view need not follow is a boat that
/// - has finished more than five minutes ago;
/// - has never started: another boat has passed the first entry of the course by now, and this one passes
/// no
///   entry of it at any time;
/// - is ashore: from five minutes before to five minutes after it keeps within 50 metres. A boat that races
///   drifts further even in a calm, and a GPS at rest does not. Where its track does not reach so far, what
///   there is of it tells, but less than five minutes tell nothing.
bool IsRacing(const RaceNumbers& numbers, int boat, double time);

}  // namespace keelview
