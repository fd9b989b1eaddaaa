#pragma once

#include <array>
#include <memory>

#include "display/control.h"
#include "display/form.h"
#include "session/app_state.h"

namespace keelview {

/// The main form: an inventory of every surface and control of the race display, with its place. What the
/// controls do lives in the rooms that work on them. Places are pixels of the parent; controls of one
/// parent are declared from the lowest to the topmost.
class RaceDisp : public Form {
  public:
    /// Makes all controls with their stored defaults, in the language and font of the settings.
    explicit RaceDisp(const Settings& settings);

    /// Places every control for a race of `boatCount` boats, by the inner size of the form. Element 0 of
    /// each per-boat array is placed; the others take their places from it.
    void LayoutPanels(const Settings& settings, int boatCount);

    /// Side of the square map in pixels, as the last LayoutPanels set it.
    double MapSide() const { return mapSide_; }
    /// Left edge of the right-hand column.
    double PanelLeft() const { return panelLeft_; }
    /// Top of the boat list while the pointer is on it.
    double PanelRaisedTop() const { return panelRaisedTop_; }
    /// Raises the boat list, so that a large fleet shows all its rows. The control panel hides as long as
    /// the list reaches into its place.
    void RaiseBoatList();
    /// Puts the boat list and the control panel back to their places at rest.
    void LowerBoatList();
    /// The pointer has raised the boat list, also where it found room enough and did not move.
    bool PanelRaised() const { return panelRaised_; }
    /// Top of the boat list at rest.
    static constexpr double PanelTop = 178.0;
    /// Height of one row of the boat list.
    static constexpr double RowPitch = 14.0;

    /// Puts the two signal flags back to the top right of the map.
    void PlaceSignals();
    /// The six sea colour cells, from the lightest to the darkest.
    std::array<Surface*, 6> ColourCells() { return {&BCOL1, &BCOL2, &BCOL3, &BCOL4, &BCOL5, &BCOL6}; }

    Surface PicTime;     // the data view: leg tables and charts
    Surface GPIC;        // the boat graphs, in the place of the map
    Surface Picture1;    // the map
    Surface PicTimeBar;  // the vertical time bar
    Panel Picture5;      // top panel of the right-hand column
    Surface Picture8;    // boat list
    Panel Picture7;      // control panel, over the end of a long boat list at rest
    Surface Picture3;    // load progress, leg chart
    Surface Picture13;   // hidden composition of the screen capture
    Timer Timer1;        // replay tick
    Timer Timer2;        // switches auto trace on, 2 seconds after the start
    Timer Timer3;        // calibration of the film's speed, pass clock

    // On the map.
    TextBox Text3;     // race wind direction
    Surface Picture2;  // wind compass
    TextBox Text13;    // wind direction, in Picture2
    TextBox Text14;    // wind speed, in Picture2
    Panel Picture9;    // course setting panel
    Label Label4;      // "Course Order"
    ListBox List1;     // the course order
    Button Command8;   // "Delete Order"
    TextBox Text4;     // large countdown around the start
    Panel Picture12;   // zoom panel of auto trace
    ScrollBar HScroll2;
    Label Label7;    // "ZOOM"
    TextBox Text15;  // "Real Size" or "Enlarged"
    TextBox Text11;  // countdown and elapsed time
    Surface Blue_P;  // blue flag with a white centre
    Surface Seven;   // flag with a numeral 7
    TextBox Text12;  // load message
    Surface sWind;   // wind graph
    LineObject Line8;
    LineObject Line9;
    Surface Position;              // finish list
    LineObject Line4;              // rubber band of range and bearing, and of a line being set
    ControlArray<LineObject> Bar;  // cross-wind lines
    ControlArray<Sprite> Boat;
    TextBox Text8;  // second hint box

    // On the graphs.
    Button Command12;  // "Make Wind Data"
    LineObject Line1;  // horizontal cursor
    LineObject Line2;  // vertical cursors
    LineObject Line3;
    LineObject Line7;

    LineObject Line5;  // replay position, on the time bar

    // On the data view.
    Frame Frame2;
    OptionButton Option1;   // "Time"
    OptionButton Option4;   // "Dist"
    OptionButton Option5;   // "SPD"
    OptionButton Option12;  // "ANA"
    Button Command11;       // "Exit"

    // In the top panel.
    Surface Picture6;  // overview
    ControlArray<Sprite> BoatS;
    Surface Picture4;   // logo, English
    Surface Picture11;  // logo, Japanese

    // In the boat list.
    TextBox Text1;  // date and time of the replay clock
    Label Label5;   // column titles
    ControlArray<CheckBox> Bnam;
    ControlArray<TextBox> Text5;  // boat speed
    ControlArray<TextBox> Text6;  // true wind angle
    ControlArray<CheckBox> Maru;  // ring and name

    // In the control panel.
    Frame Frame3;           // "TRACK"
    OptionButton Option6;   // "FWD"
    OptionButton Option7;   // "STOP"
    OptionButton Option8;   // "BACK"
    Button Command6;        // "+"
    Button Command7;        // "-"
    Frame Frame1;           // "Direction"
    OptionButton Option3;   // "Windwd"
    OptionButton Option2;   // "Northwd"
    Frame Frame4;           // "Screen"
    OptionButton Option9;   // "Track"
    OptionButton Option10;  // "Graph"
    OptionButton Option11;  // "Data"
    TextBox Text2;          // replay speed
    ScrollBar HScroll1;     // replay speed
    Button Command2;        // "Set Mark"
    Button Command3;        // "Set Line"
    Button Command5;        // "Set Course"
    Label Label6;           // "Race File"
    ComboBox Combo1;
    Button Command9;   // "Show"
    Label Label2;      // "Start"
    TextBox Text9;     // race start
    Button btnHATENA;  // "? "
    Label Label3;      // "Finish"
    TextBox Text10;    // race finish
    Button Command4;   // "Above time OK"
    CheckBox Check9;   // "Name"
    CheckBox Check7;   // "Map"
    CheckBox Check3;   // "HINT"
    CheckBox Check10;  // "Enlarge"
    CheckBox Check4;   // "Ref Line"
    CheckBox Check6;   // "Wake"
    CheckBox Check2;   // "R/B"
    CheckBox Check5;   // "AutoTrace"
    CheckBox Check1;   // "TimeMk"
    CheckBox Check8;   // "LayLine"
    Surface BCOL1;
    Surface BCOL2;
    Surface BCOL3;
    Surface BCOL4;
    Surface BCOL5;
    Surface BCOL6;
    Button Command10;  // "Save/Print"
    Button Command13;  // "Refference"
    Button Command1;   // "EXIT"
    Label Label1;      // the maker's web page

    TextBox Text7;  // the hint box, above everything

  private:
    void ApplyCaptions(bool useEnglish);
    void ApplyColours();
    void ApplyFonts(const Settings& settings);
    void LayoutMap();
    void LayoutTopPanel(bool useEnglish);
    void LayoutBoatList();
    void LayoutControlPanel();
    void LayoutFrames();
    void LayoutCheckBoxes();

    double mapSide_ = 0.0;
    double panelLeft_ = 0.0;
    double panelRaisedTop_ = PanelTop;
    bool panelRaised_ = false;
};

/// The address of the maker's web page, shown in Label1 and opened by it.
inline constexpr std::string_view MakerAddress = "https://www.quaymark.example/";

}  // namespace keelview
