#include "instruments/race_keys.h"

namespace keelview {

namespace {

constexpr int StepsWithShift = 10;

}  // namespace

RaceKeys::RaceKeys(RaceDisp& form, FilmControls& film, MapInteraction& map, WindEntry& windEntry,
                   KeySheet& sheet)
    : form_(form), film_(film), map_(map), windEntry_(windEntry), sheet_(sheet) {
    form_.OnKey = [this](const KeyPress& press, bool& taken) { taken = Form_Key(press); };
}

/// True if the key has been used up. Held down, the arrows alone go on.
bool RaceKeys::Form_Key(const KeyPress& press) {
    using enum KeyPress::Name;
    const int steps = press.Shift ? StepsWithShift : 1;
    if (press.Key == Left || press.Key == Right) {
        film_.Step(press.Key == Left ? -steps : steps);
        return true;
    }
    if (press.Repeated) return true;
    switch (press.Key) {
        case Space:
            film_.PlayOrStop();
            break;
        case Home:
            film_.GoToStart();
            break;
        case End:
            film_.GoToFinish();
            break;
        case F11:
            form_.SetWholeScreen(!form_.WholeScreen());
            break;
        case QuestionMark:
            sheet_.Toggle();
            break;
        case Escape:
            return Leave();
        default:
            return false;
    }
    return true;
}

/// What was begun last is left first.
bool RaceKeys::Leave() {
    if (sheet_.PutAway() || map_.PutToolAway() || windEntry_.Leave()) return true;
    if (!form_.WholeScreen()) return false;
    form_.SetWholeScreen(false);
    return true;
}

}  // namespace keelview
