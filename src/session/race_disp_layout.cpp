#include <algorithm>

#include "base/files.h"
#include "session/race_disp.h"

namespace keelview {

namespace {

constexpr double ColumnWidth = 265.0;
constexpr double TimeBarWidth = 30.0;
constexpr double Margin = 5.0;
constexpr double ControlPanelHeight = 379.0;
constexpr double ControlPanelRise =
    329.0;  // how far the control panel reaches up from the map's lower edge

}  // namespace

void RaceDisp::LayoutPanels(const Settings& settings, int boatCount) {
    mapSide_ = std::min(ScaleWidth() - ColumnWidth - TimeBarWidth - 3 * Margin, ScaleHeight() - 2 * Margin);
    mapSide_ = std::max(mapSide_, 100.0);  // a window that small shows little, but nothing turns inside out
    const double side = mapSide_;
    Picture1.Move(Margin, Margin, side, side);
    GPIC.Move(Margin, Margin, side, side);
    PicTimeBar.Move(2 * Margin + side, Margin, TimeBarWidth, side);
    panelLeft_ = PicTimeBar.Left() + PicTimeBar.Width() + Margin;
    Picture5.Move(panelLeft_, Margin, ColumnWidth, 167);
    const double listHeight = boatCount * RowPitch + 50;
    Picture8.Move(panelLeft_, PanelTop, ColumnWidth, listHeight);
    Picture7.Move(panelLeft_, side + Margin - ControlPanelRise, ColumnWidth, ControlPanelHeight);
    panelRaisedTop_ = PanelTop + listHeight > side - PanelTop ? 0.0 : PanelTop;
    LowerBoatList();

    LayoutMap();
    LayoutTopPanel(settings.UseEnglish);
    LayoutBoatList();
    LayoutControlPanel();
    btnHATENA.SetVisible(
        IsFile(FindBelow(settings.AppPath, settings.UseEnglish ? "help-e/index.html" : "help/index.html")));
    Picture12.Hide();
    Position.Hide();
}

void RaceDisp::RaiseBoatList() {
    panelRaised_ = true;
    Picture8.SetTop(panelRaisedTop_);
    Picture7.SetVisible(Picture8.Top() + Picture8.Height() <= Picture7.Top());
}

void RaceDisp::LowerBoatList() {
    panelRaised_ = false;
    Picture8.SetTop(PanelTop);
    Picture7.Show();
}

void RaceDisp::PlaceSignals() {
    for (Surface* flag : {&Blue_P, &Seven}) flag->Move(mapSide_ - flag->Width() - 10, 10);
}

void RaceDisp::LayoutMap() {
    const double side = mapSide_;
    Picture2.Move(5, 5, 90, 105);
    Text13.Move(6, 6, 33, 15);
    Text14.Move(51, 6, 33, 15);
    Text3.Move(side - 48, 10, 33, 18);
    PlaceSignals();
    Text4.Move(224, 8, 145, 105);
    Text11.Move(side - 110, side - 27, 95, 20);
    Text15.Move(Text11.Left() + (Text11.Width() - 73) / 2, Text11.Top() - 16, 73, 18);
    Picture12.Move(side - 252, side - 25, 137, 19);
    HScroll2.Move(48, 0, 89, 17);
    Label7.Move(11, 2, 49, 17);
    Position.Move(side - 217, 5, 212, 17);
    Command12.Move(5, 5, 113, 17);
}

void RaceDisp::LayoutTopPanel(bool useEnglish) {
    Picture6.Move(10, 3, 161, 161);
    Picture4.Move(174, 3, 77, 161);
    Picture11.Move(174, 3, 77, 161);
    Picture4.SetVisible(useEnglish);
    Picture11.SetVisible(!useEnglish);
}

void RaceDisp::LayoutBoatList() {
    Text1.Move(10, 5, 240, 12);
    Label5.Move(10, 26, 240, 12);
    Bnam[0].Move(5, 39, 105, 15);
    Text5[0].Move(110, 39, 24, 15);
    Text6[0].Move(211, 39, 24, 15);
    Maru[0].Move(240, 37, 17, 17);
}

void RaceDisp::LayoutControlPanel() {
    LayoutFrames();
    Text2.Move(16, 80, 57, 18);
    HScroll1.Move(80, 80, 121, 17);
    Command2.Move(8, 104, 75, 17);
    Command3.Move(89, 104, 80, 17);
    Command5.Move(176, 104, 77, 17);
    Label6.Move(7, 106, 65, 17);
    Combo1.Move(64, 103, 147, 20);
    Command9.Move(213, 104, 40, 17);
    Label2.Move(9, 131, 73, 13);
    Text9.Move(64, 128, 137, 18);
    btnHATENA.Move(211, 128, 33, 65);
    Label3.Move(9, 152, 57, 13);
    Text10.Move(64, 152, 137, 18);
    Command4.Move(64, 176, 137, 17);
    LayoutCheckBoxes();
    double left = 16;
    for (Surface* cell : ColourCells()) {
        cell->Move(left, 256, 30, 13);
        left += 35;
    }
    Command10.Move(16, 276, 89, 17);
    Command13.Move(112, 276, 65, 17);
    Command1.Move(184, 276, 65, 17);
    Label1.Move(64, 295, 185, 17);
}

void RaceDisp::LayoutFrames() {
    Frame3.Move(10, 14, 84, 60);
    Option6.Move(7, 12, 65, 17);
    Option7.Move(7, 26, 65, 17);
    Option8.Move(7, 40, 65, 17);
    Command6.Move(61, 13, 17, 17);
    Command7.Move(61, 39, 17, 17);
    Frame1.Move(100, 14, 77, 60);
    Option3.Move(4, 17, 68, 17);
    Option2.Move(4, 34, 68, 17);
    Frame4.Move(183, 14, 74, 60);
    Option9.Move(4, 14, 62, 15);
    Option10.Move(4, 28, 62, 15);
    Option11.Move(4, 42, 62, 15);
}

void RaceDisp::LayoutCheckBoxes() {
    Check9.Move(16, 200, 49, 17);
    Check7.Move(72, 200, 57, 17);
    Check3.Move(128, 200, 57, 17);
    Check10.Move(184, 200, 73, 17);
    Check4.Move(16, 216, 81, 17);
    Check6.Move(96, 216, 73, 17);
    Check2.Move(168, 216, 81, 17);
    Check5.Move(16, 232, 73, 17);
    Check1.Move(96, 232, 65, 17);
    Check8.Move(168, 232, 73, 17);
}

}  // namespace keelview
