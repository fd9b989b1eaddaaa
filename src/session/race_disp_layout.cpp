#include <algorithm>
#include <cmath>

#include "base/files.h"
#include "session/documents.h"
#include "session/race_disp.h"

namespace keelview {

namespace {

constexpr double ColumnWidth = ListShape::ColumnWidth;
constexpr double TimeBarWidth = 30.0;
constexpr double Margin = 5.0;
constexpr double ControlPanelHeight = 379.0;
constexpr double ControlPanelRise =
    329.0;                           // how far the control panel reaches up from the map's lower edge
constexpr double SideLeast = 280.0;  // width of the side panel
constexpr double SideMost = 640.0;
constexpr double SideOverMap = 340.0;
constexpr double SideHandle = 16.0;

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
    list_ = FitList(boatCount, ScaleWidth() - panelLeft_, ScaleHeight());
    Picture8.Move(panelLeft_, PanelTop, list_.Width(), list_.Height());
    Picture7.Move(panelLeft_, side + Margin - ControlPanelRise, ColumnWidth, ControlPanelHeight);
    panelRaisedTop_ = PanelTop + list_.Height() > side - PanelTop ? 0.0 : PanelTop;
    LowerBoatList();

    LayoutMap();
    LayoutTopPanel(settings.UseEnglish);
    LayoutBoatList(boatCount);
    LayoutSidePanel();
    btnHATENA.SetVisible(IsFile(ManualPath(settings)));
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
    Position.Move(side - 217, 5, 212, 17);
}

void RaceDisp::LayoutTopPanel(bool useEnglish) {
    Picture6.Move(10, 3, 161, 161);
    Picture4.Move(174, 3, 77, 161);
    Picture11.Move(174, 3, 77, 161);
    Picture4.SetVisible(useEnglish);
    Picture11.SetVisible(!useEnglish);
}

void RaceDisp::LayoutBoatList(int boatCount) {
    Text1.Move(10, 4, 240, 18);  // the digits and their frame; less would cut them
    Label5.Move(10, 26, list_.RowWidth() - 25, 12);
    Bnam.Resize(list_.Rows);
    Text5.Resize(list_.Rows);
    Text6.Resize(list_.Rows);
    Maru.Resize(list_.Rows);
    for (int row = 0; row < Bnam.Count(); ++row) LayoutRow(row);
    constexpr double edges = 4.0;  // of the panel
    VScroll1.Move(list_.Width() - edges - ListShape::BarWidth, ListShape::HeadHeight, ListShape::BarWidth,
                  list_.RowsInColumn * list_.Pitch);
    VScroll1.SetVisible(list_.Scrolls);
    VScroll1.SetView(std::max(boatCount - list_.Rows, 0), 1, list_.Rows);
}

void RaceDisp::LayoutRow(int row) {
    const double left = list_.RowLeft(row);
    const double right = left + list_.RowWidth();
    const double top = list_.RowTop(row);
    const double height = list_.Pitch + 1;
    Bnam[row].Move(left + 5, top, 105, height);
    Text5[row].Move(left + 110, top, 24, height);
    Text6[row].Move(right - 54, top, 24, height);
    Maru[row].Move(right - 25, top - 2, 17, height + 2);
    for (Control* control :
         std::initializer_list<Control*>{&Bnam[row], &Text5[row], &Text6[row], &Maru[row]})
        control->Show();
}

void RaceDisp::SlideSidePanel(bool out) {
    sidePanelOut_ = out;
    LayoutSidePanel();
}

void RaceDisp::LayoutSidePanel() {
    const double side = mapSide_;
    const double left = panelLeft_ + std::max(ColumnWidth, list_.Width()) + Margin;
    const double room = std::min(ScaleWidth() - left - Margin, SideMost);
    sidePanelHasRoom_ = room >= SideLeast;
    const double mapRight = Margin + side;
    const double width = sidePanelHasRoom_ ? room : std::min(SideOverMap, side - SideHandle);
    Picture16.Move(sidePanelHasRoom_ ? left : mapRight - width, Margin, width, side);
    Picture16.SetVisible(sidePanelHasRoom_ || sidePanelOut_);
    const double handle = sidePanelOut_ ? mapRight - width : mapRight;
    Command14.Move(handle - SideHandle, Margin + side / 2 - 30, SideHandle, 60);
    Command14.SetCaption(sidePanelOut_ ? ">" : "<");
    Command14.SetVisible(!sidePanelHasRoom_);
    LayoutSideTabs();
}

/// Tabs in one row or two, the page with its bar below them, the buttons at the foot.
void RaceDisp::LayoutSideTabs() {
    constexpr double edge = 4.0, tabWidth = 92.0, tabHeight = 20.0, foot = 26.0, bar = 16.0;
    const double width = Picture16.Width() - 2 * edge;
    const auto tabs = SideTabs();
    const int columns =
        width >= tabWidth * static_cast<double>(tabs.size()) ? static_cast<int>(tabs.size()) : 3;
    for (int tab = 0; tab < static_cast<int>(tabs.size()); ++tab) {
        const int row = tab / columns;
        tabs[static_cast<std::size_t>(tab)]->Move(edge + (tab - row * columns) * (width / columns),
                                                  2 + row * tabHeight, width / columns - 2, tabHeight);
    }
    const double top = 6 + tabHeight * std::ceil(static_cast<double>(tabs.size()) / columns);
    const double height = Picture16.Height() - top - foot - edge;
    Picture17.Move(edge, top, width - bar, height);
    VScroll4.Move(edge + width - bar, top, bar, height);
    Command15.Move(edge, top + height + 4, 80, foot - 6);
    Command17.Move(edge + 86, top + height + 4, 90, foot - 6);
    for (Control* beside : std::initializer_list<Control*>{&Command16, &Check11})
        beside->Move(edge + 182, top + height + 4, 140, foot - 6);
}

}  // namespace keelview
