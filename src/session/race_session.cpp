#include "session/race_session.h"

#include <algorithm>
#include <initializer_list>
#include <utility>

#include "analysis/track_details.h"
#include "base/bilingual.h"
#include "base/files.h"
#include "base/numbers.h"
#include "racedata/race_file.h"
#include "session/load_notes.h"
#include "session/period_notes.h"
#include "session/race_claim.h"
#include "session/start_gun.h"

namespace keelview {

namespace {

constexpr double ProgressBarWidth = 333.0;
constexpr int SecondMilliseconds = 1000;
constexpr int AutoTraceAfter = 2;  // seconds that the display is open

}  // namespace

RaceSession::RaceSession(AppState& app, Services& services)
    : app_(app),
      services_(services),
      voice_(app.settings, services.dialogs),
      form_(app.settings),
      stage_(app, form_),
      film_(app, form_, services.platform, stage_),
      coach_(app, form_, stage_),
      saver_(app, voice_),
      changes_(app, voice_, saver_, stage_) {
    stage_.Add(coach_);
    // Nothing of the race before stays in what is seen and replayed. Its waters stay: a single track takes
    // its time zone from there.
    app_.clock = {};
    app_.now = {};
    app_.shown = {};
    app_.race.TimeDiff.reset();
    if (HasAnyFix(app_.tracks)) app_.race.TimeDiff = TimeZoneOfLongitude(app_.view.ViewCentreLon);
    form_.HScroll1.SetRange(1, 19);
    form_.HScroll1.SetValue(5);
    form_.OnKeyDown = [this](int key) { form_.HeldKey = key; };
    form_.OnKeyUp = [this](int) { form_.HeldKey = 0; };
    form_.OnResize = [this] { Form_Resize(); };
    form_.OnUnload = [this] { Form_Unload(); };
    form_.Timer2.OnTimer = [this] { Timer2_Timer(); };
}

bool RaceSession::StartSession() {
    services_.platform.SetBusyPointer(true);
    const bool loaded = LoadRace();
    if (loaded) {
        film_.Open();
        app_.view.AutoTraceZoom = 1;
        openSeconds_ = 0;
        form_.Timer2.SetInterval(SecondMilliseconds);
        form_.Timer2.SetEnabled(true);
        PlayGun(app_.settings, services_.platform);
        form_.ShowNow();
    }
    services_.platform.SetBusyPointer(false);
    return loaded;
}

bool RaceSession::LoadRace() {
    film_.HoldFor(Film::Hold::Loading);
    stage_.SetDark(true);
    form_.Option9.SetValue(true);  // how far the load has come is told on the map
    services_.platform.SetBusyPointer(true);
    const bool sound = ReadRaceData();
    if (sound) {
        film_.SetRace();
        ComposeTitle(app_.race);
        ResetDisplay();
        ShowModeControls();
        ShowRaceTimes();
        LayOut();
        stage_.SetDark(false);
        stage_.Repaint(Changed::All);
        stage_.ShowMoment();
        film_.Release(Film::Hold::Loading);
    }
    services_.platform.SetBusyPointer(false);
    return sound;
}

/// Takes the race that the state names, once it is sound; else the one before it stays as it was.
bool RaceSession::ReadRaceData() {
    RaceNumbers next;
    next.race = app_.race;
    const LoadResult result = keelview::LoadRace(app_.settings.AppPath, next,
                                                 [&](int boat) { ShowLoadProgress(next.race, boat); });
    HideLoadProgress();
    if (TellOutcome(next, result)) return ReadRaceData();
    if (result.Outcome != LoadOutcome::Sound) return false;
    otherBoats_ = otherBoats_ || app_.race.Boats.Count() != next.race.Boats.Count();
    coach_.Forget();
    static_cast<RaceNumbers&>(app_) = std::move(next);
    app_.details = DetailsOf(app_.tracks, app_.scale.LonScale);
    app_.view.ScreenUpDirection = ScreenUp(app_.race);
    return true;
}

/// Why there is nothing to show, and what there is to know of the files, in one box. True if the person has
/// had the race put right, so that it can be read once more.
bool RaceSession::TellOutcome(const RaceNumbers& loaded, const LoadResult& result) {
    std::string said;
    const auto add = [&said](const std::string& part) {
        if (!part.empty()) said += (said.empty() ? "" : "\r\n\r\n") + part;
    };
    std::optional<PeriodTrouble> trouble;
    if (result.Outcome == LoadOutcome::NoFix)
        trouble = FindPeriodTrouble(app_.settings.AppPath, loaded.race);
    add(TroubleText(loaded.race.RaceFileName, result));
    if (trouble) add(PeriodNotes(*trouble, voice_.English()));
    add(LoadNotes(loaded, voice_.English()));
    if (result.Outcome == LoadOutcome::Sound)
        add(ClaimRace(app_.settings, services_.platform, loaded.race.RaceFileName));
    if (said.empty()) return false;
    services_.platform.SetBusyPointer(false);
    if (trouble && app_.settings.EditMode && !loaded.race.RaceFileName.empty())
        return OfferTrackTimes(said, *trouble, loaded.race);
    voice_.SayUnder({}, said);
    return false;
}

/// True if the race file has the times of its tracks now.
bool RaceSession::OfferTrackTimes(const std::string& said, const PeriodTrouble& trouble, RaceControl race) {
    TakeTrackPeriod(trouble.Tracks, race);
    const std::string question =
        said + "\r\n\r\n" +
        voice_.Str({"Write the tracks' times into the race?", "軌跡の日時をレースに書き込みますか？"}) +
        "\r\n" + race.Start.Typed() + "  -  " + race.Finish.Typed() + "\r\n" +
        voice_.Str({"(No: the editor, \"Edit GPS data\", can put it right.)",
                    "（いいえ: 編集画面 Edit GPS data で修正できます）"});
    if (!services_.dialogs.YesNo(question, {})) return false;
    const std::error_code error = SaveRaceFile(app_.settings.AppPath, race);
    if (error) saver_.TellFailure(race.RaceFileName, error);
    return !error;
}

/// Why there is nothing to show; empty where there is something.
std::string RaceSession::TroubleText(const std::string& name, const LoadResult& result) const {
    const std::string missing = result.Missing.string();
    switch (result.Outcome) {
        case LoadOutcome::Sound:
            break;
        case LoadOutcome::NoRaceFile:
            return voice_.English() ? "Race control file  (" + name + ") could not be read."
                                    : "レース管理ファイル (" + name + ") を読み込めません。";
        case LoadOutcome::NoTrackFile:
            return voice_.English() ? "No GPS file  (" + missing + ")  Check its name!"
                                    : "GPSファイルがありません。(" + missing + ")　ファイル名を正確に！！";
        case LoadOutcome::NoFix:
            return voice_.Str({"No boat of this race has a GPS position in its period.",
                               "このレースの期間内にGPS位置データを持つ艇がありません。"});
    }
    return {};
}

void RaceSession::ComposeTitle(const RaceControl& race) {
    std::string title = voice_.Str({" \"Keelview\" Race Browser", "キールビュー"});
    for (const std::string* part : {&race.RaceTitle1, &race.RaceTitle2, &race.RaceTitle3})
        if (!part->empty()) title += "   " + *part;
    title += "   (" + (race.RaceFileName.empty() ? race.SingleTrackFile : race.RaceFileName) + ")";
    form_.SetTitle(title);
}

void RaceSession::ResetDisplay() {
    form_.HScroll2.SetRange(10, 100);
    form_.HScroll2.SetValue(100);
    app_.shown = {};
    app_.view.MapFillFactor = 0.75;
    app_.view.ManualZoom = 1;
    app_.view.ZoomFactor = 1;
    app_.view.CentreOn({app_.area.HomeCentreLat, app_.area.HomeCentreLon});
    app_.view.GridOriginLat = app_.view.ViewCentreLat;
    app_.view.GridOriginLon = app_.view.ViewCentreLon;
    for (Control* control : std::initializer_list<Control*>{&form_.GPIC, &form_.Text7, &form_.Text8})
        control->Hide();
    form_.Line4.SetVisible(false);
    form_.Option11.SetEnabled(HasLegs(app_.race));
    form_.Command13.SetEnabled(!app_.race.AttachFile.Empty());
    // In auto trace the course cannot be set; its check box enables the button again.
    form_.Command5.SetEnabled(CourseCanBeSet(app_.race) && !form_.Check5.Value());
    (app_.race.NorthUp ? form_.Option2 : form_.Option3).SetValue(true);
    form_.Check4.SetEnabled(!app_.race.NorthUp);
}

void RaceSession::ShowModeControls() {
    const bool edit = app_.settings.EditMode;
    for (Button* button :
         {&form_.Command2, &form_.Command3, &form_.Command4, &form_.Command5, &form_.Command19})
        button->SetVisible(edit);
    form_.Text9.SetEnabled(edit);
    form_.Text10.SetEnabled(edit);
    form_.Combo1.SetVisible(!edit);
    form_.Command9.SetVisible(!edit);
    form_.Label6.SetVisible(!edit);
    if (edit) return;
    form_.Combo1.Clear();
    for (const std::string& name : ListFiles(FindBelow(app_.settings.AppPath, "raceadmin"), "*.txt"))
        form_.Combo1.AddItem(name);
    form_.Combo1.SetText(app_.race.RaceFileName);
}

void RaceSession::ShowRaceTimes() {
    form_.Text9.SetText(app_.race.Start.Text());
    form_.Text10.SetText(app_.race.Finish.Text());
}

void RaceSession::LayOut() {
    form_.LoadBoats(app_.race.Boats.Count());
    form_.LayoutPanels(app_.settings, app_.race.Boats.Count());
    form_.PicTimeBar.Show();
    app_.view.MapSide = form_.MapSide();
    // The boats keep their ticks when their race is loaded anew, unless its file names other boats by now.
    if (std::exchange(otherBoats_, false)) stage_.Repaint(Changed::Boats);
}

void RaceSession::ReloadRace() {
    if (LoadRace())
        form_.Picture12.SetVisible(form_.Check5.Value());
    else
        form_.Close();
}

void RaceSession::OpenOtherRace(const std::string& raceFileName) {
    const RaceControl shown = app_.race;
    app_.race.RaceFileName = raceFileName;
    app_.race.SingleTrackFile.clear();
    otherBoats_ = true;
    if (LoadRace()) {
        saver_.Forget();
        form_.Picture12.SetVisible(form_.Check5.Value());
        return;
    }
    app_.race = shown;
    ComposeTitle(shown);
    otherBoats_ = false;
    stage_.SetDark(false);
    stage_.Repaint(Changed::All);
    film_.Release(Film::Hold::Loading);
}

void RaceSession::GoTo(int boat, double time) {
    form_.Option9.SetValue(true);
    const Track& track = app_.tracks.Boats[boat];
    if (const int segment = FindSegment(track, time); segment > 0) {
        app_.view.CentreOn(PositionOn(track, segment, time));
        stage_.Repaint(Changed::View);
    }
    film_.Seek(time);
}

void RaceSession::TakeTimes(const std::string& start, const std::string& finish,
                            const std::string& saveAs) {
    const RaceControl before = app_.race;
    // A time that stands as the tracks told it is not typed by that.
    if (start != before.Start.Text()) app_.race.Start = RaceTime(start);
    if (finish != before.Finish.Text()) app_.race.Finish = RaceTime(finish);
    app_.race.DataFromTime = app_.race.Start.At();
    app_.race.DataToTime = app_.race.Finish.At();
    const bool saved = !saveAs.empty() && saver_.SaveAs(saveAs);
    if (!saved && (!saveAs.empty() || saver_.FailureTold()))
        app_.race = before;
    else
        ReloadRace();
}

/// Some two seconds after the display opened the view begins to follow the boats, and the map takes the
/// mouse.
void RaceSession::Timer2_Timer() {
    if (++openSeconds_ < AutoTraceAfter) return;
    form_.Timer2.SetEnabled(false);
    form_.Check5.SetEnabled(true);
    form_.Check5.SetValue(true);
    form_.Picture1.SetEnabled(true);
}

void RaceSession::Form_Resize() {
    // The window manager leaves less room than the screen has: everything finds its place again.
    form_.LayoutPanels(app_.settings, app_.race.Boats.Count());
    form_.PicTimeBar.Show();
    form_.Picture12.SetVisible(form_.Check5.Value());
    app_.view.MapSide = form_.MapSide();
    stage_.Repaint(Changed::Size | Changed::View);
}

void RaceSession::Form_Unload() {
    film_.Close();
    form_.Timer2.SetEnabled(false);
    services_.platform.ClaimFile({});
    if (OnClosed) OnClosed();
}

void RaceSession::ShowLoadProgress(const RaceControl& race, int boat) {
    ComposeTitle(race);  // it is known before the tracks are
    const std::string& file = race.Boats[boat].BoatFile;
    const std::string of = std::to_string(boat) + " / " + std::to_string(race.Boats.Count());
    const std::string text = race.RaceFileName + "    ( " + of + ")\r\n" +
                             (voice_.English() ? "Loading GPS data     ( " + file + ")"
                                               : "GPSﾃﾞｰﾀ　（　" + file + "）　を読み込み中");
    const double share = static_cast<double>(boat) / race.Boats.Count();
    if (OnProgress && OnProgress(text, share)) return;
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
    if (OnProgress) OnProgress({}, 0);
    form_.Text12.Hide();
    form_.Picture3.Hide();
}

}  // namespace keelview
