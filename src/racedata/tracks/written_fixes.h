#pragma once

#include <cstddef>
#include <string_view>

#include "racedata/tracks/iso_time.h"
#include "racedata/tracks/recording.h"

namespace keelview {

/// Knots in a metre a second.
inline constexpr double KnotsPerMetreSecond = 3600.0 / 1852.0;

/// A written speed in metres a second as knots; NotTold where it is none, such as the -1 of a phone that
/// does not know.
float KnotsOfMetres(std::string_view metresPerSecond);

/// A written direction as degrees, 0 up to below 360; NotTold outside 0 to 360.
float DirectionOf(std::string_view degrees);

/// A written coordinate in degrees; no number where it is none, which AddFix counts as no place.
double DegreesOf(std::string_view degrees);

/// Gathers what a file of written times tells, and keeps the rules that all such files share: a fix needs a
/// readable time; times without a zone count as UTC where no time of the file has one, and are skipped
/// beside times that have one; an offset tells the zone, unless it is 0.
class WrittenFixes {
  public:
    /// Tells what a recording is called that has no name of its own, and what made the file.
    void NameFile(std::string_view boat, std::string_view device);
    /// Has room for so many fixes from the beginning: a list that grows is in memory twice.
    void MakeRoom(std::size_t fixes) { room_ = fixes; }
    /// Opens a recording: what is added from now on is of this boat. Names may be in any encoding; they
    /// come out as one line of UTF-8, cut to 200 bytes.
    void Begin(std::string_view boat, std::string_view device = {});
    /// Adds a fix at a time that the file tells as text; an empty one is a fix without a time.
    void Add(std::string_view time, const RecordedFix& fix);
    /// Adds a fix at a moment.
    void Add(const IsoTime& time, RecordedFix fix);
    /// Adds a mark where name and place are told.
    void AddMark(std::string_view name, double lat, double lon);
    /// Counts a piece that gives no fix.
    void Leave(SkipReason why, int count = 1);
    /// Notes places whose times are not told, such as a drawn line: alone they are no track.
    void NotePlaces() { places_ = true; }
    /// All that was gathered: the recordings with a fix, and as one those of one name that follow each
    /// other in time. Without a fix, places without times are refused for that reason.
    TrackFileContent Take();

  private:
    Recording& Current();
    void NoteZone(const IsoTime& time);

    TrackFileContent content_;
    std::size_t room_ = 0;
    Recording blank_;      // what each recording begins with
    bool zones_ = false;   // a time with a zone was met
    bool places_ = false;  // a place without a time was met
};

}  // namespace keelview
