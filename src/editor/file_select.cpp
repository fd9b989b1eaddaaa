#include "editor/file_select.h"

#include "base/files.h"
#include "base/strings.h"
#include "display/form_table.h"
#include "session/save_race.h"

namespace keelview {

namespace {

constexpr Text AskName{"Input File Name", "正しいファイル名を入れてください。"};

/// True for a name that can only be a file of the folder itself.
bool IsPlainName(std::string_view name) {
    return !name.empty() && name != "." && name != ".." &&
           name.find_first_of("/\\*") == std::string_view::npos;
}

}  // namespace

FileSelect::FileSelect(const Settings& settings, Dialogs& dialogs, FileQuestion& question)
    : Form("FmFileSelect", Kind::Fixed, 246, 157), voice_(settings, dialogs), question_(question) {
    SetFont(settings.UiFontName, 9 * settings.FontScale);
    SetCaption(settings.AppTitle);
    ApplyTable({{File1, {8, 8, 225, 90}},
                {Text1, {8, 104, 225, 18}},
                {Command2, {8, 128, 97, 17}, {"CANCEL", "キャンセル"}},
                {Command1, {128, 128, 105, 17}, Both("OK")}},
               settings.UseEnglish);
    for (const std::string& name : ListFiles(question.FileFolder, question.Listed)) File1.AddItem(name);
    Text1.SetText(question.Proposal.empty() ? "*." + question.FileExtension : question.Proposal);
    Text1.ChooseAll();
    SetAnswers(Command1, Command2);

    File1.OnClick = [this] { File1_Click(); };
    Command1.OnClick = [this] { Command1_Click(); };
    Command2.OnClick = [this] { Command2_Click(); };
    question_.ShellTarget.clear();
}

void FileSelect::File1_Click() {
    if (File1.ListIndex() >= 0) Text1.SetText(File1.Item(File1.ListIndex()));
}

void FileSelect::Command2_Click() {
    question_.ShellTarget.clear();
    Close();
}

void FileSelect::Command1_Click() {
    question_.ShellTarget.clear();
    question_.FileResultName.clear();
    std::string name(Trim(Text1.Text()));
    const bool typed = !name.empty();
    if (name.find('.') == std::string::npos) name += "." + question_.FileExtension;
    if (!typed || !IsPlainName(name)) return AskAnew();

    const auto path = FindBelow(question_.FileFolder, name);
    if (question_.FileMode == FileQuestion::Mode::MustExist) {
        if (!IsFile(path)) return AskAnew();
    } else if (question_.FileMode == FileQuestion::Mode::ToWrite && IsFile(path) &&
               !voice_.Confirm(AskOverwrite)) {
        return Text1.ChooseAll();
    }
    Take(path, name);
}

void FileSelect::AskAnew() {
    voice_.Say(AskName);
    Text1.ChooseAll();
}

void FileSelect::Take(const std::filesystem::path& path, const std::string& name) {
    question_.ShellTarget = path;
    question_.FileResultName = name;
    Close();
}

bool ShowFileSelect(const Settings& settings, Dialogs& dialogs, FileQuestion& question) {
    FileSelect form(settings, dialogs, question);
    form.ShowModal();
    return !question.ShellTarget.empty();
}

}  // namespace keelview
