#include "session/race_session.h"

#include <algorithm>
#include <cmath>

#include "analysis/race_numbers.h"
#include "analysis/track_derivation.h"
#include "base/bilingual.h"
#include "base/dates.h"
#include "base/files.h"
#include "base/numbers.h"
#include "map/boat_sprite.h"
#include "map/sea_colours.h"
#include "racedata/race_file.h"
#include "session/save_race.h"

namespace keelview {

namespace {

constexpr double LeadSeconds = 20.0;  // before the pre-start, where the film begins
constexpr double RangeLead = 30.0;    // before the pre-start, where the replay range begins
constexpr double ProgressBarWidth = 333.0;

/// Nothing of the race before stays in what is worked out, seen and replayed. The view's centre stays: a
/// single track takes its time zone from there.
void ForgetLastRace(AppState& app) {
    app.tracks = {};
    app.wind = {};
    app.coast = {};
    app.passes = {};
    app.clock = {};
    app.windNow = {};
    app.fleet = {};
    app.display = {};
}

}  // namespace

RaceSession::RaceSession(AppState& app, Services& services, Splash& splash)
    : app_(app),
      services_(services),
      splash_(splash),
      form_(app.settings),
      chart_(app, form_, services),
      instruments_(app, form_),
      frame_(app, form_, services, chart_, instruments_),
      clock_(app, form_, services, chart_, frame_) {
    ForgetLastRace(app_);
    form_.HScroll1.SetRange(1, 19);
    form_.HScroll1.SetValue(5);
    app_.race.WindDirection = 0;
    app_.race.TimeDiff = FloorToInt(app_.view.ViewCentreLon / 15 / 60 + 0.5);
    form_.OnKeyDown = [this](int key) { app_.display.HeldKey = key; };
    form_.OnKeyUp = [this](int) { app_.display.HeldKey = 0; };
    form_.OnResize = [this] { Form_Resize(); };
    form_.OnUnload = [this] { Form_Unload(); };
}

bool RaceSession::StartSession() {
    services_.platform.SetBusyPointer(true);
    app_.fleet.BoatInView = true;
    splash_.Refresh();
    const bool loaded = LoadRace();
    if (loaded) {
        clock_.Start();
        PlayGun(app_, services_);
        form_.ShowNow();
    }
    services_.platform.SetBusyPointer(false);
    splash_.Close();
    return loaded;
}

bool RaceSession::LoadRace() {
    form_.Timer1.SetEnabled(false);
    // The other timers must not look at a race that is half read, nor at one that cannot be shown.
    const bool opening = form_.Timer2.Enabled();
    const bool watching = form_.Timer3.Enabled();
    form_.Timer2.SetEnabled(false);
    form_.Timer3.SetEnabled(false);
    services_.platform.SetBusyPointer(true);
    ResetSeaColours(app_, form_);
    const bool sound = ReadRaceData();
    if (sound) {
        ComposeTitle();
        ResetDisplay();
        ShowModeControls();
        ShowRaceTimes();
        LayOut();
        DrawFirstPicture();
        FindFinishes();
        instruments_.windPanel.UpdateWindPanel();
        instruments_.windPanel.ShowForRace();
        frame_.ResetFinishList();
        if (OnRaceLoaded) OnRaceLoaded();
        form_.Timer2.SetEnabled(opening);
        form_.Timer3.SetEnabled(watching);
    }
    services_.platform.SetBusyPointer(false);
    return sound;
}

bool RaceSession::ReadRaceData() {
    app_.display.WindTextArmed = false;
    if (!app_.race.RaceFileName.empty()) {
        if (!ReadControlFile()) return false;
    } else {
        ReadSingleTrack();
    }
    SettleTimeDiff(app_.race);
    if (!ReadTracks()) return false;
    LoadRaceWind(app_.settings.AppPath, app_.race, app_.wind);
    DeriveTracks(app_.race, app_.scale, app_.tracks);
    app_.display.SpeedBarScale = SpeedBarScale(app_.tracks.TypicalSpeed);
    return true;
}

void RaceSession::Tell(std::string_view english, std::string_view japanese) {
    services_.platform.SetBusyPointer(false);
    services_.dialogs.Ok(Text{english, japanese}.In(app_.settings.UseEnglish), {});
}

bool RaceSession::ReadControlFile() {
    const RaceFileReport report = ReadRaceFile(app_.settings.AppPath, app_.race);
    if (!report.Opened) {
        const std::string& name = app_.race.RaceFileName;
        Tell("Race control file  (" + name + ") could not be read.",
             "レース管理ファイル (" + name + ") を読み込めません。");
        return false;
    }
    app_.windNow.WindNow = app_.race.WindDirection;
    app_.view.ScreenUpDirection = app_.race.NorthUp ? 0 : app_.race.WindDirection;
    if (!report.MissingTracks.empty()) {
        const std::string& name = report.MissingTracks.front();
        Tell("GPSfile -- " + name + " -- could not be found\r\nThis boat will be ignored",
             "GPSfile -- " + name + " -- はありませんでした。\r\nこの艇を無視して表示します。");
    }
    return true;
}

void RaceSession::ReadSingleTrack() {
    // Nothing of the race before may stay but what the display keeps: its variation and boat length.
    RaceControl single;
    single.SingleTrackFile = app_.race.SingleTrackFile;
    single.MagVariation = app_.race.MagVariation;
    single.BoatLength = app_.race.BoatLength;
    single.TimeDiff = app_.race.TimeDiff;
    single.StartTimeText = app_.race.SingleTrackFile.empty() ? "" : app_.race.StartTimeText;
    single.FinishTimeText = app_.race.SingleTrackFile.empty() ? "" : app_.race.FinishTimeText;
    single.DataFromTime = app_.race.DataFromTime;
    single.DataToTime = app_.race.DataToTime;
    single.BoatCount = single.SingleTrackFile.empty() ? 0 : 1;
    single.BoatFile[1] = single.SingleTrackFile;
    single.BoatName[1] = single.SingleTrackFile.substr(0, single.SingleTrackFile.find('.'));
    app_.race = std::move(single);
    app_.view.ScreenUpDirection = 0;
}

bool RaceSession::ReadTracks() {
    const auto missing = LoadAllTracks(app_.settings.AppPath, app_.race, app_.tracks, app_.area, app_.scale,
                                       [this](int boat) { ShowLoadProgress(boat); });
    HideLoadProgress();
    if (!missing.empty()) {
        Tell("No GPS file  (" + missing.string() + ")　be sure！",
             "GPSファイルがありません。(" + missing.string() + ")　ファイル名を正確に！！");
        return false;
    }
    if (!HasAnyFix(app_.race, app_.tracks)) {
        Tell("No boat of this race has a GPS position in its period.",
             "このレースの期間内にGPS位置データを持つ艇がありません。");
        return false;
    }
    app_.view.ViewCentreLat = app_.area.HomeCentreLat;
    app_.view.ViewCentreLon = app_.area.HomeCentreLon;
    const auto start = ParseDateTime(app_.race.StartTimeText);
    const auto finish = ParseDateTime(app_.race.FinishTimeText);
    if (app_.race.RaceFileName.empty() && start && finish) {
        app_.race.RaceDuration = static_cast<int>(std::clamp<CivilTime>(*finish - *start, 0, 10'000'000));
        app_.race.DataFromTime = start;
        app_.race.DataToTime = finish;
    }
    SettleReplaySpan(app_.race);
    app_.clock.ReplayRangeStart = -app_.race.PreStartSeconds - RangeLead;
    app_.clock.ReplayRangeEnd = app_.race.RaceDuration;
    return true;
}

void RaceSession::ComposeTitle() {
    std::string title = app_.settings.UseEnglish ? " \"Keelview\" Race Browser" : "キールビュー";
    for (const std::string* part : {&app_.race.RaceTitle1, &app_.race.RaceTitle2, &app_.race.RaceTitle3})
        if (!part->empty()) title += "   " + *part;
    const bool single = app_.race.RaceFileName.empty();
    title += "   (" + (single ? app_.race.SingleTrackFile : app_.race.RaceFileName) + ")";
    app_.display.PlainTitle = title;
    form_.SetCaption(title);
}

void RaceSession::ResetDisplay() {
    app_.clock.ReplayTime = -app_.race.PreStartSeconds - LeadSeconds;
    frame_.ResetCursors(true);
    form_.HScroll2.SetRange(10, 100);
    form_.HScroll2.SetValue(100);
    app_.passes.StatsReady = false;
    app_.display.ViewMode = ViewKind::Map;
    app_.view.MapFillFactor = 0.75;
    app_.view.ManualZoom = 1;
    app_.view.ZoomFactor = 1;
    app_.display.ShowTracks = true;
    for (Control* control :
         std::initializer_list<Control*>{&form_.PicTimeBar, &form_.GPIC, &form_.Text7, &form_.Text8})
        control->Hide();
    form_.Line4.SetVisible(false);
    form_.Option9.SetValue(true);
    form_.Option11.SetEnabled(HasLegs(app_.race));
    form_.Command13.SetEnabled(app_.race.AttachCount > 0);
    // In auto trace the course cannot be set; its check box enables the button again.
    form_.Command5.SetEnabled(CourseCanBeSet(app_.race) && !form_.Check5.Value());
}

std::vector<std::string> RaceSession::RaceFiles() const {
    return ListFiles(FindBelow(app_.settings.AppPath, "raceadmin"), "*.txt");
}

void RaceSession::ShowModeControls() {
    const bool edit = app_.settings.EditMode;
    for (Button* button : {&form_.Command2, &form_.Command3, &form_.Command4, &form_.Command5})
        button->SetVisible(edit);
    form_.Text9.SetEnabled(edit);
    form_.Text10.SetEnabled(edit);
    form_.Combo1.SetVisible(!edit);
    form_.Command9.SetVisible(!edit);
    form_.Label6.SetVisible(!edit);
    if (edit) return;
    form_.Combo1.Clear();
    for (const std::string& name : RaceFiles()) form_.Combo1.AddItem(name);
    form_.Combo1.SetText(app_.race.RaceFileName);
}

void RaceSession::ShowRaceTimes() {
    form_.Text9.SetText(app_.race.StartTimeText);
    form_.Text10.SetText(app_.race.FinishTimeText);
    form_.Text3.SetText(NumberText(app_.race.WindDirection));
    form_.Text2.SetText(NumberText(app_.clock.SpeedMultiplier) +
                        Text{" x spd", "倍速"}.Str(app_.settings.UseEnglish));
}

void RaceSession::LayOut() {
    Chart::SetBoatPalette(app_.display);
    form_.LayoutPanels(app_.settings, app_.race.BoatCount);
    form_.Picture8.Cls();
    app_.view.MapSide = form_.MapSide();
    app_.view.MapWidth = form_.MapSide();
    app_.view.MapHeight = form_.MapSide();
    // The boats keep their ticks when their race is loaded anew, unless its file names other boats by now.
    if (form_.Bnam.Count() != std::max(1, app_.race.BoatCount)) RemoveBoatControls(app_, form_);
    if (!app_.display.BoatControlsBuilt) CreateBoatControls(app_, form_);
    app_.fleet = {};
    frame_.ResetCursors(true);
}

void RaceSession::DrawFirstPicture() {
    app_.view.ZoomFactor = app_.view.ManualZoom;
    app_.view.GridOriginLat = app_.view.ViewCentreLat;
    app_.view.GridOriginLon = app_.view.ViewCentreLon;
    chart_.DrawBaseChart();
    chart_.DrawCourse();
    instruments_.overview.DrawOverviewMap();
    instruments_.timeBar.DrawTimeBar();
    form_.PicTimeBar.Show();
    ShowOrientation();
}

void RaceSession::ShowOrientation() {
    (app_.race.NorthUp ? form_.Option2 : form_.Option3).SetValue(true);
    form_.Check4.SetEnabled(!app_.race.NorthUp);
}

void RaceSession::FindFinishes() {
    app_.clock.LastFixTime = LatestFixTime(app_.race, app_.tracks);
    app_.passes = {};
    if (app_.race.CourseCount > 0) FindMarkPassTimes(app_.race, app_.tracks, app_.scale, app_.passes);
}

void RaceSession::ReloadRace() {
    if (LoadRace())
        form_.Picture12.SetVisible(form_.Check5.Value());
    else
        form_.Close();
}

void RaceSession::OpenOtherRace(const std::string& raceFileName) {
    RemoveBoatControls(app_, form_);
    app_.race.RaceFileName = raceFileName;
    app_.race.SingleTrackFile.clear();
    app_.coast = {};
    ReloadRace();
}

void RaceSession::Form_Resize() {
    // The window manager leaves less room than the screen has: everything finds its place again.
    form_.LayoutPanels(app_.settings, app_.race.BoatCount);
    app_.view.MapSide = form_.MapSide();
    app_.display.BoatControlsBuilt = false;
    CreateBoatControls(app_, form_);
    form_.PicTimeBar.Show();
    form_.Picture12.SetVisible(form_.Check5.Value());
    chart_.DrawBaseChart();
    chart_.DrawCourse();
    instruments_.overview.DrawOverviewMap();
    instruments_.timeBar.DrawTimeBar();
    instruments_.windPanel.ShowForRace();
    instruments_.windPanel.UpdateWindPanel();
    if (OnRaceLoaded) OnRaceLoaded();
}

void RaceSession::Form_Unload() {
    for (Timer* timer : {&form_.Timer1, &form_.Timer2, &form_.Timer3}) timer->SetEnabled(false);
    if (OnClosed) OnClosed();
}

void RaceSession::ShowLoadProgress(int boat) {
    const auto number = static_cast<std::size_t>(boat);
    const std::string& file = app_.race.BoatFile[number];
    const std::string text = app_.race.RaceFileName + "    ( " + std::to_string(boat) + " / " +
                             std::to_string(app_.race.BoatCount) + ")\r\n" +
                             (app_.settings.UseEnglish ? "Loading GPS data     ( " + file + ")"
                                                       : "GPSﾃﾞｰﾀ　（　" + file + "）　を読み込み中");
    const double share = static_cast<double>(boat) / std::max(1, app_.race.BoatCount);
    if (splash_.Visible()) {
        splash_.ShowProgress(text, share);
        return;
    }
    const double middle = form_.Picture1.Width() / 2;
    const double top = form_.Picture1.Height() / 2 - 16;
    form_.Text12.Move(middle - ProgressBarWidth / 2, top, ProgressBarWidth, 32);
    form_.Text12.SetText(text);
    form_.Text12.Show();
    form_.Picture3.Move(form_.Picture1.Left() + middle - ProgressBarWidth / 2,
                        form_.Picture1.Top() + top + 50, ProgressBarWidth, 15);
    form_.Picture3.Cls();
    form_.Picture3.FilledBox(0, 0, ProgressBarWidth * share, 15, Blue);
    form_.Picture3.Raise();
    form_.Picture3.Show();
    form_.Refresh();
}

void RaceSession::HideLoadProgress() {
    splash_.HideProgress();
    form_.Text12.Hide();
    form_.Picture3.Hide();
}

}  // namespace keelview
