#include "instruments/wind_field.h"

#include "base/numbers.h"

namespace keelview {

namespace {

constexpr int PauseMilliseconds = 1000;

}  // namespace

WindField::WindField(const RaceControl& race, RaceDisp& form, RaceChanges& changes)
    : race_(race), form_(form), changes_(changes) {
    form_.Text3.OnTyped = [this] { Text3_Typed(); };
    form_.Text3.OnEntered = [this] { TakeTyped(); };
    form_.Timer4.OnTimer = [this] { TakeTyped(); };
}

void WindField::Repaint(Changed changed) {
    if (!Any(changed, Changed::Race)) return;
    form_.Timer4.SetEnabled(false);
    form_.Text3.SetText(NumberText(race_.WindDirection));
}

void WindField::Take(double direction) {
    form_.Text3.SetText(NumberText(direction));
    Text3_Typed();
    TakeTyped();
}

/// The pause begins anew with each letter.
void WindField::Text3_Typed() {
    form_.Timer4.SetEnabled(false);
    form_.Timer4.SetInterval(PauseMilliseconds);
    form_.Timer4.SetEnabled(true);
}

/// Once: a field that is left without having been typed in changes nothing.
void WindField::TakeTyped() {
    if (!form_.Timer4.Enabled()) return;
    form_.Timer4.SetEnabled(false);
    const double direction = LenientNumber(form_.Text3.Text());
    changes_.SetWindDirection(direction >= 0 && direction <= 360 ? direction : 0);
}

}  // namespace keelview
