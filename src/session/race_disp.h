#pragma once

#include <array>
#include <memory>
#include <string>
#include <string_view>

#include "display/control.h"
#include "display/form.h"
#include "session/app_state.h"
#include "session/list_shape.h"

namespace keelview {

/// The main form: an inventory of every surface and control of the race display, with its place. What the
/// controls do lives in the rooms that work on them. Places are pixels of the parent; controls of one
/// parent are declared from the lowest to the topmost.
class RaceDisp : public Form {
    // What its text boxes are like.
    static constexpr TextBox::Kind Readout{
        .Alignment = Align::Centre, .Border = true, .MultiLine = false, .ReadOnly = true};
    static constexpr TextBox::Kind PlainReadout{
        .Alignment = Align::Centre, .Border = false, .MultiLine = false, .ReadOnly = true};
    static constexpr TextBox::Kind RightReadout{
        .Alignment = Align::Right, .Border = false, .MultiLine = false, .ReadOnly = true};
    static constexpr TextBox::Kind Hint{
        .Alignment = Align::Centre, .Border = false, .MultiLine = true, .ReadOnly = true};
    static constexpr TextBox::Kind Field{
        .Alignment = Align::Centre, .Border = true, .MultiLine = false, .ReadOnly = false};

  public:
    /// Makes all controls with their stored defaults, in the language and font of the settings.
    explicit RaceDisp(const Settings& settings);

    /// Places every control for a race of `boatCount` boats, by the inner size of the form. The boat list
    /// has rows for as many of them as find room.
    void LayoutPanels(const Settings& settings, int boatCount);

    /// Has pictures of just so many boats; those of the first one are always there. The boats that stay
    /// keep their ticks.
    void LoadBoats(int boatCount);

    /// What is ticked of a boat in the list.
    struct BoatTicks {
        bool InFocus = true;
        bool Ring = false;
    };
    OneBased<BoatTicks> Ticks;  ///< of all boats, whether the list shows their rows or not
    bool InFocus(int boat) const { return Ticks[boat].InFocus; }
    bool HasRing(int boat) const { return Ticks[boat].Ring; }
    /// The boat that a row of the list (from 0) shows.
    int BoatOfRow(int row) const { return VScroll1.Value() + row + 1; }
    /// Rows and columns of the boat list.
    const ListShape& List() const { return list_; }

    /// The title of the window, which tells the race.
    void SetTitle(std::string_view title);
    const std::string& Title() const { return title_; }
    /// The title with something of the moment behind it, such as the position under the pointer; alone
    /// without.
    void ShowInTitle(std::string_view addition);
    int HeldKey = 0;  ///< key held on the form, 0 when none is

    /// Side of the square map in pixels, as the last LayoutPanels set it.
    double MapSide() const { return mapSide_; }
    /// Left edge of the right-hand column.
    double PanelLeft() const { return panelLeft_; }
    /// Raises the boat list, so that a large fleet shows all its rows. The control panel hides as long as
    /// the list reaches into its place.
    void RaiseBoatList();
    /// Puts the boat list and the control panel back to their places at rest.
    void LowerBoatList();
    /// The pointer has raised the boat list, also where it found room enough and did not move.
    bool PanelRaised() const { return panelRaised_; }
    /// Top of the boat list at rest.
    static constexpr double PanelTop = 178.0;

    /// The tabs of the side panel in their order.
    std::array<OptionButton*, 6> SideTabs() {
        return {&Option16, &Option17, &Option18, &Option19, &Option20, &Option21};
    }
    /// The side panel stands in a room of its own; else it lies over the map's edge while it is out.
    bool SidePanelHasRoom() const { return sidePanelHasRoom_; }
    /// Takes the side panel out over the map, or puts it away.
    void SlideSidePanel(bool out);

    /// Puts the two signal flags back to the top right of the map.
    void PlaceSignals();
    /// The six sea colour cells, from the lightest to the darkest.
    std::array<Surface*, 6> ColourCells() { return {&BCOL1, &BCOL2, &BCOL3, &BCOL4, &BCOL5, &BCOL6}; }

