#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "analysis/manoeuvres.h"
#include "analysis/race_numbers.h"
#include "analysis/track_at.h"
#include "analysis/view.h"
#include "analysis/wind_at.h"
#include "base/one_based.h"
#include "display/colour.h"
#include "display/dialogs.h"
#include "display/platform.h"

namespace keelview {

/// What the start settles for the life of the process.
struct Settings {
    std::filesystem::path AppPath;  ///< the program's folder, without a separator at its end
    std::string AppTitle;           ///< title of message boxes
    std::string UiFontName;         ///< font of all controls
    bool UseEnglish = false;
    bool EditMode = true;  ///< false: browse-only
    double FontScale = 1.0;
    double TwipScaleX = 1.0;
    double TwipScaleY = 1.0;
    bool FileListIsRace = false;  ///< the menu's list shows races, not single tracks
};

/// Which picture stands in the place of the map.
enum class ViewKind { Map = 1, Graph = 2, Data = 3 };

/// The film's clock, written by the film alone. Times are seconds from the race start, negative before it.
struct Clock {
    double ReplayTime = 0.0;
    double ReplayStep = 0.5;       ///< added per tick; negative when playing backward
    double SpeedMultiplier = 5.0;  ///< replay seconds per real second
    double ReplayRangeStart = 0.0;
    double ReplayRangeEnd = 0.0;
};

/// A boat at one moment.
struct BoatMoment {
    int Segment = 0;             ///< of its track; 0 when the boat is nowhere at this moment
    TrackMoment On;              ///< holds while there is a segment
    double TrueWindAngle = 0.0;  ///< degrees, -180 to 180

    bool IsSomewhere() const { return Segment > 0; }
    Position At() const { return {On.Lat, On.Lon}; }
};

/// One moment of the film, worked out once and shown by all instruments.
struct Moment {
    double Time = 0.0;    ///< seconds from the race start
    bool Forward = true;  ///< the film plays or steps forward
    Wind WindNow;
    OneBased<BoatMoment> Boats;  ///< by boat
    bool BoatInView = true;      ///< some boat is on the map, or another view is shown
};

/// A turn of a boat that the map marks.
struct TurnMark {
    double Time = 0.0;  ///< seconds from the race start
    ManoeuvreKind Kind = ManoeuvreKind::Tack;
    std::optional<double> LossMetres;

    bool operator==(const TurnMark&) const = default;
};

/// What the person has chosen to see, and where the pointer is.
struct Shown {
    ViewKind ViewMode = ViewKind::Map;
    Colour SeaColour = Rgb(0, 255, 255);
    Colour InkColour = Black;  ///< the one that stands out from the sea (InkOn)
    bool ShowTracks = true;
    int HoverBoat = 0;  ///< boat under the pointer in the panel; 0 when none is
    bool PointerOnMap = false;
    bool PointerOnTimeBar = false;  ///< the overview shows the moment under the pointer
    int TurningBoat = 0;            ///< whose turns the map marks; 0 when it marks none
    std::vector<TurnMark> Turns;    ///< that boat's, in the order of time
};

/// The one shared state, made at the start and handed on by reference: the numbers of the open race, and
/// how they are seen now.
struct AppState : RaceNumbers {
    OneBased<OneBased<float>> details;  ///< of the tracks, by boat (analysis/track_details)
    Settings settings;
    View view;
    Clock clock;
    Moment now;
    Shown shown;
};

/// The operating system and the person, as seen by the program.
struct Services {
    Platform& platform;
    Dialogs& dialogs;
};

/// The map's projection as it is seen now.
inline Projection MapProjection(const AppState& app) {
    return MapProjection(app.view, app.area, app.scale);
}

}  // namespace keelview
