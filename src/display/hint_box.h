#pragma once

#include <string_view>

#include "display/control.h"

namespace keelview {

/// Where a hint stands, in pixels of its parent. A hint box does not measure its text.
struct HintPlace {
    double Left = 0.0;
    double Top = 0.0;
    double Width = 0.0;
    double Height = 0.0;
};

/// Shows a hint in its box, in black on whatever background the box has.
inline void ShowHint(TextBox& box, std::string_view text, const HintPlace& place) {
    box.SetForeColor(Black);
    box.SetText(text);
    box.Move(place.Left, place.Top, place.Width, place.Height);
    box.Show();
}

}  // namespace keelview
