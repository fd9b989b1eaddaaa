#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "base/bilingual.h"
#include "base/dates.h"
#include "racedata/race_control.h"
#include "racedata/tracks/recording.h"

namespace keelview {

// What the race control editor does with a race before it is saved, apart from the form that shows it.

/// The race that an opened editor starts with: empty but for the editor's defaults and `timeDiff` hours
/// from UTC; a clock that shows UTC tells nothing of the place, so 0 leaves the hours to the first track.
RaceControl NewDraft(int timeDiff);

/// Takes a boat out of the draft; what was set by hand for it goes too, and stays with the boats behind it.
void RemoveBoat(RaceControl& draft, int boat);

/// Puts a boat to the place of another; those between move by one, and what was set by hand stays with its
/// boat.
void MoveBoat(RaceControl& draft, int from, int to);

/// The boat of the draft that has this track file already, the case of letters apart; 0 for none.
int BoatOfFile(const RaceControl& draft, std::string_view boatFile);

/// What a track file's name tells of its boat: what stands behind a '#', else the name less its ending;
/// "BOAT" and the number of the next boat where that is nothing.
std::string ProposedBoatName(const RaceControl& race, std::string_view boatFile);

/// Takes marks, lines and course of another race; rounding times set by hand on the old course go.
void TakeCourse(const RaceControl& from, RaceControl& draft);

/// True if a track file of this name can stand in a race control file: no comma, no slash, no blanks at its
/// ends.
bool FitsBoatLine(std::string_view boatFile);

/// When and where a track begins, when it ends, and how sound it is.
struct TrackTimes {
    CivilTime First = 0;          ///< UTC
    CivilTime Last = 0;           ///< UTC
    double FirstLongitude = 0.0;  ///< minutes of arc, east positive
    int SkippedFixes = 0;         ///< left out as faulty
};

/// First and last fix of a track file in gpsdat. Nothing if it gives no point on the display either; `why`
/// then says the reason.
std::optional<TrackTimes> ReadFirstTrackTimes(const std::filesystem::path& appPath,
                                              const std::string& boatFile, Refusal& why);

/// Fills in what a track can tell and the race does not have yet: TimeDiff is the zone of its longitude, an
/// empty start the local time four minutes after its first fix, an empty finish that of its last fix.
void ProposeTimes(const std::optional<TrackTimes>& track, RaceControl& race);

/// The texts of the editor's fields as they stand.
struct DraftFields {
    std::string Title1;
    std::string Title2;
    std::string Start;
    std::string Finish;
    std::string TimeDiff;
    std::string WindDirection;
    std::string BoatLength;
    std::string MagVariation;
    std::string LayLineUp;
    std::string LayLineDown;
    std::string PreStartMinutes;
};

/// Takes all fields into the race. Nothing is taken, and the message for the person is given, where a start
/// or finish is no date, the finish does not lie behind the start, or a number field holds something that
/// is no number or lies outside its range; an empty number field counts as 0, but not that of TimeDiff.
std::optional<std::string> TakeFields(const DraftFields& fields, bool useEnglish, RaceControl& race);

/// Reads a race control file into a draft with its coastline cells, so that saving it keeps them. False,
/// and the draft unchanged, if the file cannot be read.
bool OpenDraft(const std::filesystem::path& appPath, const std::string& raceFileName, RaceControl& draft);

}  // namespace keelview
