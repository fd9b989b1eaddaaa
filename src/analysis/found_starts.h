#pragma once

#include <optional>
#include <utility>
#include <vector>

#include "analysis/way_by_second.h"

namespace keelview {

/// A straight line over the water: its two ends, the left one first as the boats see it that start.
struct FoundLine {
    Way Left, Right;

    Way Along() const {  ///< of length 1, from left to right
        const Way way = Right - Left;
        const double length = way.Length();
        return length > 0 ? way * (1 / length) : Way{1, 0};
    }
    /// Of length 1, at right angles to it: to where boats start.
    Way Ahead() const { return {-Along().North, Along().East}; }
};

/// What is known of a start before anybody looks for it.
struct StartHints {
    std::optional<int> Gun;         ///< second
    std::optional<FoundLine> Line;  ///< either end first
    std::vector<Way> Lying;         ///< what lies still: a line may end there
    int MinuteAt = 0;               ///< a second at which the clock begins a minute
};

/// A moment at which boats begin to sail together, from one line and one way.
struct FoundStart {
    int Gun = 0;  ///< second
    FoundLine Line;
    std::vector<int> Boats;  ///< that took part, from 0
    double Share = 0.0;      ///< of the boats that were there
    /// Of the boats that leave the line behind for good within some minutes, those that do so together.
    double Together = 0.0;
    /// How likely some moment of the day looks as much like a start if boats go off by themselves, each at
    /// any second of two minutes: 0 to 1.
    double Chance = 1.0;
    bool Punctual = false;  ///< the first of them is over it as the clock begins a minute
    double Spread = 0.0;    ///< seconds in which the middle boat came from rest to full speed
    bool AtMinute = false;  ///< the gun was taken to the next whole minute
    bool HintedGun = false, HintedLine = false;
};

/// The starts of a day in the order of time. Looked for are moments at which two fifths of the boats and
/// more, two at least, lie side by side, have come to nothing for some minutes, and go off the same way for
/// the next one. The gun goes 14 s behind the moment at which the middle boat begins its run, or at the
/// whole minute near that; the line lies at the front of the boats then.
std::vector<FoundStart> FindStarts(const std::vector<WayBySecond>& fleet, const StartHints& hints);

/// The last second up to `to` at which a boat crosses a line, or what lies within `beyond` metres of its
/// ends, to the side that is ahead; not before `from`.
std::optional<int> LastCrossing(const WayBySecond& way, const FoundLine& line, int from, int to,
                                double beyond);

}  // namespace keelview
