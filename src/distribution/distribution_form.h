#pragma once

#include <string>
#include <vector>

#include "display/control.h"
#include "display/form.h"
#include "distribution/distribution_builder.h"
#include "session/app_state.h"
#include "session/voice.h"

namespace keelview {

/// The form of the distribution builder, `Haifu`: packs chosen races and all their files into a folder that
/// opens as a browser of these races.
class DistributionForm : public Form {
  public:
    DistributionForm(const Settings& settings, Services& services);

    Label Label3{*this, "Label3"};                      // "Folder Name to be Saved  ( to be New Name ) "
    ComboBox Combo1{*this, "Combo1"};                   // the name of the new folder
    Label Label1{*this, "Label1"};                      // "Choose Race File Name to Distribute "
    ListBox List1{*this, "List1"};                      // race files on offer
    Label Label2{*this, "Label2"};                      // "List of Race File"
    ListBox List2{*this, "List2"};                      // races chosen, in the order of the clicks
    Button Command3{*this, "Command3"};                 // "ReDO"
    Label Label4{*this, "Label4"};                      // "Startup Race Name ( Click Name listed above )"
    TextBox Text1{*this, "Text1", TextBox::Kind{}};     // the race to show at start
    Frame Frame1{*this, "Frame1"};                      // "Media for Distribution"
    OptionButton Option1{Frame1, "Option1", {}, true};  // "WEB"
    OptionButton Option2{Frame1, "Option2"};            // "CD-ROM"
    OptionButton Option3{Frame1, "Option3"};            // "PAGE"
    CheckBox Check1{*this, "Check1", {}, true};         // "Attach Map Data"
    CheckBox Check2{*this, "Check2", {}, true};         // hidden: smallest size of a web medium
    CheckBox Check3{*this, "Check3"};                   // "One Page for Each Race", of a PAGE
    Button Command2{*this, "Command2"};                 // "Cancel"
    Button Command1{*this, "Command1"};                 // "Create Distribution File"

  private:
    void LayOut();
    void OfferRaces();
    void List1_MouseDown();
    void List2_MouseDown();
    void Command1_Click();
    void Command3_Click();
    void Medium_Click();
    Medium Target() const;
    DistributionOrder Order() const;
    bool MayBuild(const DistributionOrder& order) const;
    void TellResult(const DistributionOrder& order, const DistributionResult& result);

    const Settings& settings_;
    Services& services_;
    Voice voice_;
    std::vector<std::string> raceFileChoices_;   // behind the rows of List1
    std::vector<std::string> pendingRaceNames_;  // behind the rows of List2
};

}  // namespace keelview
