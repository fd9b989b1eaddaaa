#pragma once

#include <cmath>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "base/angles.h"
#include "base/dates.h"
#include "base/numbers.h"
#include "base/one_based.h"
#include "base/position.h"
#include "racedata/limits.h"

namespace keelview {

/// A position's number of the race control file that is written back as it was typed: the text and its
/// value in minutes of arc, 0 where it lies on no globe.
class TextNumber {
  public:
    TextNumber() = default;
    explicit TextNumber(std::string text) : text_(std::move(text)), value_(OnGlobe(LenientNumber(text_))) {}
    explicit TextNumber(double value) : text_(NumberText(value)), value_(value) {}
    /// A longitude is written within 180 degrees of Greenwich, wherever the race counts it from.
    static TextNumber Longitude(double value) {
        TextNumber longitude(WrapLongitude(value));
        longitude.value_ = value;
        return longitude;
    }

    /// Counts a longitude on from the meridian of the race; its text stays.
    void CountFrom(double meridian) { value_ = LongitudeNear(value_, meridian); }

    const std::string& Text() const { return text_; }
    operator double() const { return value_; }  // NOLINT(google-explicit-constructor): it is a number

  private:
    static double OnGlobe(double value) { return std::fabs(value) <= FarthestMinutes ? value : 0.0; }

    std::string text_;
    double value_ = 0.0;
};

/// A moment of the race control file, local time: the text as it was typed, and what it reads as, or what
/// the tracks tell where it reads as nothing. What was worked out is never typed.
class RaceTime {
  public:
    RaceTime() = default;
    explicit RaceTime(std::string typed) : typed_(std::move(typed)), at_(ParseDateTime(typed_)) {}
    /// The moment as its text reads back: one outside the calendar becomes the calendar's end.
    explicit RaceTime(CivilTime at) : RaceTime(DateTimeText(at)) {}

    /// Takes the moment that the tracks tell; the text stays as it was typed.
    void WorkOut(CivilTime at) {
        at_ = at;
        workedOut_ = true;
    }

    const std::string& Typed() const { return typed_; }
    /// The moment as it is shown: as it was typed where that is a date.
    std::string Text() const { return workedOut_ ? DateTimeText(*at_) : typed_; }
    /// Nothing where the text is no date and nothing was worked out.
    const std::optional<CivilTime>& At() const { return at_; }
    bool Empty() const { return typed_.empty(); }
    /// Something was typed that is no date.
    bool Unreadable() const { return !typed_.empty() && (workedOut_ || !at_); }

  private:
    std::string typed_;
    std::optional<CivilTime> at_;
    bool workedOut_ = false;
};

struct BoatEntry {
    std::string BoatFile;  ///< track file in gpsdat; behind a '#' a recording of it, by number or boat
    std::string BoatName;
    double ClockOffset = 0.0;  ///< seconds to add to the times of its fixes, in milliseconds
};

/// A boat of the race control file whose track is not there today: the race is shown without it, and its
/// line stays in the file.
struct AbsentBoat {
    int Number = 0;  ///< its place among all boats of the file
    BoatEntry Entry;
};

/// What a person has set by hand about a boat's rounding of one entry of the course.
struct HandPass {
    int BoatNumber = 0;          ///< the boat's place in the file, absent ones counted
    int Entry = 0;               ///< of the course
    std::optional<int> Seconds;  ///< from the start; nothing means not rounded
};

struct Mark {
    TextNumber MarkLat;  ///< minutes of arc
    TextNumber MarkLon;

    Position At() const { return {MarkLat, MarkLon}; }
};

struct Line {
    TextNumber LineLat1;  ///< first end, minutes of arc
    TextNumber LineLon1;
    TextNumber LineLat2;  ///< second end
    TextNumber LineLon2;

    Position FirstEnd() const { return {LineLat1, LineLon1}; }
    Position SecondEnd() const { return {LineLat2, LineLon2}; }
};

/// Metres; the length of boats where nothing else is told.
inline constexpr double StandardBoatLength = 4.7;

/// Hours from UTC of the home waters, for a race that does not tell its own.
inline constexpr double HomeTimeDiff = 9;

/// A time difference as files and fields hold it: a whole text such as "9", "0", "-3.5" or "5.75". Nothing
/// for what is no number, no multiple of a quarter of an hour, or beyond 16 bits.
std::optional<double> ParseTimeDiff(std::string_view text);

/// Everything that one race control file says.
struct RaceControl {
    std::string RaceFileName;     ///< name in raceadmin, empty when no race control file is open
    std::string SingleTrackFile;  ///< the track in gpsdat that is shown when there is none

