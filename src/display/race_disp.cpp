#include "display/race_disp.h"

#include <memory>
#include <string>

#include "base/bilingual.h"

namespace keelview {

namespace {

constexpr TextBox::Kind Readout{
    .Alignment = Align::Centre, .Border = true, .MultiLine = false, .ReadOnly = true};
constexpr TextBox::Kind PlainReadout{
    .Alignment = Align::Centre, .Border = false, .MultiLine = false, .ReadOnly = true};
constexpr TextBox::Kind RightReadout{
    .Alignment = Align::Right, .Border = false, .MultiLine = false, .ReadOnly = true};
constexpr TextBox::Kind Hint{
    .Alignment = Align::Centre, .Border = false, .MultiLine = true, .ReadOnly = true};
constexpr TextBox::Kind Field{
    .Alignment = Align::Centre, .Border = true, .MultiLine = false, .ReadOnly = false};

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
      PicTime(*this, "PicTime", BorderStyle::Flat),
      GPIC(*this, "GPIC"),
      Picture1(*this, "Picture1"),
      PicTimeBar(*this, "PicTimeBar", BorderStyle::Flat),
      Picture5(*this, "Picture5"),
      Picture8(*this, "Picture8"),
      Picture7(*this, "Picture7"),
      Picture3(*this, "Picture3", BorderStyle::None),
      Picture13(*this, "Picture13", BorderStyle::Flat),
      Text3(Picture1, "Text3", Field),
      Picture2(Picture1, "Picture2", BorderStyle::Flat),
      Text13(Picture2, "Text13", Readout),
      Text14(Picture2, "Text14", Readout),
      Picture9(Picture1, "Picture9"),
      Label4(Picture9, "Label4"),
      List1(Picture9, "List1"),
      Command8(Picture9, "Command8"),
      Text4(Picture1, "Text4", PlainReadout),
      Picture12(Picture1, "Picture12", BorderStyle::Flat),
      HScroll2(Picture12, "HScroll2"),
      Label7(Picture12, "Label7"),
      Text15(Picture1, "Text15", PlainReadout),
      Text11(Picture1, "Text11", PlainReadout),
      Blue_P(Picture1, "Blue_P"),
      Seven(Picture1, "Seven", BorderStyle::Flat),
      Text12(Picture1, "Text12", Hint),
      sWind(Picture1, "sWind", BorderStyle::Flat),
      Line8(sWind, "Line8", Red),
      Line9(sWind, "Line9", Red),
      Position(Picture1, "Position", BorderStyle::Flat),
      Line4(Picture1, "Line4", Rgb(255, 255, 128)),
      Bar([this](int index) {
          return std::make_unique<LineObject>(Picture1, Element("Bar", index), Black);
      }),
      Boat(SpriteMaker(Picture1, "Boat", BoatSide)),
      Text8(Picture1, "Text8", PlainReadout),
      Command12(GPIC, "Command12"),
      Line1(GPIC, "Line1", Rgb(0, 255, 255)),
      Line2(GPIC, "Line2", Red),
      Line3(GPIC, "Line3", Blue),
      Line7(GPIC, "Line7", Rgb(0, 192, 0)),
      Line5(PicTimeBar, "Line5", Red),
      Frame2(PicTime, "Frame2"),
      Option1(Frame2, "Option1", {}, true),
      Option4(Frame2, "Option4"),
      Option5(Frame2, "Option5"),
      Option12(Frame2, "Option12"),
      Command11(Frame2, "Command11"),
      Picture6(Picture5, "Picture6"),
      BoatS(SpriteMaker(Picture6, "BoatS", MarkerSide)),
      Picture4(Picture5, "Picture4", BorderStyle::None),
      Picture11(Picture5, "Picture11", BorderStyle::None),
      Text1(Picture8, "Text1", PlainReadout),
      Label5(Picture8, "Label5"),
      Bnam(CheckMaker(Picture8, "Bnam")),
      Text5(TextMaker(Picture8, "Text5", PlainReadout)),
      Text6(TextMaker(Picture8, "Text6", RightReadout)),
      Maru(CheckMaker(Picture8, "Maru")),
      Frame3(Picture7, "Frame3"),
      Option6(Frame3, "Option6", {}, true),
      Option7(Frame3, "Option7"),
      Option8(Frame3, "Option8"),
      Command6(Frame3, "Command6"),
      Command7(Frame3, "Command7"),
      Frame1(Picture7, "Frame1"),
      Option3(Frame1, "Option3"),
      Option2(Frame1, "Option2"),
      Frame4(Picture7, "Frame4"),
      Option9(Frame4, "Option9", {}, true),
      Option10(Frame4, "Option10"),
      Option11(Frame4, "Option11"),
      Text2(Picture7, "Text2", Readout),
      HScroll1(Picture7, "HScroll1"),
      Command2(Picture7, "Command2"),
      Command3(Picture7, "Command3"),
      Command5(Picture7, "Command5"),
      Label6(Picture7, "Label6"),
      Combo1(Picture7, "Combo1"),
      Command9(Picture7, "Command9"),
      Label2(Picture7, "Label2"),
      Text9(Picture7, "Text9", Field),
      btnHATENA(Picture7, "btnHATENA"),
      Label3(Picture7, "Label3"),
      Text10(Picture7, "Text10", Field),
      Command4(Picture7, "Command4"),
      Check9(Picture7, "Check9"),
      Check7(Picture7, "Check7", {}, true),
      Check3(Picture7, "Check3", {}, true),
      Check10(Picture7, "Check10", {}, true),
      Check4(Picture7, "Check4"),
      Check6(Picture7, "Check6", {}, true),
      Check2(Picture7, "Check2"),
      Check5(Picture7, "Check5"),
      Check1(Picture7, "Check1"),
      Check8(Picture7, "Check8", {}, true),
      BCOL1(Picture7, "BCOL1", BorderStyle::Flat),
      BCOL2(Picture7, "BCOL2", BorderStyle::Flat),
      BCOL3(Picture7, "BCOL3", BorderStyle::Flat),
      BCOL4(Picture7, "BCOL4", BorderStyle::Flat),
      BCOL5(Picture7, "BCOL5", BorderStyle::Flat),
      BCOL6(Picture7, "BCOL6", BorderStyle::Flat),
      Command10(Picture7, "Command10"),
      Command13(Picture7, "Command13"),
      Command1(Picture7, "Command1"),
      Label1(Picture7, "Label1"),
      Text7(*this, "Text7", Hint) {
    SetIcon(Picture::FromAssets("icon.png"));
    ApplyFonts(settings);
    ApplyCaptions(settings.UseEnglish);
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
             &PicTime, &Picture3, &Picture13, &Text8, &Text12, &Seven, &Blue_P, &Picture12, &Text4,
             &Picture9, &Command12, &Picture4, &Text7, &PicTimeBar, &GPIC, &Position, &sWind})
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

void RaceDisp::ApplyFonts(const Settings& settings) {
    const std::string& face = settings.UiFontName;
    const double scale = settings.FontScale;
    SetFont(face, 9 * scale);  // all controls take the form's font
    Label5.SetFont(face, 8 * scale);
    Text11.SetFont(face, 18 * scale);
    Text4.SetFont(face, 72 * scale);
    btnHATENA.SetFont(face, 15.75, true);
    for (Surface* surface : {&PicTime, &GPIC, &Picture1, &PicTimeBar, &Picture8, &Picture3, &Picture13,
                             &Position, &Picture2, &Picture6})
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
    Picture2.SetBackColor(Rgb(0, 255, 255));
    Picture12.SetBackColor(Rgb(0, 255, 255));
    Picture6.SetBackColor(Rgb(192, 255, 255));
    Text7.SetBackColor(HintBackground);
    Text8.SetBackColor(Rgb(255, 255, 128));
    Text12.SetBackColor(Yellow);
    Text11.SetBackColor(HintBackground);
    Text15.SetBackColor(Rgb(0, 255, 255));
    Text4.SetBackColor(Red);
    Text4.SetForeColor(White);
    Frame2.SetBackColor(White);
    Command11.SetBackColor(Red);
    btnHATENA.SetBackColor(Rgb(128, 255, 255));
    for (Frame* frame : {&Frame1, &Frame3, &Frame4}) frame->SetForeColor(Blue);
    Label1.SetForeColor(Blue);
}

}  // namespace keelview
