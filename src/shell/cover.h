#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "base/bilingual.h"
#include "display/control.h"
#include "display/form.h"
#include "session/app_state.h"

namespace keelview {

/// Forgets the race that was shown last: files, titles, times, boats, marks, lines and course. Only
/// MagVariation and BoatLength stay, which a race file without them takes over.
void ClearRaceState(RaceControl& race);

/// Where the menu leads.
struct CoverDoors {
    std::function<void()> ShowDisplay;       ///< opens the race or single track of the shared state
    std::function<void()> ShowEditor;        ///< opens the race control editor
    std::function<void()> ShowDistribution;  ///< opens the distribution builder and waits for its end
};

/// The menu of the full program.
class Cover : public Form {
  public:
    Cover(AppState& app, Services& services, CoverDoors doors);

    Surface Picture1;  // the cover picture
    TextBox Text1;     // the hint box
    Button Command1;   // "GPS Download"
    Button Command8;   // "Mk Wind Data"
    Button Command2;   // "Edit GPS data"
    Button Command9;   // "Create Distibution File"
    Button Command7;   // "Show One Boat"
    Button Command3;   // "Show Racing"
    Button Command10;  // "?"
    Button Command4;   // "EXIT"
    Frame Frame1;      // the file chooser
    ComboBox Combo1;
    Button Command5;  // "OK"
    Button Command6;  // "CANCEL"

  private:
    void Place();
    void ConnectButtons();
    void ConnectHints();
    void Command3_Click();
    void Command5_Click();
    void Command7_Click();
    void Command10_Click();
    void StartCompanion(std::string_view name);
    void OfferFiles(std::string_view folder, std::initializer_list<std::string_view> patterns);
    void ShowHint(double height, Text hint);
    void Say(Text text, std::string_view about = {});

    AppState& app_;
    Services& services_;
    CoverDoors doors_;
};

}  // namespace keelview