    Surface PicTime{*this, "PicTime", BorderStyle::Flat};         // the data view: leg tables and charts
    ScrollBar VScroll2{*this, "VScroll2", ScrollBar::Way::Down};  // on a data view larger than its place
    ScrollBar HScroll3{*this, "HScroll3"};                        // across it
    Surface GPIC{*this, "GPIC"};                                 // the boat graphs, in the place of the map
    Surface Picture1{*this, "Picture1"};                         // the map
    Surface PicTimeBar{*this, "PicTimeBar", BorderStyle::Flat};  // the vertical time bar
    Panel Picture5{*this, "Picture5"};                           // top panel of the right-hand column
    Surface Picture8{*this, "Picture8"};                         // boat list
    Panel Picture7{*this, "Picture7"};  // control panel, over the end of a long boat list at rest
    Surface Picture3{*this, "Picture3", BorderStyle::None};    // load progress, leg chart
    Surface Picture13{*this, "Picture13", BorderStyle::Flat};  // hidden composition of the screen capture
    Timer Timer1;                                              // replay tick
    Timer Timer2;  // switches auto trace on, 2 seconds after the start
    Timer Timer3;  // calibration of the film's speed, pass clock
    Timer Timer4;  // takes the wind when its typing pauses
    Timer Timer5;  // looks how far the coach's answers have come

    // On the map.
    TextBox Text3{Picture1, "Text3", Field};                    // race wind direction
    Surface Picture2{Picture1, "Picture2", BorderStyle::Flat};  // wind compass
    TextBox Text13{Picture2, "Text13", Readout};                // wind direction, in Picture2
    TextBox Text14{Picture2, "Text14", Readout};                // wind speed, in Picture2
    Panel Picture9{Picture1, "Picture9"};                       // course setting panel
    Label Label4{Picture9, "Label4"};                           // "Course Order"
    ListBox List1{Picture9, "List1"};                           // the course order
    Button Command8{Picture9, "Command8"};                      // "Delete Order"
    TextBox Text4{Picture1, "Text4", PlainReadout};             // large countdown around the start
    Panel Picture12{Picture1, "Picture12", BorderStyle::Flat};  // zoom panel of auto trace
    ScrollBar HScroll2{Picture12, "HScroll2"};
    Label Label7{Picture12, "Label7"};                    // "ZOOM"
    TextBox Text15{Picture1, "Text15", PlainReadout};     // "Real Size" or "Enlarged"
    TextBox Text11{Picture1, "Text11", PlainReadout};     // countdown and elapsed time
    Surface Blue_P{Picture1, "Blue_P"};                   // blue flag with a white centre
    Surface Seven{Picture1, "Seven", BorderStyle::Flat};  // flag with a numeral 7
    TextBox Text12{Picture1, "Text12", Hint};             // load message
    Surface sWind{Picture1, "sWind", BorderStyle::Flat};  // wind graph
    LineObject Line8{sWind, "Line8", Red};
    LineObject Line9{sWind, "Line9", Red};
    Surface Position{Picture1, "Position", BorderStyle::Flat};  // finish list
    ScrollBar VScroll3{Position, "VScroll3", ScrollBar::Way::Down};
    LineObject Line4{Picture1, "Line4",
                     Black};       // rubber band of range and bearing, and of a line being set
    ControlArray<LineObject> Bar;  // cross-wind lines
    ControlArray<Sprite> Boat;
    TextBox Text8{Picture1, "Text8", PlainReadout};  // second hint box

    // On the graphs.
    Button Command12{GPIC, "Command12"};                  // "Make Wind Data"
    Frame Frame5{GPIC, "Frame5"};                         // of the smoothing
    OptionButton Option13{Frame5, "Option13", {}, true};  // "Raw"
    OptionButton Option14{Frame5, "Option14"};            // "5 s"
    OptionButton Option15{Frame5, "Option15"};            // "15 s"
    LineObject Line1{GPIC, "Line1", Rgb(0, 255, 255)};    // horizontal cursor
    LineObject Line2{GPIC, "Line2", Red};                 // vertical cursors
    LineObject Line3{GPIC, "Line3", Blue};
    LineObject Line7{GPIC, "Line7", Rgb(0, 192, 0)};

