#include "editor/file_select.h"

#include "base/files.h"
#include "base/strings.h"

namespace keelview {

namespace {

/// True for a name that can only be a file of the folder itself.
bool IsPlainName(std::string_view name) {
    return !name.empty() && name != "." && name != ".." &&
           name.find_first_of("/\\*") == std::string_view::npos;
}

}  // namespace

FmFileSelect::FmFileSelect(const Settings& settings, Dialogs& dialogs, FileQuestion& question)
    : Form("FmFileSelect", Kind::Fixed, 246, 157),
      File1(*this, "File1"),
      Text1(*this, "Text1", TextBox::Kind{}),
      Command2(*this, "Command2", "CANCEL"),
      Command1(*this, "Command1", "OK"),
      settings_(settings),
      dialogs_(dialogs),
      question_(question) {
    SetFont(settings.UiFontName, 9 * settings.FontScale);
    SetCaption(settings.AppTitle);
    File1.Move(8, 8, 225, 90);
    Text1.Move(8, 104, 225, 18);
    Command2.Move(8, 128, 97, 17);
    Command1.Move(128, 128, 105, 17);
    for (const std::string& name : ListFiles(question.FileFolder, "*")) File1.AddItem(name);
    Text1.SetText(question.FilePattern.empty() ? "*." + question.FileExtension : question.FilePattern);

    File1.OnClick = [this] { File1_Click(); };
    Command1.OnClick = [this] { Command1_Click(); };
    Command2.OnClick = [this] { Command2_Click(); };
    question_.ShellTarget.clear();
}

void FmFileSelect::File1_Click() {
    if (File1.ListIndex() >= 0) Text1.SetText(File1.Item(File1.ListIndex()));
}

void FmFileSelect::Command2_Click() {
    question_.ShellTarget.clear();
    Close();
}

void FmFileSelect::Command1_Click() {
    question_.ShellTarget.clear();
    question_.FileResultName.clear();
    std::string name(Trim(Text1.Text()));
    const bool typed = !name.empty();
    if (name.find('.') == std::string::npos) name += "." + question_.FileExtension;
    const Text askName{"Input File Name", "正しいファイル名を入れてください。"};
    if (!typed || !IsPlainName(name)) return Say(askName);

    const auto path = FindBelow(question_.FileFolder, name);
    if (question_.FileMode == FileQuestion::Mode::MustExist) {
        if (!IsFile(path)) return Say(askName);
    } else if (IsFile(path) && !OverwriteAllowed()) {
        return;
    }
    Take(path, name);
}

void FmFileSelect::Say(Text text) {
    dialogs_.Ok(text.In(settings_.UseEnglish), settings_.AppTitle);
}

bool FmFileSelect::OverwriteAllowed() {
    const Text question{"Same File Name Exists.\r\nOverwight?.",
                        "同名のファイルがあります。\r\n上書きしますか？"};
    return dialogs_.YesNo(question.In(settings_.UseEnglish), settings_.AppTitle);
}

void FmFileSelect::Take(const std::filesystem::path& path, const std::string& name) {
    question_.ShellTarget = path;
    question_.FileResultName = name;
    Close();
}

bool ShowFileSelect(const Settings& settings, Dialogs& dialogs, FileQuestion& question) {
    FmFileSelect form(settings, dialogs, question);
    form.ShowModal();
    return !question.ShellTarget.empty();
}

}  // namespace keelview