    std::string RaceTitle1;
    std::string RaceTitle2;
    std::string RaceTitle3;
    RaceTime Start;                         ///< race start; replay time 0
    RaceTime Finish;                        ///< race finish
    std::optional<CivilTime> DataFromTime;  ///< first moment kept from track and wind files
    std::optional<CivilTime> DataToTime;    ///< last moment kept
    std::optional<double> TimeDiff;         ///< hours from UTC to the local time, in quarters
    double MagVariation = 0.0;              ///< degrees, west negative
    double BoatLength = 0.0;                ///< metres
    double BowAhead = 0.0;                  ///< metres that the bow lies ahead of the antenna
    double PreStartMinutes = 3.0;           ///< minutes of replay before the start
    double WindDirection = 0.0;             ///< the race's wind, degrees
    bool NorthUp = false;                   ///< north at the top of the map; else the wind
    double LayLineUp = 45.0;                ///< degrees off the wind, beating
    double LayLineDown = 160.0;             ///< degrees off the wind, running
    int RaceDuration = 0;                   ///< seconds from start to finish, as the loader settled it

    OneBased<BoatEntry, MaxBoats> Boats;
    OneBased<AbsentBoat> AbsentBoats;  ///< by their number; with Boats at most MaxBoats
    OneBased<HandPass> HandPasses;     ///< by boat and entry, one at most for each
    OneBased<Mark, MaxMarks> Marks;
    OneBased<Line, MaxLines> Lines;
    OneBased<std::string, MaxCourseEntries> CourseOrder;  ///< "L1", "MK3", in sailing order
    OneBased<std::string, MaxCells> MapFile;  ///< coastline cells in use, for who hands the race on
    OneBased<std::string, MaxAttachments> AttachFile;  ///< documents in attachment
    std::string WindFileName;    ///< in winddat; empty means the race has no wind data
    std::string AbsentWindFile;  ///< the wind file that the race names and that is not there today
};

/// The place of a boat of the race among all boats of its file, the absent ones counted.
int BoatNumberInFile(const RaceControl& race, int boat);
/// The way back; 0 for an absent boat and for none.
int BoatOfNumber(const RaceControl& race, int number);

/// Seconds of replay before the start.
inline double PreStartSeconds(const RaceControl& race) {
    return race.PreStartMinutes * 60;
}

/// Seconds that the time bar and the graphs cover: the race, its pre-start and one minute more.
int ReplaySpan(const RaceControl& race);

/// The compass direction at the top of the map, degrees: north, or the race's wind.
inline double ScreenUp(const RaceControl& race) {
    return race.NorthUp ? 0.0 : race.WindDirection;
}

/// The time zone of a longitude (minutes of arc) in hours from UTC: one for each 15 degrees, to the nearest
/// hour, halves going up. Longitude 139.75 E gives 9.
inline int TimeZoneOfLongitude(double longitude) {
    return FloorToInt(WrapLongitude(longitude) / 15 / 60 + 0.5);
}

/// Seconds from one time to the other, held to what a race can last: 0 to LongestRace.
int DurationBetween(CivilTime start, CivilTime finish);

/// A course entry taken apart: a line, a mark or a gate of two marks, and their numbers (0 where the key
/// holds none).
struct CourseKey {
    bool IsLine = false;
    int Number = 0;
    int OtherMark = 0;  ///< the second mark of a gate; 0 for any other entry

    bool IsGate() const { return OtherMark != 0; }
    /// True if the entry is that mark, alone or in a gate.
    bool HasMark(int mark) const { return !IsLine && (mark == Number || mark == OtherMark); }
};

/// Takes "L1", "MK3" or "MK3/MK4" apart: a key that begins with "L" names a line by the number from its
/// second character on, any other a mark by the number from its third character on; behind a slash stands
/// the second mark of a gate. A gate of one mark twice, or whose first mark is none, is no gate.
CourseKey ParseCourseKey(const std::string& key);

/// The way back: "L1", "MK3" or "MK3/MK4".
std::string CourseKeyText(const CourseKey& entry);

/// Takes a gate of the course apart into its two marks, one behind the other, or joins a mark to the mark
/// before it. What was set by hand stays with its entries; that of two which become one is what the first
/// had. False, and nothing changed, where there is no such pair of marks, or no room for one more entry.
bool ToggleGate(RaceControl& race, int entry);

/// There is something to put into an order: more than one mark or line.
inline bool CourseCanBeSet(const RaceControl& race) {
    return race.Marks.Count() + race.Lines.Count() > 1;
}

/// The course has legs, so that there are tables to show.
inline bool HasLegs(const RaceControl& race) {
    return race.CourseOrder.Count() > 1;
}

/// The race has a wind file, and it is there.
inline bool HasWindFile(const RaceControl& race) {
    return !race.WindFileName.empty();
}

}  // namespace keelview
