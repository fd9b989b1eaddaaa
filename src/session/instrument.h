#pragma once

#include "session/app_state.h"

namespace keelview {

/// What may have changed since the pictures were drawn; several at once by `|`.
enum class Changed : unsigned {
    Nothing = 0,
    Boats = 1U << 0U,      ///< other boats: their controls stand anew
    Race = 1U << 1U,       ///< a race was loaded, or loaded anew
    Course = 1U << 2U,     ///< marks, lines, the course, and who passed them when
    Wind = 1U << 3U,       ///< the race's wind, or its wind file
    View = 1U << 4U,       ///< what the map shows: middle, zoom, turn
    Size = 1U << 5U,       ///< the form's places
    Focus = 1U << 6U,      ///< which boats are in focus
    Layers = 1U << 7U,     ///< what is drawn on the chart: coast, tracks, lay lines, time points
    Colours = 1U << 8U,    ///< the colours of sea and ink
    Mode = 1U << 9U,       ///< which view is shown
    Film = 1U << 10U,      ///< the film was started or stopped
    Answers = 1U << 11U,   ///< the coach's answers, or how far they have come
    All = (1U << 12U) - 2  ///< everything but other boats
};

constexpr Changed operator|(Changed a, Changed b) {
    return static_cast<Changed>(static_cast<unsigned>(a) | static_cast<unsigned>(b));
}

/// True if some of what is asked for has changed.
constexpr bool Any(Changed changed, Changed asked) {
    return (static_cast<unsigned>(changed) & static_cast<unsigned>(asked)) != 0;
}

/// A picture of the race display as the session knows it. What it shows it reads from the state; what a
/// person does at it goes to the session, and comes back by these two calls.
class Instrument {
  public:
    virtual ~Instrument() = default;
    /// Draws anew what depends on what has changed; once for all changes since the last call, before the
    /// moment is shown.
    virtual void Repaint(Changed /*changed*/) {}
    /// Shows a moment: once a frame, and after each Repaint.
    virtual void Show(const Moment& /*now*/) {}
};

}  // namespace keelview
