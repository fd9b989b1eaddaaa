#pragma once

#include <cstdint>
#include <functional>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace keelview {

/// Milliseconds since 1970-01-01 00:00:00 UTC.
using UnixMs = std::int64_t;

/// A number that a file does not tell.
inline constexpr float NotTold = std::numeric_limits<float>::quiet_NaN();

/// One fix as a file tells it. What it does not tell is NotTold.
struct RecordedFix {
    UnixMs Time = 0;
    double Lat = 0.0;            ///< degrees, north positive
    double Lon = 0.0;            ///< degrees, east positive, -180 to 180
    float Speed = NotTold;       ///< over ground, knots
    float Course = NotTold;      ///< over ground, degrees true
    float Heading = NotTold;     ///< degrees true
    float WaterSpeed = NotTold;  ///< knots
    float WindSpeed = NotTold;   ///< true wind, knots
    float WindFrom = NotTold;    ///< where the true wind comes from, degrees true
    float Accuracy = NotTold;    ///< horizontal, metres
};

/// Why a piece of a file gave no fix.
enum class SkipReason {
    NoTime,     ///< a place without a time
    NoPlace,    ///< a time without a place, or a place off the globe or at 0, 0
    NotValid,   ///< marked as no fix by the device
    Broken,     ///< unreadable, cut off, or with a wrong checksum
    SameTime,   ///< a second fix at the time of the one before
    TimeBack,   ///< out of the order of time, by a clock that jumped
    OtherZone,  ///< a time without a zone beside times that have one
    TooMany     ///< beyond what a track may hold
};
struct Skipped {
    SkipReason Why = SkipReason::Broken;
    int Count = 0;
};

/// What one device recorded of one boat, in the order of time.
struct Recording {
    std::string Boat;    ///< as the file names it, UTF-8; may be empty
    std::string Device;  ///< the device or program that made the file; may be empty
    std::vector<RecordedFix> Fixes;
    std::vector<Skipped> Left;  ///< what was skipped, each reason once
};

struct NamedPlace {
    std::string Name;
    double Lat = 0.0;  ///< degrees
    double Lon = 0.0;
};

/// What a file lets guess about the race that it was recorded in.
struct RaceHints {
    std::optional<UnixMs> Gun;  ///< the last start that a race timer of the device told
    std::optional<NamedPlace> LinePin;
    std::optional<NamedPlace> LineBoat;
    std::vector<NamedPlace> Marks;    ///< places with a name and without a time
    std::optional<double> ZoneHours;  ///< local time less UTC
};

/// Why a whole file cannot be read.
enum class Refusal {
    None,
    Empty,
    Unknown,    ///< of no known kind
    Velocitek,  ///< a closed format: to be exported as GPX
    Sail2,      ///< the same
    NoTimes,    ///< of a known kind, but places without times
    NoFixes,    ///< of a known kind, and nothing in it that is a fix
    TooLarge,   ///< beyond the limits of size, of what a packed file may unpack to, or of nesting
    Broken,     ///< of a known kind, and unreadable from its beginning
    Packed,     ///< a packed file that holds no file of a known kind
    // What a race meets with that names a file.
    Missing,     ///< there is no such file
    NoRecording  ///< none of that number or of that boat in it
};

/// All that a file tells.
struct TrackFileContent {
    std::string Format;  ///< "GPX"; empty where no reader knew it
    Refusal Refused = Refusal::None;
    std::vector<Recording> Recordings;  ///< those with a fix
    RaceHints Hints;
    std::vector<Skipped>
        Left;  ///< what was skipped of the file as a whole, as broken files of a packed one
};

/// Told how much of a file is read, from 0 to 1; false stops the reading.
using ReadingProgress = std::function<bool(double share)>;

/// Counts one more of a reason.
void Skip(std::vector<Skipped>& skipped, SkipReason why, int count = 1);

/// A name in UTF-8, on one line and cut to 200 bytes, whatever the file made of it.
std::string SoundName(std::string_view text);

/// Adds a fix, or counts why not: one with a place off the globe or that is no number, at 0, 0 to the last
/// digit (as receivers write before they know better), at the time of the last fix, or beyond MostFixes.
/// Directions are taken into 0 up to below 360 degrees; one beyond two turns is none.
void AddFix(Recording& recording, const RecordedFix& fix);

/// When all fixes are there: leaves the most that can stand in the order of time, of several at one time
/// the first, and counts the others. So one wrong time, ahead or back, costs one fix. The longest ascending
/// subsequence by patience sorting (Fredman 1975).
void KeepOrderOfTime(Recording& recording);

/// Adds a mark. One without a name, with a place that no fix may have, or beyond MostMarks is left out.
void AddMark(RaceHints& hints, NamedPlace mark);

/// Named places that a file may give.
inline constexpr std::size_t MostMarks = 1000;

/// Fixes that a recording may hold; a day at 10 Hz has 864,000.
inline constexpr std::size_t MostFixes = 20'000'000;

}  // namespace keelview
