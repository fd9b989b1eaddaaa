#include "instruments/hints.h"

#include "display/hint_box.h"

namespace keelview {

Hints::Hints(const RaceControl& race, const Settings& settings, RaceDisp& form)
    : race_(race),
      settings_(settings),
      form_(form),
      hints_(ControlHints(form)),
      greyHints_(GreyHints(form)) {
    for (const ControlHint& hint : hints_) {
        hint.Owner->OnMouseMove = [this, &hint](const MouseEvent&) { ShowHintOf(hint); };
        hint.Owner->OnMouseLeave = [this] { form_.Text7.Hide(); };
        if (hint.Choice != nullptr)
            hint.Owner->OnMouseDown = [this](const MouseEvent&) { form_.Text7.Hide(); };
    }
    for (const ControlHint& hint : greyHints_) {
        Control& grey = *hint.Owner;
        if (!grey.OnGreyMove) grey.OnGreyMove = [this, &grey](const MouseEvent&) { ShowGreyHintOf(grey); };
        if (!grey.OnMouseLeave) grey.OnMouseLeave = [this] { form_.Text7.Hide(); };
    }
    for (TextBox* box : {&form_.Text7, &form_.Text8})
        box->OnMouseMove = [box](const MouseEvent&) { box->Hide(); };
}

void Hints::ShowHintOf(const ControlHint& hint) {
    if (hint.HidesBoatLabel) form_.Text8.Hide();
    if (!MayShow(hint)) {
        form_.Text7.Hide();  // the hint of another control would tell the wrong thing here
        return;
    }
    const bool english = settings_.UseEnglish;
    form_.Text7.SetBackColor(hint.OnOwnColour ? hint.Owner->GetBackColor() : HintBackground);
    ShowHint(form_.Text7, hint.Words.In(english), PlaceOf(hint, form_, english));
    form_.Text7.SetForeColor(hint.Ink);
}

void Hints::ShowGreyHintOf(const Control& grey) {
    for (const ControlHint& hint : greyHints_)
        if (hint.Owner == &grey && MayShow(hint)) return ShowHintOf(hint);
}

bool Hints::MayShow(const ControlHint& hint) const {
    if (hint.Choice != nullptr && hint.Choice->Value()) return false;
    switch (hint.Gate) {
        case HintGate::Always:
            return true;
        case HintGate::HintsOn:
            return form_.Check3.Value();
        case HintGate::AutoTrace:
            return form_.Check5.Value();
        case HintGate::Editing:
            return settings_.EditMode;
        case HintGate::MenuBehind:
            return settings_.EditMode && !race_.RaceFileName.empty();
    }
    return false;
}

}  // namespace keelview
