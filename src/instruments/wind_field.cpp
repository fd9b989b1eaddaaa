#include "instruments/wind_field.h"

#include "base/numbers.h"

namespace keelview {

WindField::WindField(const RaceControl& race, RaceDisp& form, RaceChanges& changes)
    : race_(race), form_(form), changes_(changes) {
    form_.Text3.OnTyped = [this] { Text3_Typed(); };
}

void WindField::Repaint(Changed changed) {
    if (Any(changed, Changed::Race)) form_.Text3.SetText(NumberText(race_.WindDirection));
}

void WindField::Take(double direction) {
    form_.Text3.SetText(NumberText(direction));
    Text3_Typed();
}

void WindField::Text3_Typed() {
    const double direction = LenientNumber(form_.Text3.Text());
    changes_.SetWindDirection(direction >= 0 && direction <= 360 ? direction : 0);
}

}  // namespace keelview
