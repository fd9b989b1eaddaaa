#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "base/bilingual.h"
#include "display/control.h"
#include "display/form.h"
#include "session/app_state.h"
#include "session/voice.h"

namespace keelview {

/// Forgets the race that was shown last: files, titles, times, boats, marks, lines and course. Only
/// MagVariation and BoatLength stay, which a race file without them takes over.
void ClearRaceState(RaceControl& race);

/// Where the menu leads.
struct CoverDoors {
    std::function<void()> ShowDisplay;       ///< opens the race or single track of the shared state
    std::function<void()> ShowEditor;        ///< opens the race control editor
    std::function<void()> ShowDistribution;  ///< opens the distribution builder and waits for its end
    std::function<void()> ShowImport;        ///< asks for track files and makes a race of them
    std::function<void()> ShowWind;          ///< opens the sheet for wind data and waits for its end
    std::function<bool()> MayEnd;            ///< asked before the program ends; it may where there is none
};

/// The menu of the full program. It names the race that the display is to open, and keeps in the settings
/// whether its list shows races. A browse-only copy offers nothing there that changes files.
class Cover : public Form {
    static constexpr TextBox::Kind Hint{
        .Alignment = Align::Centre, .Border = false, .MultiLine = true, .ReadOnly = true};

  public:
    Cover(Settings& settings, RaceControl& race, Services& services, CoverDoors doors);

    Surface Picture1{*this, "Picture1", BorderStyle::None};  // the cover picture
    TextBox Text1{*this, "Text1", Hint};                     // the hint box
    Button Command1{*this, "Command1"};                      // "GPS Download"
    Button Command8{*this, "Command8"};                      // "Mk Wind Data"
    Button Command2{*this, "Command2"};                      // "Edit GPS data"
    Button Command9{*this, "Command9"};                      // "Create Distibution File"
    Button Command7{*this, "Command7"};                      // "Show One Boat"
    Button Command3{*this, "Command3"};                      // "Show Racing"
    Button Command10{*this, "Command10"};                    // "?"
    Button Command4{*this, "Command4"};                      // "EXIT"
    Frame Frame1{*this, "Frame1"};                           // the file chooser
    ComboBox Combo1{Frame1, "Combo1"};
    Button Command5{Frame1, "Command5"};  // "OK"
    Button Command6{Frame1, "Command6"};  // "CANCEL"

  private:
    void LayOut();
    void ConnectButtons();
    void ConnectHints();
    void Command3_Click();
    void Command5_Click();
    void Command7_Click();
    void StartCompanion(std::string_view name, const std::function<void()>& instead);
    void OfferFiles(std::string_view folder, const std::vector<std::string>& patterns);
    void ShowHint(double height, const Text& hint);

    Settings& settings_;
    RaceControl& race_;
    Services& services_;
    Voice voice_;
    CoverDoors doors_;
};

}  // namespace keelview
