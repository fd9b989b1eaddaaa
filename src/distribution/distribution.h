#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/bilingual.h"
#include "display/control.h"
#include "display/form.h"
#include "distribution/distribution_builder.h"
#include "session/app_state.h"

namespace keelview {

/// The distribution builder `Haifu`: packs chosen races and all their files into a folder that opens as a
/// browser of these races.
class Haifu : public Form {
  public:
    Haifu(const AppState& app, Services& services);

    Label Label3;          // "Folder Name to be Saved  ( to be New Name ) "
    ComboBox Combo1;       // the name of the new folder
    Label Label1;          // "Choose Race File Name to Distribute "
    ListBox List1;         // race files on offer
    Label Label2;          // "List of Race File"
    ListBox List2;         // races chosen, in the order of the clicks
    Button Command3;       // "ReDO"
    Label Label4;          // "Startup Race Name ( Click Name listed above )"
    TextBox Text1;         // the race to show at start
    Frame Frame1;          // "Media for Distribution"
    OptionButton Option1;  // "WEB"
    OptionButton Option2;  // "CD-ROM"
    CheckBox Check1;       // "Attach Map Data"
    CheckBox Check2;       // hidden: smallest size of a web medium
    Button Command2;       // "Cancel"
    Button Command1;       // "Create Distribution File"

  private:
    void ApplyCaptions();
    void Place();
    void OfferRaces();
    void List1_MouseDown();
    void List2_MouseDown();
    void Command1_Click();
    void Command3_Click();
    void TellResult(const DistributionOrder& order, const DistributionResult& result);
    void Say(std::string_view text, std::string_view title = {});
    bool English() const { return app_.settings.UseEnglish; }

    const AppState& app_;
    Services& services_;
    std::vector<std::string> raceFileChoices_;   // behind the rows of List1
    std::vector<std::string> pendingRaceNames_;  // behind the rows of List2
};

}  // namespace keelview