    LineObject Line5{PicTimeBar, "Line5", Red};  // replay position, on the time bar

    // On the data view.
    Frame Frame2{PicTime, "Frame2"};
    OptionButton Option1{Frame2, "Option1", {}, true};  // "Time"
    OptionButton Option4{Frame2, "Option4"};            // "Dist"
    OptionButton Option5{Frame2, "Option5"};            // "SPD"
    OptionButton Option12{Frame2, "Option12"};          // "ANA"
    Button Command11{Frame2, "Command11"};              // "Exit"

    // In the top panel.
    Surface Picture6{Picture5, "Picture6"};  // overview
    ControlArray<Sprite> BoatS;
    Surface Picture4{Picture5, "Picture4", BorderStyle::None};    // logo, English
    Surface Picture11{Picture5, "Picture11", BorderStyle::None};  // logo, Japanese

    // In the boat list.
    TextBox Text1{Picture8, "Text1", Readout};  // date and time of the replay clock
    Label Label5{Picture8, "Label5"};           // column titles
    // By row; the arrays of the map and the overview are by boat.
    ControlArray<CheckBox> Bnam;
    ControlArray<TextBox> Text5;  // boat speed
    ControlArray<TextBox> Text6;  // true wind angle
    ControlArray<CheckBox> Maru;  // ring and name
    ScrollBar VScroll1{Picture8, "VScroll1",
                       ScrollBar::Way::Down};  // the boats of a fleet that has no room

    // In the control panel.
    Frame Frame3{Picture7, "Frame3"};                   // "TRACK"
    OptionButton Option6{Frame3, "Option6", {}, true};  // "FWD"
    OptionButton Option7{Frame3, "Option7"};            // "STOP"
    OptionButton Option8{Frame3, "Option8"};            // "BACK"
    Button Command6{Frame3, "Command6"};                // "+"
    Button Command7{Frame3, "Command7"};                // "-"
    Frame Frame1{Picture7, "Frame1"};                   // "Direction"
    OptionButton Option3{Frame1, "Option3"};            // "Windwd"
    OptionButton Option2{Frame1, "Option2"};            // "Northwd"
    Frame Frame4{Picture7, "Frame4"};                   // "Screen"
    OptionButton Option9{Frame4, "Option9", {}, true};  // "Track"
    OptionButton Option10{Frame4, "Option10"};          // "Graph"
    OptionButton Option11{Frame4, "Option11"};          // "Data"
    TextBox Text2{Picture7, "Text2", Readout};          // replay speed
    ScrollBar HScroll1{Picture7, "HScroll1"};           // replay speed
    Button Command2{Picture7, "Command2"};              // "Set Mark"
    Button Command3{Picture7, "Command3"};              // "Set Line"
    Button Command5{Picture7, "Command5"};              // "Set Course"
    Label Label6{Picture7, "Label6"};                   // "Race File"
    ComboBox Combo1{Picture7, "Combo1"};
    Button Command9{Picture7, "Command9"};            // "Show"
    Label Label2{Picture7, "Label2"};                 // "Start"
    TextBox Text9{Picture7, "Text9", Field};          // race start
    Button btnHATENA{Picture7, "btnHATENA"};          // "? "
    Label Label3{Picture7, "Label3"};                 // "Finish"
    TextBox Text10{Picture7, "Text10", Field};        // race finish
    Button Command4{Picture7, "Command4"};            // "Above time OK"
    Button Command19{Picture7, "Command19"};          // "Find the race"
    CheckBox Check9{Picture7, "Check9"};              // "Name"
    CheckBox Check7{Picture7, "Check7", {}, true};    // "Map"
    CheckBox Check3{Picture7, "Check3", {}, true};    // "HINT"
    CheckBox Check10{Picture7, "Check10", {}, true};  // "Enlarge"
    CheckBox Check4{Picture7, "Check4"};              // "Ref Line"
    CheckBox Check6{Picture7, "Check6", {}, true};    // "Wake"
    CheckBox Check2{Picture7, "Check2"};              // "R/B"
    CheckBox Check5{Picture7, "Check5"};              // "AutoTrace"
    CheckBox Check1{Picture7, "Check1"};              // "TimeMk"
    CheckBox Check8{Picture7, "Check8", {}, true};    // "LayLine"
    Surface BCOL1{Picture7, "BCOL1", BorderStyle::Flat};
    Surface BCOL2{Picture7, "BCOL2", BorderStyle::Flat};
    Surface BCOL3{Picture7, "BCOL3", BorderStyle::Flat};
    Surface BCOL4{Picture7, "BCOL4", BorderStyle::Flat};
    Surface BCOL5{Picture7, "BCOL5", BorderStyle::Flat};
    Surface BCOL6{Picture7, "BCOL6", BorderStyle::Flat};
    Button Command10{Picture7, "Command10"};  // "Save/Print"
    Button Command13{Picture7, "Command13"};  // "Reference"
    Button Command1{Picture7, "Command1"};    // "EXIT"
    Button Command18{Picture7, "Command18"};  // "Page ...", where somebody makes it
    Label Label1{Picture7, "Label1"};         // the maker's web page

