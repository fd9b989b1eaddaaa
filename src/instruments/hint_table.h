#pragma once

#include <vector>

#include "base/bilingual.h"
#include "display/hint_box.h"
#include "session/race_disp.h"

namespace keelview {

/// When a control shows its hint.
enum class HintGate {
    Always,     ///< the hint is worth it, or is the way back to the hints
    HintsOn,    ///< while Check3 "HINT" is ticked
    AutoTrace,  ///< while the view follows the boats
    Editing,    ///< in the full program
    MenuBehind  ///< while a race is open that the menu stands behind
};

/// A hint's size in pixels. Few hints have another width in Japanese.
struct HintSize {
    double Width = 0.0;
    double Height = 0.0;
    double WidthJapanese = Width;
};

/// What one control tells about itself when the pointer comes to it.
struct ControlHint {
    Control* Owner = nullptr;
    HintGate Gate = HintGate::Always;
    HintSize Size;
    Text Words;
    bool OnOwnColour = false;  ///< on the colour of the control, else on that of all hints
    Colour Ink = Black;
    const OptionButton* Choice = nullptr;  ///< tells nothing more once this is chosen
    bool HidesBoatLabel = false;           ///< the boat label on the map goes away too
};

/// The hints of all controls that tell nothing but themselves. Those that follow a place on the map, on a
/// graph or in the boat list belong to the rooms that know the place.
std::vector<ControlHint> ControlHints(RaceDisp& form);

/// Why controls are grey and what to do, told while they are; of those of one control the first whose gate
/// is open.
std::vector<ControlHint> GreyHints(RaceDisp& form);

/// Where a hint of such a size stands that is about something in the right-hand column at this height of
/// the form: on the map beside the time bar, so that it covers neither the column, where the pointer goes
/// on, nor the readouts and the finish list at the map's edge.
HintPlace BesidePanel(const RaceDisp& form, double top, double width, double height);

/// Where a hint stands on the form as it is laid out now, in the language of the program.
HintPlace PlaceOf(const ControlHint& hint, const RaceDisp& form, bool useEnglish);

}  // namespace keelview
