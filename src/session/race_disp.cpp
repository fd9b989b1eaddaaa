#include "session/race_disp.h"

#include <memory>
#include <string>

#include "base/bilingual.h"

namespace keelview {

namespace {

constexpr double BoatSide = 15.0;
constexpr double MarkerSide = 7.0;

// The overview's own scale: 15 units high, whatever its size in pixels.
constexpr double OverviewUnitsWide = 14.813664;
constexpr double OverviewUnitsHigh = 15.0;

std::string Element(const char* name, int index) {
    return std::string(name) + "(" + std::to_string(index) + ")";
}

/// Makes the elements of an array of sprites on a surface.
auto SpriteMaker(Surface& parent, const char* name, double side) {
    return [&parent, name, side](int index) {
        return std::make_unique<Sprite>(parent, Element(name, index), side, side);
    };
}

auto CheckMaker(Surface& parent, const char* name) {
    return [&parent, name](int index) { return std::make_unique<CheckBox>(parent, Element(name, index)); };
}

auto TextMaker(Surface& parent, const char* name, TextBox::Kind kind) {
    return [&parent, name, kind](int index) {
        return std::make_unique<TextBox>(parent, Element(name, index), kind);
    };
}

}  // namespace

RaceDisp::RaceDisp(const Settings& settings)
    : Form("RaceDisp", Kind::FullScreen, 0, 0),
      Bar([this](int index) {
          return std::make_unique<LineObject>(Picture1, Element("Bar", index), Black);
      }),
      Boat(SpriteMaker(Picture1, "Boat", BoatSide)),
      BoatS(SpriteMaker(Picture6, "BoatS", MarkerSide)),
      Bnam(CheckMaker(Picture8, "Bnam")),
      Text5(TextMaker(Picture8, "Text5", PlainReadout)),
      Text6(TextMaker(Picture8, "Text6", RightReadout)),
      Maru(CheckMaker(Picture8, "Maru")) {
    SetIcon(Picture::FromAssets("icon.png"));
    ApplyFonts(settings);
    PlaceAndCaption(settings.UseEnglish);
    ApplyColours();
    Seven.ShowPicture(Picture::FromAssets("seven.png"));
    Blue_P.ShowPicture(Picture::FromAssets("blue_p.png"));
    Picture4.ShowPicture(Picture::FromAssets("logo_en.png"));
    Picture11.ShowPicture(Picture::FromAssets("logo_ja.png"));
    Picture6.SetUserScale(OverviewUnitsWide, OverviewUnitsHigh);
    // The film's own switches wait for the second firing of Timer2.
    for (Control* control : std::initializer_list<Control*>{&Picture1, &Check9, &Check2, &Check5})
        control->SetEnabled(false);
    for (Control* control : std::initializer_list<Control*>{
             &PicTime, &Picture3, &Picture13, &Text8,    &Text12,   &Seven,      &Blue_P,   &Picture12,
             &Text4,   &Picture9, &Command12, &Picture4, &Text7,    &PicTimeBar, &GPIC,     &Position,
             &sWind,   &VScroll1, &VScroll2,  &VScroll3, &HScroll3, &Picture15,  &Command18})
        control->Hide();
    for (LineObject* line : {&Line4, &Line2, &Line3, &Line7}) line->SetVisible(false);
    Bar[0].SetVisible(false);
    Boat[0].SetVisible(false);
    BoatS[0].SetVisible(false);
    Text11.SetText("00");
    for (Surface* cell : ColourCells()) cell->SetTabStop();
    for (Label* label : {&Label1, &Label5}) label->SetTabStop();
    Option6.SetFocus();
}

void RaceDisp::LoadBoats(int boatCount) {
    Boat.Resize(boatCount);
    BoatS.Resize(boatCount);
    Bar.Resize(boatCount);
    Ticks.Resize(boatCount);
}

void RaceDisp::SetTitle(std::string_view title) {
    title_ = title;
    SetCaption(title_);
}

void RaceDisp::ShowInTitle(std::string_view addition) {
    SetCaption(addition.empty() ? title_ : title_ + std::string(20, ' ') + std::string(addition));
}

void RaceDisp::ApplyFonts(const Settings& settings) {
    const std::string& face = settings.UiFontName;
    const double scale = settings.FontScale;
    SetFont(face, 9 * scale);  // all controls take the form's font
    Label5.SetFont(face, 8 * scale);
    Text11.SetFont(face, 18 * scale);
    Text4.SetFont(face, 72 * scale);
    btnHATENA.SetFont(face, 15.75, true);
    for (Surface* surface : {&PicTime, &GPIC, &Picture1, &PicTimeBar, &Picture8, &Picture3, &Picture13,
                             &Position, &Picture2, &Picture6, &Picture15, &Picture17})
        surface->FontSize = 9 * scale;
    sWind.FontSize = 8 * scale;
}

void RaceDisp::ApplyColours() {
    Picture1.SetBackColor(Rgb(0, 255, 255));
    GPIC.SetBackColor(Rgb(224, 224, 224));
    PicTimeBar.SetBackColor(Rgb(128, 128, 128));
    Picture7.SetBackColor(Rgb(192, 192, 192));
    Picture8.SetBackColor(ButtonFace);
    Position.SetBackColor(Rgb(192, 255, 255));
    sWind.SetBackColor(Rgb(0, 192, 0));
    Picture15.SetBackColor(HintBackground);
    Picture17.SetBackColor(White);
    Picture2.SetBackColor(Rgb(0, 255, 255));
    Picture12.SetBackColor(Rgb(0, 255, 255));
    Picture6.SetBackColor(Rgb(192, 255, 255));
    Text7.SetBackColor(HintBackground);
    Text8.SetBackColor(Rgb(255, 255, 128));
    Text12.SetBackColor(Yellow);
    Text11.SetBackColor(HintBackground);
    Text15.SetBackColor(Rgb(0, 255, 255));
    Text4.SetBackColor(ReadableOn(White, Red));
    Text4.SetForeColor(White);
    Frame2.SetBackColor(White);
    Command11.SetBackColor(Red);
    btnHATENA.SetBackColor(Rgb(128, 255, 255));
    for (Frame* frame : {&Frame1, &Frame3, &Frame4}) frame->SetForeColor(Blue);
    Label1.SetForeColor(Blue);
}

}  // namespace keelview
