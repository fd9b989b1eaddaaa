#pragma once

#include <string_view>

#include "display/control.h"
#include "display/form.h"
#include "display/platform.h"
#include "session/app_state.h"

namespace keelview {

/// The splash form `splite`: covers the screen while a race or a track loads, with the cover picture in its
/// middle and, below it, how far the load has come.
class Splash : public Form {
    static constexpr TextBox::Kind Message{
        .Alignment = Align::Centre, .Border = false, .MultiLine = true, .ReadOnly = true};

  public:
    Splash(const Settings& settings, const ScreenInfo& screen);

    /// Shows a text of two lines and the bar filled to `share` (0 to 1, held inside it), and paints both at
    /// once; hides both again for an empty text.
    void ShowProgress(std::string_view text, double share);

    Surface Image1{*this, "Image1", BorderStyle::None};      // the cover picture
    Surface Image2{*this, "Image2", BorderStyle::None};      // the Japanese title, on the cover picture
    TextBox Text1{*this, "Text1", Message};                  // load message
    Surface Picture1{*this, "Picture1", BorderStyle::Flat};  // load progress bar
};

}  // namespace keelview
