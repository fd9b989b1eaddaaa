#pragma once

#include <vector>

#include "analysis/coach_answers.h"
#include "report/json_writer.h"

namespace keelview {

// Each adds one member to an open object. What is not known is null.

/// "ranking": for each moment the order with the gaps to the leader, metres and seconds.
void WriteRanking(JsonWriter& json, const CoachAnswers& coach, const std::vector<double>& at);

/// "gaps": for each boat its gap to the leader in seconds, each 10 s and at its passings.
void WriteGaps(JsonWriter& json, const CoachAnswers& coach);

/// "start": the line, and each boat's start; null where the course does not begin with a line.
void WriteStart(JsonWriter& json, const CoachAnswers& coach);

/// "manoeuvres": those of all boats, by boat and time. "reason" says why one has no loss.
void WriteManoeuvres(JsonWriter& json, const CoachAnswers& coach);

/// "wind_estimate": the wind over the water from the tracks, and which wind the other numbers rest on.
void WriteWindEstimate(JsonWriter& json, const CoachAnswers& coach);

/// "current": its parts across and along the wind in knots, the latter null where the wind shifts too
/// little to tell it; null where too few turns tell either.
void WriteCurrent(JsonWriter& json, const CoachAnswers& coach);

/// "made_good": a row a boat, a cell a leg.
void WriteMadeGood(JsonWriter& json, const CoachAnswers& coach);

/// "polar": for each band of wind speed the curves of the fleet and of each boat.
void WritePolar(JsonWriter& json, const CoachAnswers& coach);

/// "polar_less_current": the same of the velocities less the current, as far as it is known; null where
/// nothing is known of it.
void WritePolarLessCurrent(JsonWriter& json, const CoachAnswers& coach);

/// "debrief": a row a leg, with the best boat and a cell a boat.
void WriteDebrief(JsonWriter& json, const CoachAnswers& coach);

/// "velocities": for each boat what its velocities are taken from, "receiver" or "positions", and the noise
/// of its places in metres.
void WriteVelocitySources(JsonWriter& json, const CoachAnswers& coach);

}  // namespace keelview
