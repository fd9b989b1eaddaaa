#include "map/start_signals.h"

#include <cstdlib>
#include <string>
#include <utility>

#include "base/dates.h"
#include "base/numbers.h"
#include "session/start_gun.h"

namespace keelview {

namespace {

constexpr double FallsIn = 30.0;     // frames, from top to bottom of the map
constexpr double LongestFall = 5.0;  // seconds

}  // namespace

StartSignals::StartSignals(const Settings& settings, Platform& platform, RaceDisp& form)
    : settings_(settings), platform_(platform), form_(form) {}

void StartSignals::Repaint(Changed changed) {
    if (Any(changed, Changed::Film)) form_.PlaceSignals();
}

void StartSignals::Show(const Moment& now) {
    ShowRaceClock(now.Time);
    ShowFlags(now);
    FireStartGun(now);
    lastTime_ = now.Time;
}

void StartSignals::ShowRaceClock(double time) {
    const int seconds = std::abs(FloorToInt(time));
    form_.Text11.SetForeColor(time >= 0 ? Blue : ReadableOn(HintBackground, Red));
    form_.Text11.SetText(DurationText(seconds));
    const bool nearStart = time >= -30 && time <= 10;
    if (nearStart) {
        form_.Text4.SetBackColor(time >= 1 ? Blue : ReadableOn(White, Red));
        form_.Text4.SetText(std::to_string(seconds));
    }
    form_.Text4.SetVisible(nearStart);
}

void StartSignals::ShowFlags(const Moment& now) {
    const double t = now.Time;
    const bool blueFalls = now.Forward && t >= -60 && t <= -55;
    const bool sevenFalls = now.Forward && t > 0.5 && t <= 5;
    form_.Blue_P.SetVisible((t >= -240 && t < -60) || blueFalls);
    form_.Seven.SetVisible((t >= -60 && t <= 0.5) || sevenFalls);
    Surface* falls = blueFalls ? &form_.Blue_P : sevenFalls ? &form_.Seven : nullptr;
    const bool jumped = t < lastTime_ || t > lastTime_ + LongestFall;
    if (std::exchange(falling_, falls) != falls || jumped) form_.PlaceSignals();
    // A moment that is shown once more lets nothing fall.
    if (falls != nullptr && t != lastTime_ && falls->Top() < form_.MapSide())
        falls->SetTop(falls->Top() + form_.MapSide() / FallsIn);
}

void StartSignals::FireStartGun(const Moment& now) {
    if (now.Time < 0) gunFired_ = false;
    if (now.Time < 0 || now.Time >= 2 || !now.Forward || gunFired_) return;
    PlayGun(settings_, platform_);
    gunFired_ = true;
}

}  // namespace keelview
