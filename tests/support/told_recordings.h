#pragma once

#include <array>
#include <cmath>
#include <string>
#include <string_view>

#include "base/numbers.h"
#include "racedata/tracks/formats.h"

namespace keelview {

/// 2026-10-03 12:30:00 UTC, from which tests count.
inline constexpr UnixMs HalfPastNoon = 1'791'030'600'000;

inline std::string ToldNumber(float value) {
    return std::isnan(value) ? "-" : NumberText(RoundDecimals(value, 3));
}

/// What was read, in one line: "Boat/Device: ms lat lon speed course, ms ...; Reason 2 | Boat ...", with
/// the times counted from HalfPastNoon. A refused file is the name of its reason alone.
inline std::string Told(const TrackFileContent& content) {
    static constexpr std::array<const char*, 8> reasons{"NoTime",   "NoPlace",  "NotValid",  "Broken",
                                                        "SameTime", "TimeBack", "OtherZone", "TooMany"};
    static constexpr std::array<const char*, 10> refusals{"None",   "Empty",   "Unknown", "Velocitek",
                                                          "Sail2",  "NoTimes", "NoFixes", "TooLarge",
                                                          "Broken", "Packed"};
    if (content.Refused != Refusal::None) return refusals[static_cast<std::size_t>(content.Refused)];
    std::string text;
    for (const Recording& recording : content.Recordings) {
        if (!text.empty()) text += " | ";
        text += recording.Boat + "/" + recording.Device + ":";
        for (const RecordedFix& fix : recording.Fixes)
            text += " " + std::to_string(fix.Time - HalfPastNoon) + " " + NumberText(fix.Lat) + " " +
                    NumberText(fix.Lon) + " " + ToldNumber(fix.Speed) + " " + ToldNumber(fix.Course) + ",";
        for (const Skipped& left : recording.Left)
            text += " " + std::string(reasons[static_cast<std::size_t>(left.Why)]) + " " +
                    std::to_string(left.Count);
    }
    return text;
}

inline std::string ToldMarks(const TrackFileContent& content) {
    std::string text;
    for (const NamedPlace& mark : content.Hints.Marks)
        text += mark.Name + " " + NumberText(mark.Lat) + " " + NumberText(mark.Lon) + ", ";
    return text;
}

}  // namespace keelview
