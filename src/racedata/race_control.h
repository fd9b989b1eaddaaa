#pragma once

#include <array>
#include <cmath>
#include <optional>
#include <string>
#include <utility>

#include "base/dates.h"
#include "base/numbers.h"
#include "racedata/limits.h"

namespace keelview {

/// A position's number of the race control file that is written back as it was typed: the text and its
/// value in minutes of arc, 0 where it lies on no globe.
class TextNumber {
  public:
    TextNumber() = default;
    explicit TextNumber(std::string text) : text_(std::move(text)), value_(OnGlobe(LenientNumber(text_))) {}
    explicit TextNumber(double value) : text_(NumberText(value)), value_(value) {}

    const std::string& Text() const { return text_; }
    operator double() const { return value_; }  // NOLINT(google-explicit-constructor): it is a number

  private:
    static double OnGlobe(double value) { return std::fabs(value) <= FarthestMinutes ? value : 0.0; }

    std::string text_;
    double value_ = 0.0;
};

/// Everything that one race control file says. Arrays run from index 1; index 0 stays empty.
struct RaceControl {
    std::string RaceFileName;     ///< name in raceadmin, empty when no race control file is open
    std::string SingleTrackFile;  ///< the track in gpsdat that is shown when there is none

    std::string RaceTitle1;
    std::string RaceTitle2;
    std::string RaceTitle3;
    std::string StartTimeText;              ///< race start, local time; replay time 0
    std::string FinishTimeText;             ///< race finish, local time
    std::optional<CivilTime> DataFromTime;  ///< first moment kept from track and wind files
    std::optional<CivilTime> DataToTime;    ///< last moment kept
    int TimeDiff = 0;                       ///< hours from UTC to the local time of the race
    double MagVariation = 0.0;              ///< degrees, west negative
    double BoatLength = 0.0;                ///< metres
    double PreStartMinutes = 3.0;           ///< minutes of replay before the start
    double PreStartSeconds = 180.0;         ///< the same in seconds
    double WindDirection = 0.0;             ///< the race's wind, degrees
    bool NorthUp = false;                   ///< north at the top of the map; else the wind
    double LayLineUp = 45.0;                ///< degrees off the wind, beating
    double LayLineDown = 160.0;             ///< degrees off the wind, running
    int RaceDuration = 0;                   ///< seconds from start to finish
    int ReplaySpan = 0;                     ///< seconds that the time bar and the graphs cover

    int BoatCount = 0;
    std::array<std::string, MaxBoats + 1> BoatFile;  ///< track file in gpsdat
    std::array<std::string, MaxBoats + 1> BoatName;
    int MarkCount = 0;
    std::array<TextNumber, MaxMarks + 1> MarkLat;  ///< minutes of arc
    std::array<TextNumber, MaxMarks + 1> MarkLon;
    int LineCount = 0;
    std::array<TextNumber, MaxLines + 1> LineLat1;  ///< first end, minutes of arc
    std::array<TextNumber, MaxLines + 1> LineLon1;
    std::array<TextNumber, MaxLines + 1> LineLat2;  ///< second end
    std::array<TextNumber, MaxLines + 1> LineLon2;
    int CourseCount = 0;
    std::array<std::string, MaxCourseEntries + 1> CourseOrder;  ///< "L1", "MK3", in sailing order
    int MapCount = 0;
    std::array<std::string, MaxCells + 1> MapFile;  ///< coastline cells in use
    int AttachCount = 0;
    std::array<std::string, MaxAttachments + 1> AttachFile;
    std::string WindFileName;  ///< in winddat; empty means the race has no wind data
};

/// A course entry taken apart: a line or a mark, and its number (0 where the key holds none).
struct CourseKey {
    bool IsLine = false;
    int Number = 0;
};

/// Takes "L1" or "MK3" apart: a key that begins with "L" names a line by the number from its second
/// character on, any other a mark by the number from its third character on.
CourseKey ParseCourseKey(const std::string& key);

/// The way back: "L1" or "MK3".
std::string CourseKeyText(const CourseKey& entry);

/// There is something to put into an order: more than one mark or line.
inline bool CourseCanBeSet(const RaceControl& race) {
    return race.MarkCount + race.LineCount > 1;
}

/// The course has legs, so that there are tables to show.
inline bool HasLegs(const RaceControl& race) {
    return race.CourseCount > 1;
}

}  // namespace keelview
