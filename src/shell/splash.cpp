#include "shell/splash.h"

#include <algorithm>
#include <cmath>

namespace keelview {

namespace {

// The form covers the screen; its own size matters only until the window manager has placed it.
constexpr double StoredWidth = 468.0;
constexpr double StoredHeight = 538.0;

constexpr double CoverWidth = 333.0;
constexpr double CoverHeight = 381.0;
constexpr double TitleWidth = 319.0;
constexpr double TitleHeight = 81.0;

// The picture is centred by this many twips a pixel, whatever the screen's own number is.
constexpr double ReferenceTwips = 15.0;

constexpr double TextHeight = 32.0;
constexpr double BarLength = 333.0;
constexpr double BarHeight = 15.0;

}  // namespace

Splash::Splash(const Settings& settings, const ScreenInfo& screen)
    : Form("splite", Kind::Curtain, StoredWidth, StoredHeight) {
    SetBackColor(Rgb(128, 128, 0));
    SetFont(settings.UiFontName, 9 * settings.FontScale);
    Text1.SetBackColor(Rgb(192, 255, 255));

    const double left = std::floor((screen.Width / ReferenceTwips - CoverWidth) / 2);
    const double top = std::floor((screen.Height / ReferenceTwips - CoverHeight) / 2);
    Image1.Move(left, top, CoverWidth, CoverHeight);
    Image1.ShowPicture(Picture::FromAssets("cover.png"));
    Image2.Move(left + 8, top + 296, TitleWidth, TitleHeight);
    Image2.ShowPicture(Picture::FromAssets("splash_title.png"));
    Image2.SetVisible(!settings.UseEnglish);

    const double below = top + CoverHeight;
    Text1.Move(left, below + 15, CoverWidth, TextHeight);
    Picture1.Move(left, below + 55, BarLength, BarHeight);
    Text1.Hide();
    Picture1.Hide();
}

void Splash::ShowProgress(std::string_view text, double share) {
    Text1.SetText(text);
    Text1.SetVisible(!text.empty());
    Picture1.Cls();
    const double length = BarLength * std::clamp(share, 0.0, 1.0);
    if (length > 0) Picture1.FilledBox(0, 0, length, Picture1.ScaleHeight(), Blue);
    Picture1.SetVisible(!text.empty());
    if (!text.empty()) Refresh();
}

}  // namespace keelview
