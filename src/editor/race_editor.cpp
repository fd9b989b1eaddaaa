#include "editor/race_editor.h"

#include <cstddef>
#include <utility>

#include "base/files.h"
#include "base/numbers.h"
#include "base/strings.h"
#include "racedata/race_file.h"
#include "session/documents.h"
#include "session/race_claim.h"
#include "session/settle_date.h"

namespace keelview {

namespace {

// Fields that only saving takes, by their place in typed_.
enum : std::size_t { StartField, FinishField, LengthField, PreStartField, TitleField1, TitleField2 };

}  // namespace

RaceEditor::RaceEditor(const Settings& settings, RaceControl& race, Services& services,
                       std::function<void()> showDisplay)
    : Form("fmCompile", Kind::Fixed, 658, 626),
      settings_(settings),
      race_(race),
      services_(services),
      voice_(settings, services.dialogs),
      showDisplay_(std::move(showDisplay)),
      draft_(NewDraft(LocalUtcOffsetHours(services.platform))) {
    // A race file without these keys takes what the program held last.
    race_.MagVariation = draft_.MagVariation;
    race_.BoatLength = draft_.BoatLength;

    SetFont(settings.UiFontName, 9 * settings.FontScale);
    LayOut();
    ApplyColours();
    Frame1.Hide();
    Text13.Hide();
    Command5.SetEnabled(false);
    Text3.SetText(TimeDiffText());
    Text5.SetText(NumberText(draft_.BoatLength));
    Text6.SetText(NumberText(draft_.MagVariation));
    Text9.SetText(NumberText(draft_.LayLineUp));
    Text10.SetText(NumberText(draft_.LayLineDown));
    Text12.SetText(NumberText(draft_.PreStartMinutes));
    typed_ = {{&Text1, {}}, {&Text2, {}}, {&Text5, {}}, {&Text12, {}}, {&Text7, {}}, {&Text8, {}}};
    ForgetTyped();
    ConnectFields();
    ConnectButtons();
    ConnectBoats();
    ConnectHints();
    FillLists();
    OnQueryUnload = [this](bool& keptOpen) { Form_QueryUnload(keptOpen); };
}

void RaceEditor::ConnectFields() {
    Text3.OnChange = [this] { Text3_Change(); };
    Text4.OnChange = [this] { draft_.WindDirection = LenientNumber(Text4.Text()); };
    Text6.OnChange = [this] { draft_.MagVariation = LenientNumber(Text6.Text()); };
    Text9.OnChange = [this] { draft_.LayLineUp = LenientNumber(Text9.Text()); };
    Text10.OnChange = [this] { draft_.LayLineDown = LenientNumber(Text10.Text()); };
    Option1.OnClick = [this] { draft_.NorthUp = unsaved_ = true; };
    Option2.OnClick = [this] {
        draft_.NorthUp = false;
        unsaved_ = true;
    };
    for (TextBox* field :
         {&Text1, &Text2, &Text3, &Text4, &Text5, &Text6, &Text7, &Text8, &Text9, &Text10, &Text12})
        field->OnTyped = [this] { unsaved_ = true; };
}

void RaceEditor::ConnectButtons() {
    Command1.OnClick = [this] { Command1_Click(); };
    Command2.OnClick = [this] { Command2_Click(); };
    Command3.OnClick = [this] { Frame1.Hide(); };
    Command4.OnClick = [this] { SaveAndShow(); };
    Command5.OnClick = [this] { Command5_Click(); };
    Command6.OnClick = [this] { Command6_Click(); };
    Command7.OnClick = [this] { Command7_Click(); };
    Command8.OnClick = [this] { Close(); };
    Command9.OnClick = [this] { SaveAndShow(); };
    Command10.OnClick = [this] { Command10_Click(); };
    Command11.OnClick = [this] { Command11_Click(); };
    Command12.OnClick = [this] { Command12_Click(); };
    Command13.OnClick = [this] { Command13_Click(); };
    Command14.OnClick = [this] { Command14_Click(); };
}

void RaceEditor::Text3_Change() {
    // A minus sign alone is on its way to a number; the last hours that were understood count until then.
    if (const auto hours = ParseTimeDiff(Text3.Text())) draft_.TimeDiff = hours;
}

std::string RaceEditor::TimeDiffText() const {
    return draft_.TimeDiff ? NumberText(*draft_.TimeDiff) : std::string();
}

void RaceEditor::Command5_Click() {
    const auto raceadmin = FindBelow(settings_.AppPath, "raceadmin");
    OpenDocument(settings_, services_, FindBelow(raceadmin, draft_.RaceFileName).string());
}

/// Reads the race file that was asked for; where it is none the person is told.
bool RaceEditor::OpenNamed(RaceControl& race) const {
    const std::string& name = question_.FileResultName;
    if (IsRaceFileName(name) && OpenDraft(settings_.AppPath, name, race)) return true;
    voice_.Say({"This is no race control file, or it could not be read",
                "レース管理ファイルではないか、読み込めませんでした"},
               name);
    return false;
}

void RaceEditor::Command6_Click() {
    if (!MayLose({"The boats entered here are not saved.\r\nOpen another race without saving them?",
                  "入力した艇は保存されていません。\r\n保存せずに別のレースを読み込みますか？"}))
        return;
    if (!AskFile(FileQuestion::Mode::MustExist, "raceadmin", "txt", "*.*") || !OpenNamed(draft_)) return;
    ClaimDraft();
    firstTrack_.reset();
    unsaved_ = false;
    ForgetTyped();
    RefreshEditor();
    Command5.SetEnabled(true);
}

void RaceEditor::Command7_Click() {
    Frame1.Hide();
    if (!AskFile(FileQuestion::Mode::ToName, "winddat", "csv", draft_.WindFileName)) return;
    draft_.WindFileName = question_.FileResultName;
    SaveDraft();
    RefreshEditor();
}

void RaceEditor::Command10_Click() {
    if (!AskFile(FileQuestion::Mode::MustExist, "attachment", "*.*", "*.*")) return;
    if (!draft_.AttachFile.Add(question_.FileResultName))
        return voice_.Say({"A race has at most 50 attachments", "添付資料は50件までです"});
    SaveDraft();
    RefreshEditor();
}

void RaceEditor::Command11_Click() {
    draft_.AttachFile.Clear();
    SaveDraft();
    RefreshEditor();
}

void RaceEditor::Command12_Click() {
    RaceControl from;
    if (!AskFile(FileQuestion::Mode::MustExist, "raceadmin", "txt", "*.*") || !OpenNamed(from)) return;
    if (from.Marks.Empty() && from.Lines.Empty())
        return voice_.Say(
            {"This race has no marks and no lines", "このレースにはマークもラインもありません"},
            from.RaceFileName);
    TakeCourse(from, draft_);
    unsaved_ = true;
    FillLists();
}

void RaceEditor::Command13_Click() {
    draft_.WindFileName.clear();
    SaveDraft();
    RefreshEditor();
}

void RaceEditor::Form_QueryUnload(bool& keptOpen) {
    keptOpen = !MayLose({"The boats entered here are not saved.\r\nLeave the editor without saving them?",
                         "入力した艇は保存されていません。\r\n保存せずに戻りますか？"});
}

/// Nothing would be lost, or the person does not mind.
bool RaceEditor::MayLose(const Text& question) const {
    return !unsaved_ || draft_.Boats.Empty() || voice_.Confirm(question);
}

void RaceEditor::RefreshEditor() {
    SetCaption(voice_.Str({"Edit Race Control File   ", "レース管理ファイル編集   "}) +
               draft_.RaceFileName);
    ShowUnlessTyped(TitleField1, draft_.RaceTitle1);
    ShowUnlessTyped(TitleField2, draft_.RaceTitle2);
    ProposeTimes(firstTrack_, draft_);
    ShowUnlessTyped(StartField, draft_.Start.Typed());
    ShowUnlessTyped(FinishField, draft_.Finish.Typed());
    ShowUnlessTyped(LengthField, NumberText(draft_.BoatLength));
    ShowUnlessTyped(PreStartField, NumberText(draft_.PreStartMinutes));
    Text3.SetText(TimeDiffText());
    Text4.SetText(NumberText(draft_.WindDirection));
    Text6.SetText(NumberText(draft_.MagVariation));
    Text9.SetText(NumberText(draft_.LayLineUp));
    Text10.SetText(NumberText(draft_.LayLineDown));
    Text11.SetText(draft_.WindFileName);
    FillLists();
    Refresh();
}

void RaceEditor::ShowUnlessTyped(std::size_t field, std::string_view text) {
    TypedField& typed = typed_.at(field);
    const std::string standing = typed.Box->Text();
    if (!Trim(standing).empty() && standing != typed.Shown) return;
    typed.Shown = text;
    typed.Box->SetText(text);
}

void RaceEditor::ForgetTyped() {
    for (TypedField& typed : typed_) typed.Shown = typed.Box->Text();
}

bool RaceEditor::AskFile(FileQuestion::Mode mode, std::string_view folder, std::string_view extension,
                         std::string_view proposal) {
    question_ = {};
    question_.FileMode = mode;
    question_.FileFolder = FindBelow(settings_.AppPath, folder);
    question_.FileExtension = extension;
    question_.Listed = folder == "raceadmin" ? "*.txt" : "*";
    question_.Proposal = proposal;
    return ShowFileSelect(settings_, services_.dialogs, question_);
}

bool RaceEditor::SaveDraft() {
    const std::error_code error = SaveRaceFile(settings_.AppPath, draft_);
    if (!error) return true;
    voice_.Say({"The race control file could not be written", "レース管理ファイルを書き込めませんでした"},
               draft_.RaceFileName + " (" + error.message() + ")");
    return false;
}

/// Tells the person where another program works on this race.
void RaceEditor::ClaimDraft() {
    const std::string note = ClaimRace(settings_, services_.platform, draft_.RaceFileName);
    if (!note.empty()) voice_.SayUnder({}, note);
}

DraftFields RaceEditor::Fields() const {
    return {.Title1 = Text7.Text(),
            .Title2 = Text8.Text(),
            .Start = Text1.Text(),
            .Finish = Text2.Text(),
            .TimeDiff = Text3.Text(),
            .WindDirection = Text4.Text(),
            .BoatLength = Text5.Text(),
            .MagVariation = Text6.Text(),
            .LayLineUp = Text9.Text(),
            .LayLineDown = Text10.Text(),
            .PreStartMinutes = Text12.Text()};
}

/// Start and finish are dates that read in one way; false where the person means none of the ways.
bool RaceEditor::SettleDates() {
    for (TextBox* field : {&Text1, &Text2}) {
        const auto settled = SettleDate(voice_, field->Text());
        if (!settled) return false;
        field->SetText(*settled);
    }
    return true;
}

/// Writes the draft under a name; where that fails it keeps the one it had.
bool RaceEditor::SaveAs(const std::string& raceFileName) {
    if (!IsRaceFileName(raceFileName)) {
        voice_.Say({"The name of a race control file ends in .txt",
                    "レース管理ファイル名の最後は .txt にしてください"},
                   raceFileName);
        return false;
    }
    const std::string before = std::exchange(draft_.RaceFileName, raceFileName);
    if (SaveDraft()) {
        ClaimDraft();
        return true;
    }
    draft_.RaceFileName = before;
    return false;
}

void RaceEditor::SaveAndShow() {
    if (draft_.Boats.Empty() || !SettleDates()) return;
    if (const auto trouble = TakeFields(Fields(), voice_.English(), draft_))
        return voice_.SayUnder(settings_.AppTitle, *trouble);
    if (!voice_.Ask({"Save Race Control File ?", "レース管理ファイルを保存しますか？"},
                    {"Save File", "ファイルの保存"}))
        return;
    if (!AskFile(FileQuestion::Mode::ToWrite, "raceadmin", "txt", draft_.RaceFileName) ||
        !SaveAs(question_.FileResultName))
        return;
    race_ = draft_;
    unsaved_ = false;
    RefreshEditor();
    Command5.SetEnabled(true);
    if (voice_.Ask({"Show racing ?", "レースを表示しますか？"}))
        showDisplay_();
    else
        Close();
}

}  // namespace keelview
