#include "instruments/hints.h"

#include "display/hint_box.h"

namespace keelview {

Hints::Hints(AppState& app, RaceDisp& form) : app_(app), form_(form), hints_(ControlHints(form)) {
    for (const ControlHint& hint : hints_)
        hint.Of->OnMouseMove = [this, &hint](const MouseEvent&) { Show(hint); };
    form_.Text1.OnMouseMove = [this](const MouseEvent&) { app_.display.HoverBoat = -1; };
    form_.Text7.OnMouseMove = [this](const MouseEvent&) { form_.Text7.Hide(); };
    form_.Text8.OnMouseMove = [this](const MouseEvent&) { form_.Text8.Hide(); };
}

void Hints::Show(const ControlHint& hint) {
    if (hint.HidesBoatLabel) form_.Text8.Hide();
    if (!MayShow(hint)) {
        form_.Text7.Hide();  // the hint of another control would tell the wrong thing here
        return;
    }
    const bool english = app_.settings.UseEnglish;
    form_.Text7.SetBackColor(hint.OnOwnColour ? hint.Of->GetBackColor() : HintBackground);
    ShowHint(form_.Text7, hint.Words.In(english), PlaceOf(hint, form_, english));
    form_.Text7.SetForeColor(hint.Ink);
}

bool Hints::MayShow(const ControlHint& hint) const {
    switch (hint.Gate) {
        case HintGate::Always:
            return true;
        case HintGate::HintsOn:
            return app_.display.HintsOn;
        case HintGate::MenuBehind:
            return app_.settings.EditMode && !app_.race.RaceFileName.empty();
    }
    return false;
}

}  // namespace keelview
