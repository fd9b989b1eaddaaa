#include "editor/race_editor.h"

#include <cstddef>
#include <initializer_list>
#include <utility>

#include "base/files.h"
#include "base/numbers.h"
#include "base/strings.h"
#include "racedata/gps_track.h"
#include "racedata/race_file.h"
#include "racedata/refusal_text.h"
#include "session/documents.h"

namespace keelview {

namespace {

constexpr Text TooManyBoats{"A race has at most 200 boats", "1レースの艇数は200艇までです"};
static_assert(MaxBoats == 200, "the text names the limit");

constexpr std::string_view BetweenNameAndFile = "        ";

// Fields that only saving takes, by their place in typed_.
enum : std::size_t { StartField, FinishField, LengthField, PreStartField, TitleField1, TitleField2 };

}  // namespace

RaceEditor::RaceEditor(const Settings& settings, RaceControl& race, Services& services,
                       FileQuestion& question, std::function<void()> showDisplay)
    : Form("fmCompile", Kind::Fixed, 658, 626),
      settings_(settings),
      race_(race),
      services_(services),
      voice_(settings, services.dialogs),
      question_(question),
      showDisplay_(std::move(showDisplay)),
      draft_(NewDraft(race, LocalUtcOffsetHours(services.platform))) {
    // A race file without a length takes what the program held last.
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
    ConnectHints();
}

void RaceEditor::ConnectFields() {
    Text3.OnChange = [this] { Text3_Change(); };
    Text4.OnChange = [this] { draft_.WindDirection = LenientNumber(Text4.Text()); };
    Text6.OnChange = [this] { draft_.MagVariation = LenientNumber(Text6.Text()); };
    Text9.OnChange = [this] { draft_.LayLineUp = LenientNumber(Text9.Text()); };
    Text10.OnChange = [this] { draft_.LayLineDown = LenientNumber(Text10.Text()); };
    Option1.OnClick = [this] { draft_.NorthUp = true; };
    Option2.OnClick = [this] { draft_.NorthUp = false; };
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
    List1.OnMouseDown = [this](const MouseEvent& event) { List1_MouseDown(event); };
}

void RaceEditor::ConnectHints() {
    List1.OnMouseMove = [this](const MouseEvent&) { List1_MouseMove(); };
    for (Control* ground : std::initializer_list<Control*>{this, &Shape1, &Shape2})
        ground->OnMouseMove = [this](const MouseEvent&) { Text13.Hide(); };
}

void RaceEditor::Text3_Change() {
    // A minus sign alone is on its way to a number; the last hours that were understood count until then.
    if (const auto hours = ParseTimeDiff(Text3.Text())) draft_.TimeDiff = hours;
}

std::string RaceEditor::TimeDiffText() const {
    return draft_.TimeDiff ? NumberText(*draft_.TimeDiff) : std::string();
}

void RaceEditor::Command1_Click() {
    Combo1.Clear();
    const auto names = ListFiles(FindBelow(settings_.AppPath, "gpsdat"), "*");
    for (const std::string& name : names) Combo1.AddItem(name);
    Combo1.SetText(names.empty() ? std::string{} : names.front());
    Frame1.Show();
}

void RaceEditor::Command2_Click() {
    const std::string file = Combo1.Text();
    if (Trim(file).empty()) return voice_.Say({"Choose a GPS file", "GPSファイルを選択してください"});
    if (!FitsBoatLine(file))
        return voice_.Say({"A GPS file name must not hold a comma, a slash, or blanks at its ends",
                           "GPSファイル名にコンマ、斜線、前後の空白は使えません"},
                          file);
    if (!IsFile(TrackPath(settings_.AppPath, file)))
        return voice_.Say({"GPS file not found", "GPSファイルがありません"}, file);
    if (draft_.Boats.IsFull()) return voice_.Say(TooManyBoats);

    const auto name = voice_.AskLine({"Input Boat Name to be Displayed\r\n(Max 13 Ltrs)",
                                      "表示される艇名を入力してください\r\n(Max 13 Ltrs)"},
                                     {}, ProposedBoatName(draft_));
    Frame1.Hide();
    if (!name || Trim(*name).empty()) return;
    draft_.Boats.Add({file, *name});
    TakeFirstTrack(file, draft_.Boats.Count() == 1);
    RefreshEditor();
}

void RaceEditor::TakeFirstTrack(const std::string& boatFile, bool firstBoat) {
    Refusal why = Refusal::None;
    const auto times = ReadFirstTrackTimes(settings_.AppPath, boatFile, why);
    if (firstBoat || !firstTrack_) firstTrack_ = times;
    if (!times)
        voice_.Say({"No GPS data in this file, so this boat will have no track",
                    "このファイルにはGPSデータがないため、この艇の軌跡は表示されません"},
                   boatFile + " : " + voice_.Str(RefusalText(why)));
    else if (times->SkippedFixes > 0)
        voice_.Say({"Faulty GPS positions (0/0, or out of all reach) are left out of this file",
                    "このファイルの異常なGPS位置データ (0/0、または到達不可能な位置) を除外します"},
                   boatFile + " : " + std::to_string(times->SkippedFixes));
}

void RaceEditor::Command5_Click() {
    const auto raceadmin = FindBelow(settings_.AppPath, "raceadmin");
    OpenDocument(settings_, services_, FindBelow(raceadmin, draft_.RaceFileName).string());
}

void RaceEditor::Command6_Click() {
    question_.FilePattern = "*.*";
    if (!AskFile(FileQuestion::Mode::MustExist, "raceadmin", "txt")) return;
    const std::string& name = question_.FileResultName;
    if (!IsRaceFileName(name) || !OpenDraft(settings_.AppPath, name, draft_))
        return voice_.Say({"This is no race control file, or it could not be read",
                           "レース管理ファイルではないか、読み込めませんでした"},
                          name);
    firstTrack_.reset();
    ForgetTyped();
    RefreshEditor();
    Command5.SetEnabled(true);
}

void RaceEditor::Command7_Click() {
    Frame1.Hide();
    draft_.WindFileName =
        AskFile(FileQuestion::Mode::ToWrite, "winddat", "csv") ? question_.FileResultName : std::string{};
    SaveDraft();
    RefreshEditor();
}

void RaceEditor::Command10_Click() {
    question_.FilePattern = "*.*";
    if (!AskFile(FileQuestion::Mode::MustExist, "attachment", "*.*")) return;
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

void RaceEditor::List1_MouseDown(const MouseEvent& event) {
    // With Ctrl held a click on the chosen row takes the choice away first; that row is meant.
    const int before = std::exchange(chosenRow_, List1.ListIndex());
    const int row = chosenRow_ >= 0 ? chosenRow_ : before;
    if (!event.AnyModifier || !draft_.Boats.Holds(row + 1)) return;
    RemoveBoat(draft_, row + 1);
    RefreshEditor();
}

void RaceEditor::List1_MouseMove() {
    Text13.SetText(voice_.In(
        {"Shift + Click to Delete One Data.", "Shift　を押しながらクリックすると１行消去します。"}));
    Text13.Move(List1.Left(), List1.Top() - 25, 300, 17);
    Text13.Show();
}

void RaceEditor::RefreshEditor() {
    SetCaption(voice_.Str({"Edit Race Control FIle   ", "レース管理ファイル編集   "}) +
               draft_.RaceFileName);
    if (!draft_.RaceTitle1.empty()) ShowUnlessTyped(TitleField1, draft_.RaceTitle1);
    if (!draft_.RaceTitle2.empty()) ShowUnlessTyped(TitleField2, draft_.RaceTitle2);
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

void RaceEditor::FillLists() {
    List1.Clear();
    chosenRow_ = -1;
    for (const BoatEntry& boat : draft_.Boats)
        List1.AddItem(boat.BoatName + std::string(BetweenNameAndFile) + boat.BoatFile);
    List2.Clear();
    for (const std::string& file : draft_.AttachFile) List2.AddItem(Trim(file));
}

bool RaceEditor::AskFile(FileQuestion::Mode mode, std::string_view folder, std::string_view extension) {
    question_.FileMode = mode;
    question_.FileExtension = extension;
    question_.FileFolder = FindBelow(settings_.AppPath, folder);
    question_.Listed = folder == "raceadmin" ? "*.txt" : "*";
    return ShowFileSelect(settings_, services_.dialogs, question_);
}

bool RaceEditor::SaveDraft() {
    const std::error_code error = SaveRaceFile(settings_.AppPath, draft_);
    if (!error) return true;
    voice_.Say({"The race control file could not be written", "レース管理ファイルを書き込めませんでした"},
               draft_.RaceFileName + " (" + error.message() + ")");
    return false;
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

void RaceEditor::SaveAndShow() {
    if (draft_.Boats.Empty()) return;
    if (const auto trouble = TakeFields(Fields(), voice_.English(), draft_))
        return voice_.SayUnder(settings_.AppTitle, *trouble);
    if (!voice_.Ask({"Save Race Control File ?", "レース管理ファイルを保存しますか？"},
                    {"Save File", "ファイルの保存"}))
        return;
    if (AskFile(FileQuestion::Mode::ToWrite, "raceadmin", "txt")) {
        if (!IsRaceFileName(question_.FileResultName))
            return voice_.Say({"The name of a race control file ends in .txt",
                               "レース管理ファイル名の最後は .txt にしてください"},
                              question_.FileResultName);
        const std::string before = std::exchange(draft_.RaceFileName, question_.FileResultName);
        if (!SaveDraft()) {
            draft_.RaceFileName = before;
            return;
        }
        race_ = draft_;
        if (voice_.Ask({"Show racing ？", "レースを表示しますか？"})) showDisplay_();
    }
    Close();
}

}  // namespace keelview
