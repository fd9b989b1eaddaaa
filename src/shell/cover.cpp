#include "shell/cover.h"

#include <array>
#include <cmath>
#include <string>
#include <utility>

#include "base/files.h"
#include "base/strings.h"
#include "display/form_table.h"
#include "racedata/tracks/formats.h"
#include "session/documents.h"

namespace keelview {

namespace {

constexpr double WidthInTwips = 5640.0;
constexpr double HeightInTwips = 8955.0;
constexpr double ReferenceTwips = 15.0;
constexpr double PictureWidth = 333.0;
constexpr double PictureHeight = 381.0;

// The programs that may stand beside this one.
constexpr std::string_view TrackCompanion = "TRACKDESK.exe";
constexpr std::string_view WindCompanion = "GALEPLOT.exe";

}  // namespace

void ClearRaceState(RaceControl& race) {
    RaceControl cleared;
    cleared.MagVariation = race.MagVariation;
    cleared.BoatLength = race.BoatLength;
    race = std::move(cleared);
}

Cover::Cover(Settings& settings, RaceControl& race, Services& services, CoverDoors doors)
    : Form("Cover", Kind::Splash, WidthInTwips / ReferenceTwips / settings.TwipScaleX,
           HeightInTwips / ReferenceTwips / settings.TwipScaleY),
      settings_(settings),
      race_(race),
      services_(services),
      voice_(settings, services.dialogs),
      doors_(std::move(doors)) {
    SetFont(settings.UiFontName, 9 * settings.FontScale);
    SetCaption(voice_.In({"Keelview", "キール"}));
    SetIcon(Picture::FromAssets("icon.png"));
    SetBackColor(Rgb(17, 72, 26));
    Picture1.ShowPicture(Picture::FromAssets("cover.png"));
    Text1.SetBackColor(HintBackground);
    Command10.SetBackColor(Rgb(0, 255, 255));
    Frame1.SetBackColor(Rgb(0, 64, 0));
    LayOut();
    Frame1.Hide();
    Text1.Hide();
    // One test for both languages: the button is there if either manual is.
    Settings other = settings;
    other.UseEnglish = !settings.UseEnglish;
    Command10.SetVisible(IsFile(ManualPath(settings)) || IsFile(ManualPath(other)));
    for (Button* maker : {&Command1, &Command2, &Command8, &Command9}) maker->SetEnabled(settings.EditMode);
    ConnectButtons();
    ConnectHints();
}

void Cover::LayOut() {
    const double margin = std::floor((ScaleWidth() - PictureWidth) / 2);
    const double pixel = settings_.FontScale / ReferenceTwips;  // of a twip inside a frame
    ApplyTable(
        {
            {Picture1, {margin, margin, PictureWidth, PictureHeight}},
            {Command1, {230, 424, 131, 17}, Both("GPS Download")},
            {Command8, {230, 448, 131, 17}, Both("Mk Wind Data")},
            {Command2, {230, 472, 131, 17}, Both("Edit GPS data")},
            {Command9, {230, 496, 131, 17}, Both("Create Distribution File")},
            {Command7, {230, 520, 131, 17}, Both("Show One Boat")},
            {Command3, {230, 544, 131, 17}, Both("Show Racing")},
            {Command10, {230, 568, 42, 17}, Both("?")},
            {Command4, {288, 568, 73, 17}, Both("EXIT")},
            {Text1, {16, 490, 150, 17}},  // below the file chooser, left of the buttons
            {Frame1, {16, 416, 185, 65}},
            {Combo1, {120 * pixel, 240 * pixel, 2535 * pixel, 20}},
            {Command5, {120 * pixel, 600 * pixel, 1215 * pixel, 255 * pixel}, Both("OK")},
            {Command6, {1400 * pixel, 600 * pixel, 1215 * pixel, 255 * pixel}, {"CANCEL", "キャンセル"}},
        },
        voice_.English());
}

void Cover::ConnectButtons() {
    Command1.OnClick = [this] { StartCompanion(TrackCompanion, doors_.ShowImport); };
    Command8.OnClick = [this] { StartCompanion(WindCompanion, doors_.ShowWind); };
    Command2.OnClick = [this] { doors_.ShowEditor(); };
    Command9.OnClick = [this] { doors_.ShowDistribution(); };
    Command3.OnClick = [this] { Command3_Click(); };
    Command7.OnClick = [this] { Command7_Click(); };
    Command5.OnClick = [this] { Command5_Click(); };
    Command6.OnClick = [this] { Frame1.Hide(); };
    Command10.OnClick = [this] { OpenDocument(settings_, services_, ManualPath(settings_).string()); };
    Command4.OnClick = [this] {
        if (!doors_.MayEnd || doors_.MayEnd()) services_.platform.EndProcess();
    };
}

void Cover::ConnectHints() {
    // What a companion would do this program does, as far as it can, where the companion is not there.
    const auto isThere = [this](std::string_view name) {
        return IsFile(FindBelow(settings_.AppPath, name));
    };
    const Text tracks = isThere(TrackCompanion) ? Text{"Receive Track Data From GPS\r\nEdit GPS data",
                                                       "GPSからﾃﾞｰﾀをﾀﾞｳﾝﾛｰﾄﾞ\r\n軌跡ﾃﾞｰﾀﾌｧｲﾙを読んで編集"}
                                                : Text{"Make a race of track files\r\n(or drop them here)",
                                                       "航跡ﾌｧｲﾙからﾚｰｽを作成\r\n(ここにﾄﾞﾛｯﾌﾟしても可)"};
    const Text winds =
        isThere(WindCompanion)
            ? Text{"Start GALEPLOT: edit wind\r\ndata and save what is chosen.\r\n( as a CSV file )",
                   "GALEPLOTを起動して風データを\r\n編集し、選定データの保存します。\r\n( "
                   "CSVファイルを作成 )"}
            : Text{"Type, paste or read wind data\r\nand make a wind file of it.",
                   "風データを入力、貼り付け、\r\n読み込んでファイルを作成\r\n( CSVファイルを作成 )"};
    struct ButtonHint {
        Button* Over;
        double Height;
        Text Words;
    };
    const std::array<ButtonHint, 7> hints{{
        {&Command1, 32, tracks},
        {&Command2,
         60,
         {"Edit the data of each boat.\r\n\r\nSelect GPS data and set\r\nstart and finish time.",
          "複数艇のﾃﾞｰﾀを編集\r\n\r\n各艇のﾃﾞｰﾀを選択し,ｽﾀｰﾄ時刻,\r\nﾌｨﾆｯｼｭ時刻などを指定します"}},
        {&Command3,
         32,
         {"Show the boats of a race that\r\nwas made with Edit GPS data.",
          "編集データを選択すると\r\n複数艇のレースが見れます"}},
        {&Command4, 17, {"End the program", "プログラムを終了します"}},
        {&Command7, 17, {"Show the track of one boat", "1艇のみの軌跡を表示"}},
        {&Command8, 45, winds},
        {&Command9,
         33,
         {"Make a folder of races to hand\r\non ( for the web or a CD )",
          "配布するファイルを自動的に\r\n作成します。（WEB配信、CD焼付） "}},
    }};
    for (const ButtonHint& hint : hints)
        hint.Over->OnMouseMove = [this, height = hint.Height, words = hint.Words](const MouseEvent&) {
            ShowHint(height, words);
        };
    OnMouseMove = [this](const MouseEvent&) { Text1.Hide(); };
}

void Cover::ShowHint(double height, const Text& hint) {
    Text1.SetHeight(height);
    Text1.SetText(voice_.In(hint));
    Text1.Show();
}

void Cover::StartCompanion(std::string_view name, const std::function<void()>& instead) {
    const auto companion = FindBelow(settings_.AppPath, name);
    if (!IsFile(companion)) return instead();
    if (services_.platform.StartProgram(companion)) return;
    voice_.Say({"The program could not be started", "プログラムを起動できません"}, name);
}

void Cover::Command3_Click() {
    settings_.FileListIsRace = true;
    OfferFiles("raceadmin", {"*.txt"});
}

void Cover::Command7_Click() {
    settings_.FileListIsRace = false;
    race_.BoatLength = StandardBoatLength;
    OfferFiles("gpsdat", TrackFilePatterns());
}

void Cover::OfferFiles(std::string_view folder, const std::vector<std::string>& patterns) {
    Combo1.Clear();
    std::string first;
    for (const std::string& pattern : patterns)
        for (const std::string& name : ListFiles(FindBelow(settings_.AppPath, folder), pattern)) {
            if (first.empty()) first = name;
            Combo1.AddItem(name);
        }
    Combo1.SetText(first);
    Frame1.Show();
}

void Cover::Command5_Click() {
    const bool isRace = settings_.FileListIsRace;
    const std::string name(Trim(Combo1.Text()));
    if (name.empty()) return voice_.Say({"Choose a file", "ファイルを選択してください"});
    const auto folder = FindBelow(settings_.AppPath, isRace ? "raceadmin" : "gpsdat");
    if (!IsFile(FindBelow(folder, name)))
        return voice_.Say({"File Not Found", "ファイルがありません"}, name);

    ClearRaceState(race_);
    (isRace ? race_.RaceFileName : race_.SingleTrackFile) = name;
    Frame1.Hide();
    Text1.Hide();
    doors_.ShowDisplay();
}

}  // namespace keelview
