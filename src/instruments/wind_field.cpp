#include "instruments/wind_field.h"

#include "base/numbers.h"

namespace keelview {

WindField::WindField(const RaceControl& race, RaceDisp& form, RaceChanges& changes)
    : race_(race), form_(form), changes_(changes) {
    form_.Text3.OnMouseDown = [this](const MouseEvent&) { windTextArmed_ = true; };
    form_.Text3.OnChange = [this] { Text3_Change(); };
}

void WindField::Repaint(Changed changed) {
    if (!Any(changed, Changed::Race)) return;
    windTextArmed_ = false;
    form_.Text3.SetText(NumberText(race_.WindDirection));
}

void WindField::Take(double direction) {
    windTextArmed_ = true;
    form_.Text3.SetText(NumberText(direction));
}

void WindField::Text3_Change() {
    if (!windTextArmed_) return;
    const double direction = LenientNumber(form_.Text3.Text());
    changes_.SetWindDirection(direction >= 0 && direction <= 360 ? direction : 0);
}

}  // namespace keelview
