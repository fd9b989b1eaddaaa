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

constexpr TextBox::Kind Message{
    .Alignment = Align::Centre, .Border = false, .MultiLine = true, .ReadOnly = true};

}  // namespace

Splash::Splash(const ScreenInfo& screen, bool useEnglish, const std::string& fontName, double fontScale)
    : Form("splite", Kind::FullScreen, StoredWidth, StoredHeight),
      Image1(*this, "Image1", BorderStyle::None),
      Image2(*this, "Image2", BorderStyle::None),
      Text1(*this, "Text1", Message),
      Picture1(*this, "Picture1", BorderStyle::Flat) {
    SetBackColor(Rgb(128, 128, 0));
    SetFont(fontName, 9 * fontScale);
    Text1.SetBackColor(Rgb(192, 255, 255));

    const double left = std::floor((screen.Width / ReferenceTwips - CoverWidth) / 2);
    const double top = std::floor((screen.Height / ReferenceTwips - CoverHeight) / 2);
    Image1.Move(left, top, CoverWidth, CoverHeight);
    Image1.ShowPicture(Picture::FromAssets("cover.png"));
    Image2.Move(left + 8, top + 296, TitleWidth, TitleHeight);
    Image2.ShowPicture(Picture::FromAssets("splash_title.png"));
    Image2.SetVisible(!useEnglish);

    const double below = top + CoverHeight;
    Text1.Move(left, below + 15, CoverWidth, TextHeight);
    Picture1.Move(left, below + 55, BarLength, BarHeight);
    HideProgress();
}

void Splash::ShowProgress(std::string_view text, double fraction) {
    Text1.SetText(text);
    Text1.Show();
    Picture1.Cls();
    const double length = BarLength * std::clamp(fraction, 0.0, 1.0);
    if (length > 0) Picture1.FilledBox(0, 0, length, Picture1.ScaleHeight(), Blue);
    Picture1.Show();
    Refresh();
}

void Splash::HideProgress() {
    Text1.Hide();
    Picture1.Hide();
}

}  // namespace keelview
