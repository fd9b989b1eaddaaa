#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "analysis/period_trouble.h"
#include "session/app_state.h"
#include "session/coach.h"
#include "session/film.h"
#include "session/race_changes.h"
#include "session/race_disp.h"
#include "session/save_race.h"
#include "session/stage.h"
#include "session/voice.h"

namespace keelview {

/// The race that is open, from its load to the closing of its display: the form, the film, and the doors
/// for what a person changes. It knows no picture but as an Instrument of its stage. A race is opened by
/// setting RaceFileName or SingleTrackFile and calling StartSession.
class RaceSession {
  public:
    RaceSession(AppState& app, Services& services);

    /// Loads the race, fires the gun, starts the film and shows the display. False if the race has nothing
    /// to show: the person has been told, and the display stays closed.
    bool StartSession();

    /// Loads the race anew, lays the panels out and draws the first picture. False as above.
    bool LoadRace();

    /// Loads the open race anew on the same display, which is closed if there is nothing to show.
    void ReloadRace();

    /// Opens another race on the same display. One that has nothing to show leaves that which is shown, and
    /// the person has been told.
    void OpenOtherRace(const std::string& raceFileName);

    /// The film and the map go to where a boat was at a moment (seconds from the start), and the map is
    /// shown.
    void GoTo(int boat, double time);

    /// Takes start and finish, saves the race under a name unless that is empty, and loads it anew. A race
    /// that could not be written keeps its times: a load would lose what stands in memory alone.
    void TakeTimes(const std::string& start, const std::string& finish, const std::string& saveAs);

    AppState& App() { return app_; }
    Services& TheServices() { return services_; }
    const Voice& TheVoice() const { return voice_; }
    RaceDisp& Display() { return form_; }
    Stage& TheStage() { return stage_; }
    Film& TheFilm() { return film_; }
    Coach& TheCoach() { return coach_; }
    RaceSaver& Saver() { return saver_; }
    RaceChanges& Changes() { return changes_; }

    /// Told while a race is read, with a text of two lines and how far the load has come, 0 to 1. True if
    /// it is shown; else the display shows it. An empty text ends it.
    std::function<bool(std::string_view text, double share)> OnProgress;
    /// Told when the display is closed. The session may be let go of as soon as no event of it runs.
    std::function<void()> OnClosed;

  private:
    bool ReadRaceData();
    bool TellOutcome(const RaceNumbers& loaded, const LoadResult& result);
    bool OfferTrackTimes(const std::string& said, const PeriodTrouble& trouble, RaceControl race);
    std::string TroubleText(const std::string& name, const LoadResult& result) const;
    void ComposeTitle(const RaceControl& race);
    void ResetDisplay();
    void ShowModeControls();
    void ShowRaceTimes();
    void LayOut();
    void ShowLoadProgress(const RaceControl& race, int boat);
    void HideLoadProgress();
    void Timer2_Timer();
    void Form_Resize();
    void Form_Unload();

    AppState& app_;
    Services& services_;
    Voice voice_;
    RaceDisp form_;
    Stage stage_;
    Film film_;
    Coach coach_;
    RaceSaver saver_;
    RaceChanges changes_;
    bool otherBoats_ = true;  ///< the next load is of another race
    int openSeconds_ = 0;     ///< since the display opened
};

}  // namespace keelview
