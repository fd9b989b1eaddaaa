#pragma once

#include "racedata/gps_track.h"

namespace keelview {

/// Course and speed of one track as means over a time around each fix, for graphs that are read at a
/// glance. Each is that of the whole way from the first fix to the last one within the time: the speed over
/// the water sailed there, the course from end to end. `seconds` is the time in all; of 0, or where fixes
/// stand further apart, a fix has its own values. The track keeps its place while it is read.
class SmoothedTrack {
  public:
    SmoothedTrack(const Track& track, double seconds) : track_(track), half_(seconds / 2) {}

    /// Goes on to a fix: quickest from one to the next.
    void GoTo(int fix);
    double Speed() const;   ///< knots
    double Course() const;  ///< degrees true

  private:
    bool OwnValues() const { return to_ - from_ < 2; }

    const Track& track_;
    double half_;
    int fix_ = 1;
    int from_ = 1;  // of the way that is taken together
    int to_ = 1;
};

/// The highest speed that a track holds over three fixes in a row between two times, knots; 0 without any.
/// A single fix at a wrong place makes two fast segments, and so counts for nothing.
double FastestHeld(const Track& track, double from, double to);

}  // namespace keelview
