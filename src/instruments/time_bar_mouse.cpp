#include "instruments/time_bar_mouse.h"

#include <algorithm>
#include <string>
#include <utility>

#include "analysis/track_at.h"
#include "analysis/wind_at.h"
#include "base/angles.h"
#include "base/bilingual.h"
#include "base/dates.h"
#include "base/numbers.h"
#include "display/hint_box.h"
#include "instruments/time_axis.h"
#include "session/held_keys.h"

namespace keelview {

namespace {

/// Where the replay begins after the limit of its range was lifted, seconds from the start.
constexpr double LiftedRangeStart = -240.0;

constexpr Text BarHint{
    "\nClick to change the time."
    "\n(White zone =UpWind  Gray zone= DownWind )"
    "\n"
    "\nShift+ Drag & drop to focus play back period."
    "\nShift+Right click to cancel play back period.",
    "\nクリックで時間を瞬時に変更します"
    "\n(白はUpWind、灰色はDownWind )"
    "\n"
    "\nShiftを押しながらマウス左でドラッグ"
    "\n＆ドロップすると時間帯を限定できます"
    "\n"
    "\nShift+右クリックで時間帯を解除します"};

}  // namespace

TimeBarMouse::TimeBarMouse(AppState& app, RaceDisp& form, Chart& chart, ReplayFrame& frame,
                           Overview& overview, TimeBar& timeBar)
    : app_(app), form_(form), chart_(chart), frame_(frame), overview_(overview), timeBar_(timeBar) {
    form_.PicTimeBar.OnMouseDown = [this](const MouseEvent& event) { PicTimeBar_MouseDown(event); };
    form_.PicTimeBar.OnMouseMove = [this](const MouseEvent& event) { PicTimeBar_MouseMove(event); };
    form_.PicTimeBar.OnMouseUp = [this](const MouseEvent& event) { PicTimeBar_MouseUp(event); };
}

void TimeBarMouse::PicTimeBar_MouseDown(const MouseEvent& event) {
    if (app_.display.GraphTimeScale == 0) return;
    if (!ShiftHeld(app_.display, event)) {
        JumpTo(TimeUnder(event.Y));
    } else {
        timeBar_.WipeRange();
        if (event.Button == MouseButton::Left)
            dragY_ = event.Y;
        else
            LiftRange();
    }
    frame_.DrawFrame();
    form_.PlaceSignals();
}

void TimeBarMouse::PicTimeBar_MouseMove(const MouseEvent& event) {
    if (app_.display.GraphTimeScale == 0) return;
    if (form_.PanelRaised()) {
        form_.LowerBoatList();
        return;
    }
    const int time = TimeUnder(event.Y);
    app_.display.PointerOnTimeBar = true;
    PreviewMoment(time);
    if (dragY_ > 0 && (app_.display.HeldKey > 0 || event.Shift)) timeBar_.MarkRange(dragY_, event.Y);
    form_.Text7.SetBackColor(HintBackground);
    if (app_.display.ViewMode == ViewKind::Graph)
        ShowGraphCursor(event.Y, time);
    else
        ShowTimeHint(event.Y, time);
    app_.display.HoverBoat = -1;
}

void TimeBarMouse::PicTimeBar_MouseUp(const MouseEvent& event) {
    const double fromY = std::exchange(dragY_, 0.0);
    // A drag whose Shift key went up before the button did is given up.
    if (app_.display.GraphTimeScale == 0 || (app_.display.HeldKey == 0 && !event.Shift)) return;
    app_.display.HeldKey = 0;
    if (event.Button == MouseButton::Left) {
        if (fromY == 0 || event.Y == fromY) return;
        LimitRange(fromY, event.Y);
    }
    ReplayFromRangeStart();
}

int TimeBarMouse::TimeUnder(double y) const {
    return TimeUnderY(app_.race, app_.display.GraphTimeScale, y);
}

void TimeBarMouse::LiftRange() {
    app_.clock.ReplayRangeStart = LiftedRangeStart;
    app_.clock.ReplayRangeEnd = app_.race.ReplaySpan;
    chart_.DrawAll();
}

void TimeBarMouse::JumpTo(double time) {
    app_.clock.ReplayTime = time;
    const auto lastEntry = static_cast<std::size_t>(app_.race.CourseCount);
    if (time < app_.passes.FirstPassTime[lastEntry]) frame_.ResetFinishList();
    frame_.ResetCursors(app_.clock.ReplayStep > 0);
}

void TimeBarMouse::LimitRange(double fromY, double toY) {
    // y grows as time falls, and a drag may go either way.
    const auto [start, end] = std::minmax({TimeUnder(fromY), TimeUnder(toY)});
    app_.clock.ReplayRangeStart = start;
    app_.clock.ReplayRangeEnd = end;
}

void TimeBarMouse::ReplayFromRangeStart() {
    app_.display.ShowTracks = true;
    app_.clock.ReplayTime = app_.clock.ReplayRangeStart;
    chart_.DrawAll();
    frame_.ResetCursors(app_.clock.ReplayStep > 0);
}

void TimeBarMouse::PreviewMoment(int time) {
    for (int boat = 1; boat <= app_.race.BoatCount; ++boat) {
        const int point = FindSegment(app_.tracks, boat, time);
        const auto b = static_cast<std::size_t>(boat);
        const auto i = static_cast<std::size_t>(point);
        if (point > 0)
            overview_.PlaceMarkerAt(boat, app_.tracks.TrackLat[b][i], app_.tracks.TrackLon[b][i]);
        else
            overview_.HideMarker(boat);
    }
}

void TimeBarMouse::ShowGraphCursor(double y, int time) {
    ShowWindOf(y, time);
    form_.Line1.Place(0, y, form_.MapSide(), y);
}

// Beside the graphs: the wind of the moment, where the wind file holds it.
void TimeBarMouse::ShowWindOf(double y, int time) {
    const WindData& wind = app_.wind;
    const int k = FindWindSample(wind, time);
    if (app_.race.WindFileName.empty() || k < 1 || k >= wind.WindCount) return;
    const auto i = static_cast<std::size_t>(k);
    const double from = wind.WindTimes[i];
    const double f = (time - from) / (wind.WindTimes[i + 1] - from);
    const double turn = TurnBetween(wind.WindDirections[i], wind.WindDirections[i + 1]);
    app_.windNow.WindSpeedNow = WindAt(app_.race, wind, time).Speed;
    std::string text;
    if (const auto start = ParseDateTime(app_.race.StartTimeText)) text = TimeOfDayText(*start + time);
    // The direction counts on past north, so that a shift across it reads as one.
    text += "   " + NumberText(RoundDecimals(wind.WindDirections[i] + turn * f, 0)) + " /  " +
            NumberText(app_.windNow.WindSpeedNow);
    ShowHint(form_.Text7, text, {350, y - 7 + form_.GPIC.Top(), 120, 15});
}

void TimeBarMouse::ShowTimeHint(double y, int time) {
    const bool english = app_.settings.UseEnglish;
    HintPlace place{.Width = 200, .Height = 17};
    if (app_.display.HintsOn) place = {.Width = english ? 260.0 : 220.0, .Height = english ? 81.0 : 100.0};
    place.Left = form_.PicTimeBar.Left() - place.Width - 5;
    place.Top = std::min(y, form_.MapSide() - place.Height - 10);
    ShowHint(form_.Text7, TimeHintText(time), place);
    form_.Picture1.Refresh();
}

std::string TimeBarMouse::TimeHintText(int time) const {
    std::string text;
    if (const auto start = ParseDateTime(app_.race.StartTimeText)) text = DateTimeText(*start + time);
    text += "   (" + std::to_string(time) + " Sec)";
    if (app_.display.HintsOn) text += BarHint.In(app_.settings.UseEnglish);
    return text;
}

}  // namespace keelview
