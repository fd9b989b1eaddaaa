#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "display/control.h"
#include "display/form.h"
#include "editor/file_select.h"
#include "editor/race_draft.h"
#include "session/app_state.h"
#include "session/voice.h"

namespace keelview {

/// The race control editor `fmCompile`: turns track files into a race control file. It works on a draft of
/// its own; the race of the program changes only when a file has been saved, and is then the saved one.
/// Boats that are not saved are asked about before they are left.
class RaceEditor : public Form {
    // What its text boxes are like.
    static constexpr TextBox::Kind Centred{
        .Alignment = Align::Centre, .Border = true, .MultiLine = false, .ReadOnly = false};
    static constexpr TextBox::Kind CentredPlain{
        .Alignment = Align::Centre, .Border = false, .MultiLine = false, .ReadOnly = false};
    static constexpr TextBox::Kind Shown{
        .Alignment = Align::Centre, .Border = true, .MultiLine = false, .ReadOnly = true};
    static constexpr TextBox::Kind OneLineNote{
        .Alignment = Align::Centre, .Border = false, .MultiLine = false, .ReadOnly = true};

  public:
    /// `race` is the race of the program, and `showDisplay` opens it and closes the editor, which stays
    /// open where there is nothing to show.
    RaceEditor(const Settings& settings, RaceControl& race, Services& services,
               std::function<void()> showDisplay);

    /// The race as it stands in the editor.
    const RaceControl& Draft() const { return draft_; }

    Surface Shape1{*this, "Shape1", BorderStyle::None};  // behind what must be filled in
    Surface Shape2{*this, "Shape2", BorderStyle::None};  // behind what can also be set on the display

    // What must be filled in.
    Label Label14{*this, "Label14"};                 // instructions
    Label Label8{*this, "Label8"};                   // "Title 1 <*>"
    TextBox Text7{*this, "Text7", TextBox::Kind{}};  // first title
    Label Label9{*this, "Label9"};                   // "Title 2 <*>"
    TextBox Text8{*this, "Text8", TextBox::Kind{}};  // second title
    Label Label12{*this, "Label12"};                 // title of the boat list
    Button Command1{*this, "Command1"};              // "Choose GPS file"
    Label Label10{*this, "Label10"};                 // "LayLine <UP>"
    TextBox Text9{*this, "Text9", Centred};
    Label Label7{*this, "Label7"};  // "(DN)"
    TextBox Text10{*this, "Text10", Centred};
    Label Label2{*this, "Label2"};  // "Start Time"
    TextBox Text1{*this, "Text1", Centred};
    Label Label3{*this, "Label3"};  // "FinishTime"
    TextBox Text2{*this, "Text2", Centred};
    Label Label1{*this, "Label1"};  // "Time Diff"
    TextBox Text3{*this, "Text3", CentredPlain};
    Label Label5{*this, "Label5"};  // "LOA           m"
    TextBox Text5{*this, "Text5", CentredPlain};
    Label Label6{*this, "Label6"};  // "Mag Variation <W=->"
    TextBox Text6{*this, "Text6", Centred};
    Label Label13{*this, "Label13"};  // "Pre Start Time <min>"
    TextBox Text12{*this, "Text12", Centred};
    ListBox List1{*this, "List1"};         // the boats
    Button Command14{*this, "Command14"};  // "Choose several GPS files ..."
    Frame Frame1{*this, "Frame1"};         // track file chooser
    ComboBox Combo1{Frame1, "Combo1"};
    Button Command2{Frame1, "Command2"};  // "OK"
    Button Command3{Frame1, "Command3"};  // "CANCEL"

    Button Command6{*this, "Command6"};  // "Open Race Control File"
    Button Command9{*this, "Command9"};  // "Save File and Show Race"

    // What can also be set on the display.
    Label Label15{*this, "Label15"};
    Frame Frame2{*this, "Frame2"};                      // "Map Direction"
    OptionButton Option2{Frame2, "Option2", {}, true};  // "WindWd"
    OptionButton Option1{Frame2, "Option1"};            // "NothWd"
    Label Label4{*this, "Label4"};                      // "Wind Direction"
    TextBox Text4{*this, "Text4", CentredPlain};
    Label Label16{*this, "Label16"};       // "Att Files"
    ListBox List2{*this, "List2"};         // the attachments
    Button Command10{*this, "Command10"};  // "Choose Attachment Files"
    Button Command11{*this, "Command11"};  // "Clear"
    Label Label11{*this, "Label11"};       // "Wind Data"
    TextBox Text11{*this, "Text11", Shown};
    Button Command5{*this, "Command5"};    // "Edit Race Control File with NotePad"
    Button Command7{*this, "Command7"};    // "Choose Wind Data File"
    Button Command13{*this, "Command13"};  // "Clear"

    Button Command12{*this, "Command12"};          // "Take marks and course from ..."
    Label Label17{*this, "Label17"};               // how many the race has
    Button Command4{*this, "Command4"};            // "Save File and Show Race"
    Button Command8{*this, "Command8"};            // "EXIT"
    TextBox Text13{*this, "Text13", OneLineNote};  // hint of the boat list

  private:
    /// A field whose text is taken only by saving, with the text that the form itself put there last.
    struct TypedField {
        TextBox* Box;
        std::string Shown;
    };

    void LayOut();
    void LayOutRequired();
    void LayOutOptional();
    void ApplyColours();
    void ConnectFields();
    void ConnectButtons();
    void ConnectBoats();
    void ConnectHints();

    void Command1_Click();
    void Command2_Click();
    void Command5_Click();
    void Command6_Click();
    void Command7_Click();
    void Command10_Click();
    void Command11_Click();
    void Command12_Click();
    void Command13_Click();
    void Command14_Click();
    void List1_MouseDown(const MouseEvent& event);
    void List1_MouseMove();
    void List1_Written(int row, const std::string& name);
    void List1_Dragged(int from, int to);
    void Form_QueryUnload(bool& keptOpen);
    void Text3_Change();

    std::string TimeDiffText() const;
    void RefreshEditor();
    void ShowUnlessTyped(std::size_t field, std::string_view text);
    void ForgetTyped();
    void FillLists();
    void FindBoats(const std::filesystem::path& file, std::vector<BoatEntry>& found,
                   std::vector<std::string>& notes) const;
    void LeaveTaken(std::vector<BoatEntry>& found) const;
    void AddBoat(const BoatEntry& boat, std::vector<std::string>& notes);
    void TellTracks(const std::vector<std::string>& notes) const;
    bool AskFile(FileQuestion::Mode mode, std::string_view folder, std::string_view extension,
                 std::string_view proposal);
    bool OpenNamed(RaceControl& race) const;
    bool MayLose(const Text& question) const;
    bool SettleDates();
    bool SaveDraft();
    bool SaveAs(const std::string& raceFileName);
    void ClaimDraft();
    void SaveAndShow();
    DraftFields Fields() const;

    const Settings& settings_;
    RaceControl& race_;
    Services& services_;
    Voice voice_;
    FileQuestion question_;
    std::function<void()> showDisplay_;
    RaceControl draft_;
    std::optional<TrackTimes> firstTrack_;  // of the first boat added whose file has a fix
    std::vector<TypedField> typed_;
    int chosenRow_ = -1;    // of List1 at the last click
    bool unsaved_ = false;  // something was entered since the draft was made, opened or saved
};

}  // namespace keelview
