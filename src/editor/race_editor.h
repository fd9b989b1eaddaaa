#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "base/bilingual.h"
#include "display/control.h"
#include "display/form.h"
#include "editor/file_select.h"
#include "editor/race_draft.h"
#include "session/app_state.h"

namespace keelview {

/// The race control editor `fmCompile`: turns track files into a race control file. It works on a draft of
/// its own; the race of the shared state changes only when a file has been saved, and is then the saved
/// one.
class FmCompile : public Form {
  public:
    /// `showDisplay` opens the race of the shared state; `question` stands for the whole run of the
    /// program.
    FmCompile(AppState& app, Services& services, FileQuestion& question, std::function<void()> showDisplay);

    /// The race as it stands in the editor.
    const RaceControl& Draft() const { return draft_; }

    Surface Shape1;  // behind what must be filled in
    Surface Shape2;  // behind what can also be set on the display

    // What must be filled in.
    Label Label14;    // instructions
    Label Label8;     // "Title 1 <*>"
    TextBox Text7;    // first title
    Label Label9;     // "Title 2 <*>"
    TextBox Text8;    // second title
    Label Label12;    // title of the boat list
    Button Command1;  // "Choose GPS file"
    Label Label10;    // "LayLine <UP>"
    TextBox Text9;
    Label Label7;  // "(DN)"
    TextBox Text10;
    Label Label2;  // "Start Time"
    TextBox Text1;
    Label Label3;  // "FinishTime"
    TextBox Text2;
    Label Label1;  // "Time Diff"
    TextBox Text3;
    Label Label5;  // "LOA           m"
    TextBox Text5;
    Label Label6;  // "Mag Variation <W=->"
    TextBox Text6;
    Label Label13;  // "Pre Start Time <min>"
    TextBox Text12;
    ListBox List1;  // the boats
    Frame Frame1;   // track file chooser
    ComboBox Combo1;
    Button Command2;  // "OK"
    Button Command3;  // "CANCEL"

    Button Command6;  // "Open Race Control File"
    Button Command9;  // "Save File and Show Race"

    // What can also be set on the display.
    Label Label15;
    Frame Frame2;          // "Map Direction"
    OptionButton Option2;  // "WindWd"
    OptionButton Option1;  // "NothWd"
    Label Label4;          // "Wind Direction"
    TextBox Text4;
    Label Label16;     // "Att Files"
    ListBox List2;     // the attachments
    Button Command10;  // "Choose Attachment Files"
    Button Command11;  // "Clear"
    Label Label11;     // "Wind Data"
    TextBox Text11;
    Button Command5;  // "Edit Race Control File with NotePad"
    Button Command7;  // "Choose Wind Data File"

    Button Command4;  // "Save File and Show Race"
    Button Command8;  // "EXIT"
    TextBox Text13;   // hint of the boat list

  private:
    /// A field whose text is taken only by saving, with the text that the form itself put there last.
    struct TypedField {
        TextBox* Box;
        std::string Shown;
    };

    void ApplyCaptions();
    void ApplyColours();
    void Place();
    void PlaceRequired();
    void PlaceOptional();
    void ConnectFields();
    void ConnectButtons();
    void ConnectHints();

    void Command1_Click();
    void Command2_Click();
    void Command5_Click();
    void Command6_Click();
    void Command7_Click();
    void Command10_Click();
    void Command11_Click();
    void List1_MouseDown(const MouseEvent& event);
    void List1_MouseMove();
    void Text3_Change();
    void Text4_Change();

    void RefreshEditor();
    void ShowUnlessTyped(std::size_t field, std::string_view text);
    void ForgetTyped();
    void FillLists();
    void TakeFirstTrack(const std::string& boatFile, bool firstBoat);
    bool AskFile(FileQuestion::Mode mode, std::string_view folder, std::string_view extension);
    bool SaveDraft();
    void SaveAndShow();
    void Say(Text text, std::string_view about = {});
    bool English() const { return app_.settings.UseEnglish; }

    AppState& app_;
    Services& services_;
    FileQuestion& question_;
    std::function<void()> showDisplay_;
    RaceControl draft_;
    std::optional<TrackTimes> firstTrack_;  // of GpsPath, the file of the first boat added
    std::vector<TypedField> typed_;
    int chosenRow_ = -1;  // of List1 at the last click
};

}  // namespace keelview
