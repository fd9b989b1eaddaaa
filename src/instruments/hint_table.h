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

/// Where the hint's left edge stands; the inset is counted from there, in pixels.
enum class HintColumn {
    PanelLeft,     ///< from the control panel's left edge
    PanelRight,    ///< it ends the inset left of the control panel's right edge
    OnControl,     ///< from the control's left edge
    LeftOfControl  ///< it ends the inset left of the control
};

/// Where the hint's upper edge stands; the gap is counted from there, in pixels.
enum class HintRow {
    Above,  ///< it ends the gap above the control
    Below   ///< it begins the gap below the control's upper edge
};

/// What one control tells about itself when the pointer comes to it.
struct ControlHint {
    Control* Owner = nullptr;
    HintGate Gate = HintGate::Always;
    HintSize Size;
    Text Words;
    HintColumn Column = HintColumn::PanelLeft;
    double Inset = 10.0;
    HintRow Row = HintRow::Above;
    double Gap = 5.0;
    bool OnOwnColour = false;  ///< on the colour of the control, else on that of all hints
    Colour Ink = Black;
    bool HidesBoatLabel = false;  ///< the boat label on the map goes away too
};

/// The hints of all controls that tell nothing but themselves. Those that follow a place on the map, on a
/// graph or in the boat list belong to the rooms that know the place.
std::vector<ControlHint> ControlHints(RaceDisp& form);

/// Why controls are grey and what to do, told while they are; of those of one control the first whose gate
/// is open.
std::vector<ControlHint> GreyHints(RaceDisp& form);

/// Where a hint stands on the form as it is laid out now, in the language of the program.
HintPlace PlaceOf(const ControlHint& hint, const RaceDisp& form, bool useEnglish);

}  // namespace keelview
