#include "instruments/time_bar_mouse.h"

#include <algorithm>
#include <string>
#include <utility>

#include "analysis/wind_at.h"
#include "base/dates.h"
#include "base/numbers.h"
#include "display/hint_box.h"
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

TimeBarMouse::TimeBarMouse(RaceSession& session, TimeBar& timeBar, Overview& overview)
    : app_(session.App()),
      form_(session.Display()),
      stage_(session.TheStage()),
      film_(session.TheFilm()),
      voice_(session.TheVoice()),
      timeBar_(timeBar),
      overview_(overview) {
    form_.PicTimeBar.OnMouseDown = [this](const MouseEvent& event) { PicTimeBar_MouseDown(event); };
    form_.PicTimeBar.OnMouseMove = [this](const MouseEvent& event) { PicTimeBar_MouseMove(event); };
    form_.PicTimeBar.OnMouseLeave = [this] { PicTimeBar_MouseLeave(); };
    form_.PicTimeBar.OnMouseUp = [this](const MouseEvent& event) { PicTimeBar_MouseUp(event); };
}

void TimeBarMouse::PicTimeBar_MouseDown(const MouseEvent& event) {
    const TimeAxis axis = timeBar_.Axis();
    if (axis.Empty()) return;
    if (!ShiftHeld(form_, event)) {
        stage_.Repaint(Changed::Layers);  // the wakes and lay lines of the moment before go
        film_.Seek(axis.TimeUnder(event.Y));
    } else {
        timeBar_.WipeRange();
        if (event.Button == MouseButton::Left)
            dragY_ = event.Y;
        else
            LiftRange();
    }
}

void TimeBarMouse::PicTimeBar_MouseMove(const MouseEvent& event) {
    const TimeAxis axis = timeBar_.Axis();
    if (axis.Empty()) return;
    if (form_.PanelRaised()) {
        form_.LowerBoatList();
        return;
    }
    const int time = axis.TimeUnder(event.Y);
    app_.shown.PointerOnTimeBar = true;
    overview_.PreviewMoment(time);
    if (dragY_ && (form_.HeldKey > 0 || event.Shift)) timeBar_.MarkRange(axis.TimeUnder(*dragY_), time);
    form_.Text7.SetBackColor(HintBackground);
    if (app_.shown.ViewMode == ViewKind::Graph)
        ShowGraphCursor(event.Y, time);
    else
        ShowTimeHint(event.Y, time);
}

/// Markers and graph go back from the moment under the pointer to that of the film.
void TimeBarMouse::PicTimeBar_MouseLeave() {
    app_.shown.PointerOnTimeBar = false;
    form_.Text7.Hide();
    stage_.Repaint(Changed::Nothing);
}

void TimeBarMouse::PicTimeBar_MouseUp(const MouseEvent& event) {
    const std::optional<double> fromY = std::exchange(dragY_, std::nullopt);
    // A drag whose Shift key went up before the button did is given up.
    if (timeBar_.Axis().Empty() || (form_.HeldKey == 0 && !event.Shift)) return;
    form_.HeldKey = 0;
    if (event.Button != MouseButton::Left)
        ReplayRange(app_.clock.ReplayRangeStart, app_.clock.ReplayRangeEnd);
    else if (fromY && event.Y != *fromY)
        LimitRange(*fromY, event.Y);
}

void TimeBarMouse::LiftRange() {
    stage_.Repaint(Changed::Layers);  // the tracks are drawn from end to end of the range
    film_.SetRange(LiftedRangeStart, ReplaySpan(app_.race));
}

void TimeBarMouse::LimitRange(double fromY, double toY) {
    // y grows as time falls, and a drag may go either way.
    const TimeAxis axis = timeBar_.Axis();
    const auto [start, end] = std::minmax({axis.TimeUnder(fromY), axis.TimeUnder(toY)});
    ReplayRange(start, end);
}

void TimeBarMouse::ReplayRange(double from, double to) {
    app_.shown.ShowTracks = true;
    stage_.Repaint(Changed::Layers);
    film_.SetRange(from, to);
}

void TimeBarMouse::ShowGraphCursor(double y, int time) {
    ShowWindOf(y, time);
    form_.Line1.Place(0, y, form_.MapSide(), y);
}

// Beside the graphs: the wind of the moment, where the wind file holds it.
void TimeBarMouse::ShowWindOf(double y, int time) {
    const int sample = FindWindSample(app_.wind, time);
    if (!HasWindFile(app_.race) || sample < 1 || sample >= app_.wind.Count()) return;
    std::string text;
    if (const auto& start = app_.race.Start.At()) text = TimeOfDayText(*start + time);
    // The direction counts on past north, so that a shift across it reads as one.
    const double direction = BetweenSamples(app_.wind, sample, time).WindDirection;
    text += "   " + NumberText(RoundDecimals(direction, 0)) + " /  " +
            NumberText(WindAt(app_.race, app_.wind, time).Speed);
    ShowHint(form_.Text7, text, {350, y - 7 + form_.GPIC.Top(), 120, 15});
}

void TimeBarMouse::ShowTimeHint(double y, int time) {
    const bool english = voice_.English();
    HintPlace place{.Width = 200, .Height = 17};
    if (form_.Check3.Value()) place = {.Width = english ? 260.0 : 220.0, .Height = english ? 81.0 : 100.0};
    place.Left = form_.PicTimeBar.Left() - place.Width - 5;
    place.Top = std::min(y, form_.MapSide() - place.Height - 10);
    ShowHint(form_.Text7, TimeHintText(time), place);
    form_.Picture1.Refresh();
}

std::string TimeBarMouse::TimeHintText(int time) const {
    std::string text;
    if (const auto& start = app_.race.Start.At()) text = DateTimeText(*start + time);
    text += "   (" + std::to_string(time) + " Sec)";
    if (form_.Check3.Value()) text += voice_.In(BarHint);
    return text;
}

}  // namespace keelview
