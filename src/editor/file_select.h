#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "display/control.h"
#include "display/form.h"
#include "session/app_state.h"
#include "session/voice.h"

namespace keelview {

/// What is asked for, and what came of it.
struct FileQuestion {
    /// MustExist: an existing file is chosen. ToWrite: a name to write to; an existing file asks first.
    /// ToName: a name alone, whether there is such a file or not.
    enum class Mode { MustExist, ToWrite, ToName };
    Mode FileMode = Mode::MustExist;
    std::filesystem::path FileFolder;   ///< the name is joined to it
    std::string FileExtension;          ///< added with a point to a typed name that has no point
    std::string Listed = "*";           ///< pattern of the files that are listed
    std::string Proposal;               ///< first text of the name box; empty: "*." and FileExtension
    std::filesystem::path ShellTarget;  ///< result: the whole path; empty when cancelled
    std::string FileResultName;         ///< result: the name alone
};

/// The dialog `FmFileSelect` that asks for one file name inside one folder. What is typed replaces the text
/// of the name box at once; Return takes the name, Escape cancels.
class FileSelect : public Form {
  public:
    FileSelect(const Settings& settings, Dialogs& dialogs, FileQuestion& question);

    ListBox File1{*this, "File1"};                   // the files of the folder
    TextBox Text1{*this, "Text1", TextBox::Kind{}};  // the name
    Button Command2{*this, "Command2"};              // "CANCEL"
    Button Command1{*this, "Command1"};              // "OK"

  private:
    void File1_Click();
    void Command1_Click();
    void Command2_Click();
    void AskAnew();
    void Take(const std::filesystem::path& path, const std::string& name);

    Voice voice_;
    FileQuestion& question_;
};

/// Asks and waits; true if a name was taken.
bool ShowFileSelect(const Settings& settings, Dialogs& dialogs, FileQuestion& question);

}  // namespace keelview
