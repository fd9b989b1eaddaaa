#include "editor/race_editor.h"

#include <cstddef>
#include <initializer_list>
#include <utility>

#include "base/files.h"
#include "base/numbers.h"
#include "base/strings.h"
#include "racedata/gps_track.h"
#include "racedata/race_file.h"
#include "session/save_race.h"

namespace keelview {

namespace {

constexpr std::string_view BetweenNameAndFile = "        ";

// Fields that only saving takes, by their place in typed_.
enum : std::size_t { StartField, FinishField, LengthField, PreStartField, TitleField1, TitleField2 };

}  // namespace

FmCompile::FmCompile(AppState& app, Services& services, FileQuestion& question,
                     std::function<void()> showDisplay)
    : Form("fmCompile", Kind::Fixed, 658, 626),
      app_(app),
      services_(services),
      question_(question),
      showDisplay_(std::move(showDisplay)),
      draft_(NewDraft(app.race, LocalUtcOffsetHours(services.platform))) {
    // A race file without these keys takes what the program held last.
    app_.race.MagVariation = draft_.MagVariation;
    app_.race.BoatLength = draft_.BoatLength;

    SetFont(app_.settings.UiFontName, 9 * app_.settings.FontScale);
    ApplyCaptions();
    Place();
    ApplyColours();
    Frame1.Hide();
    Text13.Hide();
    Command5.SetEnabled(false);
    Text3.SetText(std::to_string(draft_.TimeDiff));
    Text5.SetText("4.7");
    Text6.SetText("-7");
    Text9.SetText("45");
    Text10.SetText("160");
    Text12.SetText("3");
    typed_ = {{&Text1, {}}, {&Text2, {}}, {&Text5, {}}, {&Text12, {}}, {&Text7, {}}, {&Text8, {}}};
    ForgetTyped();
    ConnectFields();
    ConnectButtons();
    ConnectHints();
}

void FmCompile::ConnectFields() {
    Text3.OnChange = [this] { Text3_Change(); };
    Text4.OnChange = [this] { Text4_Change(); };
    Text6.OnChange = [this] { draft_.MagVariation = LenientNumber(Text6.Text()); };
    Text9.OnChange = [this] { draft_.LayLineUp = LenientNumber(Text9.Text()); };
    Text10.OnChange = [this] { draft_.LayLineDown = LenientNumber(Text10.Text()); };
    Option1.OnClick = [this] { draft_.NorthUp = true; };
    Option2.OnClick = [this] { draft_.NorthUp = false; };
}

void FmCompile::ConnectButtons() {
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

void FmCompile::ConnectHints() {
    List1.OnMouseMove = [this](const MouseEvent&) { List1_MouseMove(); };
    for (Control* ground : std::initializer_list<Control*>{this, &Shape1, &Shape2})
        ground->OnMouseMove = [this](const MouseEvent&) { Text13.Hide(); };
}

void FmCompile::Text3_Change() {
    // A minus sign alone is on its way to a number; the last whole number counts until then.
    if (const auto hours = StrictInteger(Text3.Text())) draft_.TimeDiff = *hours;
}

void FmCompile::Text4_Change() {
    draft_.WindDirection = LenientNumber(Text4.Text());
}

void FmCompile::Command1_Click() {
    app_.settings.FileListIsRace = false;
    Combo1.Clear();
    const auto names = ListFiles(FindBelow(app_.settings.AppPath, "gpsdat"), "*");
    for (const std::string& name : names) Combo1.AddItem(name);
    Combo1.SetText(names.empty() ? std::string{} : names.front());
    Frame1.Show();
}

void FmCompile::Command2_Click() {
    const std::string file = Combo1.Text();
    if (Trim(file).empty()) return Say({"Choose a GPS file", "GPSファイルを選択してください"});
    if (!FitsBoatLine(file))
        return Say({"A GPS file name must not hold a comma, a slash, or blanks at its ends",
                    "GPSファイル名にコンマ、斜線、前後の空白は使えません"},
                   file);
    if (!IsFile(TrackPath(app_.settings.AppPath, file)))
        return Say({"GPS file not found", "GPSファイルがありません"}, file);
    if (draft_.BoatCount >= MaxBoats)
        return Say({"A race has at most 50 boats", "1レースの艇数は50艇までです"});

    const Text prompt{"Input Boat Name to be Displayed\r\n(Max 13 Ltrs)",
                      "表示される艇名を入力してください\r\n(Max 13 Ltrs)"};
    const auto name = services_.dialogs.Input(prompt.In(English()), {}, ProposedBoatName(draft_));
    Frame1.Hide();
    if (!name || Trim(*name).empty() || !AddBoat(draft_, file, *name)) return;
    TakeFirstTrack(file, draft_.BoatCount == 1);
    RefreshEditor();
}

void FmCompile::TakeFirstTrack(const std::string& boatFile, bool firstBoat) {
    const auto times = ReadFirstTrackTimes(app_.settings.AppPath, boatFile);
    if (firstBoat) firstTrack_ = times;
    if (!times)
        Say({"No GPS data in this file, so this boat will have no track",
             "このファイルにはGPSデータがないため、この艇の軌跡は表示されません"},
            boatFile);
}

void FmCompile::Command5_Click() {
    const auto raceadmin = FindBelow(app_.settings.AppPath, "raceadmin");
    OpenDocument(app_, services_, FindBelow(raceadmin, draft_.RaceFileName).string());
}

void FmCompile::Command6_Click() {
    question_.FilePattern = "*.*";
    if (!AskFile(FileQuestion::Mode::MustExist, "raceadmin", "txt")) return;
    if (!OpenDraft(app_.settings.AppPath, question_.FileResultName, draft_))
        return Say({"The race control file could not be read", "レース管理ファイルを読み込めませんでした"},
                   question_.FileResultName);
    ForgetTyped();
    RefreshEditor();
    Command5.SetEnabled(true);
}

void FmCompile::Command7_Click() {
    Frame1.Hide();
    draft_.WindFileName =
        AskFile(FileQuestion::Mode::ToWrite, "winddat", "csv") ? question_.FileResultName : std::string{};
    SaveDraft();
    RefreshEditor();
}

void FmCompile::Command10_Click() {
    question_.FilePattern = "*.*";
    if (!AskFile(FileQuestion::Mode::MustExist, "attachment", "*.*")) return;
    if (!AddAttachment(draft_, question_.FileResultName))
        return Say({"A race has at most 50 attachments", "添付資料は50件までです"});
    SaveDraft();
    RefreshEditor();
}

void FmCompile::Command11_Click() {
    draft_.AttachCount = 0;
    SaveDraft();
    RefreshEditor();
}

void FmCompile::List1_MouseDown(const MouseEvent& event) {
    // With Ctrl held a click on the chosen row takes the choice away first; that row is meant.
    const int before = std::exchange(chosenRow_, List1.ListIndex());
    const int row = chosenRow_ >= 0 ? chosenRow_ : before;
    if (!event.AnyModifier || row < 0) return;
    RemoveBoat(draft_, row + 1);
    RefreshEditor();
}

void FmCompile::List1_MouseMove() {
    const Text hint{"Shift + Click to Delete One Data.",
                    "Shift　を押しながらクリックすると１行消去します。"};
    Text13.SetText(hint.In(English()));
    Text13.Move(List1.Left(), List1.Top() - 25, 300, 17);
    Text13.Show();
}

void FmCompile::RefreshEditor() {
    SetCaption(Text{"Edit Race Control FIle   ", "レース管理ファイル編集   "}.Str(English()) +
               draft_.RaceFileName);
    if (!draft_.RaceTitle1.empty()) ShowUnlessTyped(TitleField1, draft_.RaceTitle1);
    if (!draft_.RaceTitle2.empty()) ShowUnlessTyped(TitleField2, draft_.RaceTitle2);
    ProposeTimes(firstTrack_, draft_);
    ShowUnlessTyped(StartField, draft_.StartTimeText);
    ShowUnlessTyped(FinishField, draft_.FinishTimeText);
    ShowUnlessTyped(LengthField, NumberText(draft_.BoatLength));
    ShowUnlessTyped(PreStartField, NumberText(draft_.PreStartMinutes));
    Text3.SetText(std::to_string(draft_.TimeDiff));
    Text4.SetText(NumberText(draft_.WindDirection));
    Text6.SetText(NumberText(draft_.MagVariation));
    Text9.SetText(NumberText(draft_.LayLineUp));
    Text10.SetText(NumberText(draft_.LayLineDown));
    Text11.SetText(draft_.WindFileName);
    FillLists();
    Refresh();
}

void FmCompile::ShowUnlessTyped(std::size_t field, std::string_view text) {
    TypedField& typed = typed_.at(field);
    const std::string standing = typed.Box->Text();
    if (!Trim(standing).empty() && standing != typed.Shown) return;
    typed.Shown = text;
    typed.Box->SetText(text);
}

void FmCompile::ForgetTyped() {
    for (TypedField& typed : typed_) typed.Shown = typed.Box->Text();
}

void FmCompile::FillLists() {
    List1.Clear();
    chosenRow_ = -1;
    for (int boat = 1; boat <= draft_.BoatCount; ++boat) {
        const auto i = static_cast<std::size_t>(boat);
        List1.AddItem(draft_.BoatName.at(i) + std::string(BetweenNameAndFile) + draft_.BoatFile.at(i));
    }
    List2.Clear();
    for (int file = 1; file <= draft_.AttachCount; ++file)
        List2.AddItem(Trim(draft_.AttachFile.at(static_cast<std::size_t>(file))));
}

bool FmCompile::AskFile(FileQuestion::Mode mode, std::string_view folder, std::string_view extension) {
    question_.FileMode = mode;
    question_.FileExtension = extension;
    question_.FileFolder = FindBelow(app_.settings.AppPath, folder);
    return ShowFileSelect(app_.settings, services_.dialogs, question_);
}

bool FmCompile::SaveDraft() {
    const std::error_code error = SaveRaceFile(app_.settings.AppPath, draft_);
    if (!error) return true;
    const Text said{"The race control file could not be written",
                    "レース管理ファイルを書き込めませんでした"};
    Say(said, draft_.RaceFileName + " (" + error.message() + ")");
    return false;
}

void FmCompile::SaveAndShow() {
    if (draft_.BoatCount == 0) return;
    const DraftFields fields{.Title1 = Text7.Text(),
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
    if (const auto trouble = TakeFields(fields, English(), draft_))
        return services_.dialogs.Ok(*trouble, app_.settings.AppTitle);

    const Text save{"Save Race Control File ?", "レース管理ファイルを保存しますか？"};
    const Text saveTitle{"Save File", "ファイルの保存"};
    if (!services_.dialogs.YesNo(save.In(English()), saveTitle.In(English()))) return;
    if (AskFile(FileQuestion::Mode::ToWrite, "raceadmin", "txt")) {
        const std::string before = std::exchange(draft_.RaceFileName, question_.FileResultName);
        if (!SaveDraft()) {
            draft_.RaceFileName = before;
            return;
        }
        app_.race = draft_;
        const Text show{"Show racing ？", "レースを表示しますか？"};
        if (services_.dialogs.YesNo(show.In(English()), app_.settings.AppTitle)) showDisplay_();
    }
    Close();
}

void FmCompile::Say(Text text, std::string_view about) {
    std::string message = text.Str(English());
    if (!about.empty()) message.append("\r\n").append(about);
    services_.dialogs.Ok(message, app_.settings.AppTitle);
}

}  // namespace keelview
