#include "session/replay_clock.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include "base/bilingual.h"
#include "base/dates.h"
#include "base/numbers.h"
#include "map/auto_trace.h"

namespace keelview {

namespace {

constexpr int TickMilliseconds = 30;
constexpr int SecondMilliseconds = 1000;
constexpr double SkipSeconds = 5.0;    // a jump over water without boats
constexpr int PatienceSeconds = 10;    // without a boat before the view pulls itself back
constexpr int PassClockSeconds = 300;  // how long a rounding is counted up

}  // namespace

void ResumeFilm(const AppState& app, RaceDisp& form) {
    if (!form.Option7.Value() && app.display.ViewMode != ViewKind::Data) form.Timer1.SetEnabled(true);
}

ReplayClock::ReplayClock(AppState& app, RaceDisp& form, Services& services, Chart& chart,
                         ReplayFrame& frame)
    : app_(app), form_(form), services_(services), chart_(chart), frame_(frame) {
    form_.Timer1.OnTimer = [this] { ReplayTick(); };
    form_.Timer2.OnTimer = [this] { Timer2_Timer(); };
    form_.Timer3.OnTimer = [this] { Timer3_Timer(); };
    form_.HScroll1.OnChange = [this] { HScroll1_Change(); };
    form_.Option6.OnClick = [this] { Play(1); };
    form_.Option7.OnClick = [this] { Option7_Click(); };
    form_.Option8.OnClick = [this] { Play(-1); };
    form_.Command6.OnClick = [this] { Step(1); };
    form_.Command7.OnClick = [this] { Step(-1); };
}

void ReplayClock::Start() {
    app_.clock.ReplayTime = -app_.race.PreStartSeconds - 20;
    app_.clock.ReplayStep = 0.5;
    app_.clock.ReplayDirection = 1;
    app_.view.AutoTraceZoom = 1;
    deferredAutoTrace_ = true;
    openSeconds_ = 0;
    form_.Timer1.SetInterval(TickMilliseconds);
    form_.Timer2.SetInterval(SecondMilliseconds);
    form_.Timer3.SetInterval(SecondMilliseconds);
    form_.Timer1.SetEnabled(true);
    form_.Timer2.SetEnabled(true);
    form_.Timer3.SetEnabled(true);
}

void ReplayClock::ReplayTick() {
    if (std::exchange(inTick_, true)) return;  // an earlier tick still waits in its event delivery
    services_.platform.DeliverEvents();
    if (!form_.Closed()) {
        app_.fleet.BoatInView = false;
        app_.clock.ReplayTime += app_.clock.ReplayStep;
        if (form_.Check5.Value()) {
            AutoTrace(app_, form_, chart_);
            frame_.DrawFrame();
        } else if (!form_.Option7.Value()) {
            frame_.DrawFrame();
            SkipToBoats();
        }
        ++tickCount_;
    }
    inTick_ = false;
}

void ReplayClock::SkipToBoats() {
    if (app_.display.ViewMode != ViewKind::Map) return;
    const double jump = app_.clock.ReplayStep > 0 ? SkipSeconds : -SkipSeconds;
    // What the person does meanwhile may stop the film, and its timer with it.
    while (!app_.fleet.BoatInView && !form_.Option7.Value() && form_.Timer1.Enabled() && !form_.Closed()) {
        services_.platform.DeliverEvents();
        app_.clock.ReplayTime += jump;
        frame_.DrawFrame();
    }
}

void ReplayClock::Timer2_Timer() {
    if (!deferredAutoTrace_ || ++openSeconds_ < 2) return;
    deferredAutoTrace_ = false;
    form_.Check5.SetEnabled(true);
    form_.Check5.SetValue(true);
    form_.Picture1.SetEnabled(true);
    form_.Timer2.SetEnabled(false);
}

void ReplayClock::Timer3_Timer() {
    if (!form_.Option7.Value()) {
        CalibrateStep();
        ShowScaleNote();
        WatchForBoats();
    }
    UpdatePassClock();
}

void ReplayClock::CalibrateStep() {
    // A second that took much longer, as after a sleep of the machine, says nothing about the ticks. The
    // timer's own jitter does not count as that.
    constexpr double Shortest = 0.95;
    constexpr double Longest = 1.05;
    const double now = services_.platform.SteadySeconds();
    const double elapsed = now - std::exchange(tickClock_, now);
    app_.clock.ReplayDirection = app_.clock.ReplayStep < 0 ? -1 : 1;
    ticksPerSecond_ = tickCount_;
    if (tickCount_ > 2 && elapsed > Shortest && elapsed <= Longest) SetStepFromSpeed();
    tickCount_ = 0;
}

void ReplayClock::SetStepFromSpeed() {
    const double thousandths = std::floor(app_.clock.SpeedMultiplier * 1000 / ticksPerSecond_);
    app_.clock.ReplayStep = thousandths / 1000 * app_.clock.ReplayDirection;
}

void ReplayClock::ShowScaleNote() {
    const bool real = app_.fleet.BoatRealSize;
    const Text note = real ? Text{"Real Size", "実サイズ"} : Text{"Enlarged", "変形サイズ"};
    form_.Text15.SetForeColor(real ? app_.display.InkColour : Red);
    form_.Text15.SetText(note.In(app_.settings.UseEnglish));
}

void ReplayClock::WatchForBoats() {
    noBoatSeconds_ = app_.fleet.BoatInView ? 0 : noBoatSeconds_ + 1;
    if (noBoatSeconds_ > PatienceSeconds) AutoTrace(app_, form_, chart_);
}

void ReplayClock::UpdatePassClock() {
    app_.display.PassClockEntry = 0;
    app_.display.PassClockText.clear();
    for (int entry = app_.race.CourseCount; entry >= 2; --entry) {
        const int first = app_.passes.FirstPassTime[static_cast<std::size_t>(entry)];
        const double since = app_.clock.ReplayTime - first;
        if (since < 0 || since > PassClockSeconds) continue;
        app_.display.PassClockEntry = entry;
        app_.display.PassClockText = ShortDurationText(FloorToInt(since));
        return;
    }
}

void ReplayClock::HScroll1_Change() {
    const int value = form_.HScroll1.Value();
    app_.clock.SpeedMultiplier = value <= 10 ? value : 10 + (value - 10) * 10;
    app_.clock.ReplayDirection = app_.clock.ReplayStep < 0 ? -1 : 1;
    if (ticksPerSecond_ != 0) SetStepFromSpeed();
    form_.Text2.SetText(NumberText(app_.clock.SpeedMultiplier) +
                        Text{" x spd", "倍速"}.Str(app_.settings.UseEnglish));
}

void ReplayClock::Play(int direction) {
    form_.Timer1.SetEnabled(true);
    app_.clock.ReplayStep = std::abs(app_.clock.ReplayStep) * direction;
    // Range and bearing are for a map that stands still; the tick of Check2 stays.
    if (std::exchange(app_.display.MeasureMode, false)) form_.Line4.SetVisible(false);
    form_.PlaceSignals();
}

void ReplayClock::Option7_Click() {
    form_.Timer1.SetEnabled(false);
    const bool onMap = app_.display.ViewMode == ViewKind::Map;
    form_.Check2.SetEnabled(onMap);
    if (!onMap) form_.Check2.SetValue(false);
    form_.PlaceSignals();
}

void ReplayClock::Step(int direction) {
    form_.Option7.SetValue(true);
    const double width = std::max(1.0, std::abs(app_.clock.ReplayStep));
    app_.clock.ReplayStep = std::abs(app_.clock.ReplayStep) * direction;
    app_.clock.ReplayTime += width * direction;
    if (form_.Check5.Value()) AutoTrace(app_, form_, chart_);
    frame_.DrawFrame();
}

}  // namespace keelview
