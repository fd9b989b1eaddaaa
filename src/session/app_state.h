#pragma once

#include <array>
#include <filesystem>
#include <string>

#include "analysis/mark_rounding.h"
#include "analysis/track_derivation.h"
#include "analysis/view.h"
#include "display/colour.h"
#include "display/dialogs.h"
#include "display/platform.h"
#include "racedata/coastline.h"
#include "racedata/gps_track.h"
#include "racedata/race_control.h"
#include "racedata/wind_file.h"

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

/// The film's clock. Times are seconds from the race start, negative before it.
struct Clock {
    double ReplayTime = 0.0;
    double ReplayStep = 0.5;       ///< added per tick; negative when playing backward
    int ReplayDirection = 1;       ///< 1 or -1, the sign of ReplayStep
    double SpeedMultiplier = 5.0;  ///< replay seconds per real second
    double ReplayRangeStart = 0.0;
    double ReplayRangeEnd = 0.0;
    double LastFixTime = 0.0;  ///< largest time of any boat's last point
};

/// The wind at the replay time.
struct WindMoment {
    double WindNow = 0.0;        ///< degrees true
    double WindDirMagNow = 0.0;  ///< degrees magnetic
    double WindSpeedNow = 0.0;   ///< one decimal
    int WindCursor = 0;          ///< sample found at the last update
};

/// Where the boats are at the replay time; arrays by boat, from 1.
struct Fleet {
    std::array<double, MaxBoats + 1> BoatLatNow{};  ///< minutes of arc; 0 when the boat has no position
    std::array<double, MaxBoats + 1> BoatLonNow{};
    std::array<double, MaxBoats + 1> BoatSpeedNow{};    ///< knots
    std::array<double, MaxBoats + 1> BoatSpeedShown{};  ///< knots, at the last update of the panel
    std::array<double, MaxBoats + 1> TrueWindAngle{};   ///< degrees, -180 to 180
    std::array<int, MaxBoats + 1> TrackCursor{};        ///< segment of the last frame
    std::array<bool, MaxBoats + 1> BoatFinished{};
    std::array<int, MaxBoats + 1> FinishOrder{};  ///< boat numbers in order of finish, from 1
    int FinishedCount = 0;
    bool BoatInView = true;    ///< some boat is on the map in this frame
    bool BoatRealSize = true;  ///< the last sprite stood at true scale
};

/// What the display shows and how; changed by the person and by the load of a race.
struct DisplayState {
    ViewKind ViewMode = ViewKind::Map;
    Colour SeaColour = Rgb(0, 255, 255);
    Colour InkColour = White;
    std::array<Colour, MaxBoats + 1> BoatColour{};  ///< by boat, from 1
    bool ShowTracks = true;
    bool HintsOn = true;
    int HoverBoat = -1;  ///< row under the pointer in the panel, from 0
    bool PointerOnTimeBar = false;
    int HeldKey = 0;           ///< key held on the form, 0 when none
    bool MeasureMode = false;  ///< the mouse on the map measures range and bearing
    bool WindGraphOn = false;
    bool WindTextArmed = true;    ///< a change of Text3 comes from the person
    double SpeedBarScale = 1.0;   ///< pixels per knot
    double GraphTimeScale = 0.0;  ///< pixels per second of the graphs and the time bar
    bool BoatControlsBuilt = false;
    int PassClockEntry = 0;  ///< course entry that shows a pass clock, 0 when none
    std::string PassClockText;
    bool SaveFailureTold = false;  ///< the person knows that the race could not be saved
    std::string PlainTitle;        ///< the window's title without the position under the pointer
};

/// The one shared state, made at the start and handed on by reference.
struct AppState {
    Settings settings;
    RaceControl race;
    Tracks tracks;
    TrackArea area;
    EarthScale scale;
    WindData wind;
    Coast coast;
    MarkPasses passes;
    View view;
    Clock clock;
    WindMoment windNow;
    Fleet fleet;
    DisplayState display;
};

/// The operating system and the person, as seen by the program.
struct Services {
    Platform& platform;
    Dialogs& dialogs;
};

}  // namespace keelview