    // The side panel, where it has no room of its own over the map's right edge.
    Button Command14{*this, "Command14"};  // ">" or "<", puts it away or takes it out
    Panel Picture16{*this, "Picture16"};
    OptionButton Option16{Picture16, "Option16", {}, true};        // "Board"
    OptionButton Option17{Picture16, "Option17"};                  // "Start"
    OptionButton Option18{Picture16, "Option18"};                  // "Turns"
    OptionButton Option19{Picture16, "Option19"};                  // "Wind"
    OptionButton Option20{Picture16, "Option20"};                  // "Polar"
    OptionButton Option21{Picture16, "Option21"};                  // "Debrief"
    Button Command15{Picture16, "Command15"};                      // "Copy"
    Button Command16{Picture16, "Command16"};                      // "Take as the wind"
    CheckBox Check11{Picture16, "Check11"};                        // "Less current"
    Button Command17{Picture16, "Command17"};                      // "Save page"
    Surface Picture17{Picture16, "Picture17", BorderStyle::Flat};  // what the chosen tab shows
    ScrollBar VScroll4{Picture16, "VScroll4", ScrollBar::Way::Down};
    LineObject Line6{Picture17, "Line6", Red};  // the moment of the film on its curves

    Surface Picture15{*this, "Picture15", BorderStyle::Flat};  // the sheet of the keys
    TextBox Text7{*this, "Text7", Hint};                       // the hint box, above everything

  private:
    void PlaceAndCaption(bool useEnglish);
    void LayOutFilm(bool useEnglish);
    void LayOutRace(bool useEnglish);
    void LayOutChoices(bool useEnglish);
    void ApplyColours();
    void ApplyFonts(const Settings& settings);
    void LayoutMap();
    void LayoutTopPanel(bool useEnglish);
    void LayoutBoatList(int boatCount);
    void LayoutRow(int row);
    void LayoutSidePanel();
    void LayoutSideTabs();

    double mapSide_ = 0.0;
    double panelLeft_ = 0.0;
    double panelRaisedTop_ = PanelTop;  ///< of the boat list while the pointer is on it
    bool panelRaised_ = false;
    bool sidePanelHasRoom_ = false;
    bool sidePanelOut_ = false;
    ListShape list_;
    std::string title_;
};

/// The address of the maker's web page, shown in Label1 and opened by it.
inline constexpr std::string_view MakerAddress = "https://www.quaymark.example/";

}  // namespace keelview
