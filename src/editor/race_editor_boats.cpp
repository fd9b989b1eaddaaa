#include <algorithm>
#include <initializer_list>
#include <utility>

#include "base/files.h"
#include "base/strings.h"
#include "editor/race_editor.h"
#include "editor/track_files.h"
#include "racedata/refusal_text.h"
#include "racedata/track_reading.h"

namespace keelview {

namespace {

constexpr Text NotInALine{"A GPS file name must not hold a comma, a slash, or blanks at its ends",
                          "GPSファイル名にコンマ、斜線、前後の空白は使えません"};
constexpr Text NoRoom{"A race has at most 200 boats", "1レースの艇数は200艇までです"};
static_assert(MaxBoats == 200, "the text names the limit");
constexpr Text TakenAlready{"These GPS files are boats of this race already.\r\nTake them once more?",
                            "次のGPSファイルは既に選択されています。\r\nもう一度追加しますか？"};

std::string RowText(const BoatEntry& boat) {
    constexpr std::string_view Between = "        ";
    return boat.BoatName + std::string(Between) + boat.BoatFile;
}

std::string CountText(const Text& what, int count, bool useEnglish) {
    return what.Str(useEnglish) + " " + std::to_string(count);
}

}  // namespace

void RaceEditor::ConnectBoats() {
    List1.LetWrite([this](int row) { return draft_.Boats[row + 1].BoatName; });
    List1.OnWritten = [this](int row, const std::string& name) { List1_Written(row, name); };
    List1.OnDragged = [this](int from, int to) { List1_Dragged(from, to); };
    List1.OnMouseDown = [this](const MouseEvent& event) { List1_MouseDown(event); };
}

void RaceEditor::ConnectHints() {
    List1.OnMouseMove = [this](const MouseEvent&) { List1_MouseMove(); };
    for (Control* ground : std::initializer_list<Control*>{this, &Shape1, &Shape2})
        ground->OnMouseMove = [this](const MouseEvent&) { Text13.Hide(); };
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
    if (!FitsBoatLine(file)) return voice_.Say(NotInALine, file);
    if (!IsFile(TrackPath(settings_.AppPath, file)))
        return voice_.Say({"GPS file not found", "GPSファイルがありません"}, file);
    if (draft_.Boats.IsFull()) return voice_.Say(NoRoom);
    if (BoatOfFile(draft_, file) > 0 && !voice_.AskAbout(TakenAlready, file)) return;

    const auto name = voice_.AskLine({"Input Boat Name to be Displayed\r\n(at most 13 letters)",
                                      "表示される艇名を入力してください\r\n(13文字まで)"},
                                     {}, ProposedBoatName(draft_, file));
    Frame1.Hide();
    if (!name || Trim(*name).empty()) return;
    std::vector<std::string> notes;
    AddBoat({.BoatFile = file, .BoatName = *name}, notes);
    RefreshEditor();
    TellTracks(notes);
}

void RaceEditor::Command14_Click() {
    const auto files = voice_.ChooseFiles({"Choose GPS files", "GPSデータファイルの選択"},
                                          FindBelow(settings_.AppPath, "gpsdat"));
    std::vector<BoatEntry> found;
    std::vector<std::string> notes;
    services_.platform.SetBusyPointer(true);
    for (const auto& file : files) FindBoats(file, found, notes);
    services_.platform.SetBusyPointer(false);
    LeaveTaken(found);
    for (const BoatEntry& boat : found) AddBoat(boat, notes);
    RefreshEditor();
    TellTracks(notes);
}

/// The boats of a picked file; why there are none is noted.
void RaceEditor::FindBoats(const std::filesystem::path& file, std::vector<BoatEntry>& found,
                           std::vector<std::string>& notes) const {
    const std::string name = file.filename().string();
    if (!FitsBoatLine(name)) return notes.push_back(name + " : " + voice_.Str(NotInALine));
    const BroughtTracks brought = BringTracks(settings_.AppPath, file);
    found.insert(found.end(), brought.Boats.begin(), brought.Boats.end());
    if (brought.Error)
        notes.push_back(name + " : " + brought.Error.message());
    else if (brought.Boats.empty())
        notes.push_back(name + " : " + voice_.Str(RefusalText(brought.Why)));
}

/// Leaves out what is a boat of the race already, unless the person wants it once more.
void RaceEditor::LeaveTaken(std::vector<BoatEntry>& found) const {
    const auto isTaken = [this](const BoatEntry& boat) { return BoatOfFile(draft_, boat.BoatFile) > 0; };
    std::vector<std::string> taken;
    for (const BoatEntry& boat : found)
        if (isTaken(boat)) taken.push_back(boat.BoatFile);
    if (!taken.empty() && !voice_.AskAbout(TakenAlready, LinesOfBox(taken))) std::erase_if(found, isTaken);
}

/// Adds a boat; the first one whose file has a fix tells the times. What is wrong with its track is noted.
void RaceEditor::AddBoat(const BoatEntry& boat, std::vector<std::string>& notes) {
    if (!draft_.Boats.Add(boat)) return notes.push_back(boat.BoatFile + " : " + voice_.Str(NoRoom));
    unsaved_ = true;
    Refusal why = Refusal::None;
    const auto times = ReadFirstTrackTimes(settings_.AppPath, boat.BoatFile, why);
    if (draft_.Boats.Count() == 1 || !firstTrack_) firstTrack_ = times;
    const Text noTrack{"no GPS data, so it will have no track: ",
                       "GPSデータがなく、軌跡は表示されません: "};
    const Text faulty{"faulty GPS positions (0/0, or out of all reach) are left out: ",
                      "異常なGPS位置データ (0/0、または到達不可能な位置) を除外します: "};
    if (!times)
        notes.push_back(boat.BoatFile + " : " + voice_.Str(noTrack) + voice_.Str(RefusalText(why)));
    else if (times->SkippedFixes > 0)
        notes.push_back(boat.BoatFile + " : " + voice_.Str(faulty) + std::to_string(times->SkippedFixes));
}

void RaceEditor::TellTracks(const std::vector<std::string>& notes) const {
    if (!notes.empty())
        voice_.Say({"What there is to know of these GPS files:", "GPSファイルについて:"},
                   LinesOfBox(notes));
}

void RaceEditor::List1_MouseDown(const MouseEvent& event) {
    // With Ctrl held a click on the chosen row takes the choice away first; that row is meant.
    const int before = std::exchange(chosenRow_, List1.ListIndex());
    const int row = chosenRow_ >= 0 ? chosenRow_ : before;
    if (!event.AnyModifier || !draft_.Boats.Holds(row + 1)) return;
    RemoveBoat(draft_, row + 1);
    unsaved_ = true;
    RefreshEditor();
}

void RaceEditor::List1_MouseMove() {
    Text13.SetText(voice_.In({"Shift + Click deletes, double click renames, drag moves.",
                              "Shift + クリックで消去、ダブルクリックで艇名変更、ドラッグで移動"}));
    Text13.Move(List1.Left(), List1.Top() - 25, 377, 17);
    Text13.Show();
}

void RaceEditor::List1_Written(int row, const std::string& name) {
    BoatEntry& boat = draft_.Boats[row + 1];
    if (Trim(name).empty()) return;
    boat.BoatName = name;
    unsaved_ = true;
    List1.SetItem(row, RowText(boat));
}

void RaceEditor::List1_Dragged(int from, int to) {
    MoveBoat(draft_, from + 1, to + 1);
    unsaved_ = true;
    for (int row = std::min(from, to); row <= std::max(from, to); ++row)
        List1.SetItem(row, RowText(draft_.Boats[row + 1]));
    List1.Choose(to);
    chosenRow_ = to;
}

void RaceEditor::FillLists() {
    List1.Clear();
    chosenRow_ = -1;
    for (const BoatEntry& boat : draft_.Boats) List1.AddItem(RowText(boat));
    List2.Clear();
    for (const std::string& file : draft_.AttachFile) List2.AddItem(Trim(file));
    const bool english = voice_.English();
    Label17.SetCaption(CountText({"Marks:", "マーク:"}, draft_.Marks.Count(), english) +
                       CountText({"   Lines:", "　ライン:"}, draft_.Lines.Count(), english) +
                       CountText({"   Course entries:", "　コース:"}, draft_.CourseOrder.Count(), english));
}

}  // namespace keelview
