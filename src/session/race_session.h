#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "map/chart.h"
#include "map/instruments.h"
#include "map/replay_frame.h"
#include "session/app_state.h"
#include "session/race_disp.h"
#include "session/replay_clock.h"
#include "shell/splash.h"

namespace keelview {

/// The race display with everything that works on it, from its load to its closing. A race is opened by
/// setting RaceFileName or SingleTrackFile and calling StartSession.
class RaceSession {
  public:
    /// `splash` shows the progress of the load while it is visible; it is closed when the display stands.
    RaceSession(AppState& app, Services& services, Splash& splash);

    /// Loads the race, fires the gun, starts the film and shows the display. False if the race has nothing
    /// to show: the person has been told, and the display stays closed.
    bool StartSession();

    /// Reads all data of the race, derives what is derived, lays the panels out and draws the first
    /// picture. False as above.
    bool LoadRace();

    /// Loads the open race anew on the same display, which is closed if there is nothing to show.
    void ReloadRace();

    /// Closes the race that is shown and opens another one on the same display.
    void OpenOtherRace(const std::string& raceFileName);

    RaceDisp& Display() { return form_; }
    Chart& TheChart() { return chart_; }
    Instruments& TheInstruments() { return instruments_; }
    ReplayFrame& TheFrame() { return frame_; }

    /// Told at the end of each LoadRace, when the controls of all boats stand.
    std::function<void()> OnRaceLoaded;
    /// Told when the display is closed. The session may be let go of as soon as no event of it runs.
    std::function<void()> OnClosed;

  private:
    bool ReadRaceData();
    bool ReadControlFile();
    void ReadSingleTrack();
    bool ReadTracks();
    void ComposeTitle();
    void ResetDisplay();
    void ShowModeControls();
    void ShowRaceTimes();
    void LayOut();
    void ShowOrientation();
    void DrawFirstPicture();
    void FindFinishes();
    void ShowLoadProgress(int boat);
    void HideLoadProgress();
    void Tell(std::string_view english, std::string_view japanese);
    void Form_Resize();
    void Form_Unload();
    std::vector<std::string> RaceFiles() const;

    AppState& app_;
    Services& services_;
    Splash& splash_;
    RaceDisp form_;
    Chart chart_;
    Instruments instruments_;
    ReplayFrame frame_;
    ReplayClock clock_;
};

}  // namespace keelview
