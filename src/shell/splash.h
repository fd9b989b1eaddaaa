#pragma once

#include <string>
#include <string_view>

#include "display/control.h"
#include "display/form.h"
#include "display/platform.h"

namespace keelview {

/// The splash form `splite`: covers the screen while a race or a track loads, with the cover picture in its
/// middle and, below it, how far the load has come.
class Splash : public Form {
  public:
    /// `fontName` and `fontScale` as in the settings: text stands at 9 points times the scale.
    Splash(const ScreenInfo& screen, bool useEnglish, const std::string& fontName, double fontScale);

    /// Shows a text of two lines and the bar filled to `fraction` (0 to 1, held inside it), and paints both
    /// at once.
    void ShowProgress(std::string_view text, double fraction);
    /// Hides text and bar again.
    void HideProgress();

    Surface Image1;    // the cover picture
    Surface Image2;    // the Japanese title, on the cover picture
    TextBox Text1;     // load message
    Surface Picture1;  // load progress bar
};

}  // namespace keelview
