#include "shell/cover.h"

#include <array>
#include <cmath>
#include <initializer_list>
#include <utility>

#include "base/files.h"
#include "base/strings.h"
#include "session/save_race.h"

namespace keelview {

namespace {

constexpr double WidthInTwips = 5640.0;
constexpr double HeightInTwips = 8955.0;
constexpr double ReferenceTwips = 15.0;
constexpr double PictureWidth = 333.0;
constexpr double PictureHeight = 381.0;

// The hint box stands below the file chooser, left of the buttons.
constexpr double HintLeft = 16.0;
constexpr double HintTop = 490.0;
constexpr double HintWidth = 150.0;

constexpr TextBox::Kind Hint{
    .Alignment = Align::Centre, .Border = false, .MultiLine = true, .ReadOnly = true};

constexpr Text HelpPage{"help-e/index.html", "help/index.html"};

}  // namespace

void ClearRaceState(RaceControl& race) {
    RaceControl cleared;
    cleared.MagVariation = race.MagVariation;
    cleared.BoatLength = race.BoatLength;
    race = cleared;
}

Cover::Cover(AppState& app, Services& services, CoverDoors doors)
    : Form("Cover", Kind::Splash, WidthInTwips / ReferenceTwips / app.settings.TwipScaleX,
           HeightInTwips / ReferenceTwips / app.settings.TwipScaleY),
      Picture1(*this, "Picture1", BorderStyle::None),
      Text1(*this, "Text1", Hint),
      Command1(*this, "Command1", "GPS Download"),
      Command8(*this, "Command8", "Mk Wind Data"),
      Command2(*this, "Command2", "Edit GPS data"),
      Command9(*this, "Command9", "Create Distibution File"),
      Command7(*this, "Command7", "Show One Boat"),
      Command3(*this, "Command3", "Show Racing"),
      Command10(*this, "Command10", "?"),
      Command4(*this, "Command4", "EXIT"),
      Frame1(*this, "Frame1"),
      Combo1(Frame1, "Combo1"),
      Command5(Frame1, "Command5", "OK"),
      Command6(Frame1, "Command6", "CANCEL"),
      app_(app),
      services_(services),
      doors_(std::move(doors)) {
    SetFont(app_.settings.UiFontName, 9 * app_.settings.FontScale);
    SetCaption(Text{"Keelview", "キール"}.In(app_.settings.UseEnglish));
    SetIcon(Picture::FromAssets("icon.png"));
    SetBackColor(Rgb(17, 72, 26));
    Picture1.ShowPicture(Picture::FromAssets("cover.png"));
    Text1.SetBackColor(HintBackground);
    Command10.SetBackColor(Rgb(0, 255, 255));
    Frame1.SetBackColor(Rgb(0, 64, 0));
    Place();
    Frame1.Hide();
    Text1.Hide();
    // One test for both languages: the button is there if either manual is.
    Command10.SetVisible(IsFile(FindBelow(app_.settings.AppPath, HelpPage.English)) ||
                         IsFile(FindBelow(app_.settings.AppPath, HelpPage.Japanese)));
    ConnectButtons();
    ConnectHints();
}

void Cover::Place() {
    const double margin = std::floor((ScaleWidth() - PictureWidth) / 2);
    Picture1.Move(margin, margin, PictureWidth, PictureHeight);
    double top = 424;
    for (Button* button : {&Command1, &Command8, &Command2, &Command9, &Command7, &Command3}) {
        button->Move(230, top, 131, 17);
        top += 24;
    }
    Command10.Move(230, top, 42, 17);
    Command4.Move(288, top, 73, 17);
    Text1.Move(HintLeft, HintTop, HintWidth, 17);
    Frame1.Move(16, 416, 185, 65);
    const double pixel = app_.settings.FontScale / ReferenceTwips;  // of a twip inside a frame
    Combo1.Move(120 * pixel, 240 * pixel, 2535 * pixel, 20);
    Command5.Move(120 * pixel, 600 * pixel, 1215 * pixel, 255 * pixel);
    Command6.Move(1400 * pixel, 600 * pixel, 1215 * pixel, 255 * pixel);
}

void Cover::ConnectButtons() {
    Command1.OnClick = [this] { StartCompanion("TRACKDESK.exe"); };
    Command8.OnClick = [this] { StartCompanion("GALEPLOT.exe"); };
    Command2.OnClick = [this] { doors_.ShowEditor(); };
    Command9.OnClick = [this] { doors_.ShowDistribution(); };
    Command3.OnClick = [this] { Command3_Click(); };
    Command7.OnClick = [this] { Command7_Click(); };
    Command5.OnClick = [this] { Command5_Click(); };
    Command6.OnClick = [this] { Frame1.Hide(); };
    Command10.OnClick = [this] { Command10_Click(); };
    Command4.OnClick = [this] { services_.platform.EndProcess(); };
}

void Cover::ConnectHints() {
    struct ButtonHint {
        Button* Over;
        double Height;
        Text Words;
    };
    // Some hints exist in Japanese only.
    const auto both = [](std::string_view words) { return Text{words, words}; };
    const std::array<ButtonHint, 7> hints{{
        {&Command1,
         32,
         {"Receive Track Data From GPS\r\nEdit GPS data",
          "GPSからﾃﾞｰﾀをﾀﾞｳﾝﾛｰﾄﾞ\r\n軌跡ﾃﾞｰﾀﾌｧｲﾙを読んで編集"}},
        {&Command2,
         60,
         {"Edit each boat data.\r\n\r\nSelect GPS data and set\r\nstart and finish time.",
          "複数艇のﾃﾞｰﾀを編集\r\n\r\n各艇のﾃﾞｰﾀを選択し,ｽﾀｰﾄ時刻,\r\nﾌｨﾆｯｼｭ時刻などを指定します"}},
        {&Command3,
         32,
         {"Race scene can be seen\r\nif Edit data.", "編集データを選択すると\r\n複数艇のレースが見れます"}},
        {&Command4, 17, both("プログラムを終了します")},
        {&Command7, 17, both("1艇のみの軌跡を表示")},
        {&Command8, 45,
         both("GALEPLOTを起動して風データを\r\n編集し、選定データの保存します。\r\n( CSVファイルを作成 )")},
        {&Command9, 33, both("配布するファイルを自動的に\r\n作成します。（WEB配信、CD焼付） ")},
    }};
    for (const ButtonHint& hint : hints)
        hint.Over->OnMouseMove = [this, height = hint.Height, words = hint.Words](const MouseEvent&) {
            ShowHint(height, words);
        };
    OnMouseMove = [this](const MouseEvent&) { Text1.Hide(); };
}

void Cover::ShowHint(double height, Text hint) {
    Text1.SetHeight(height);
    Text1.SetText(hint.In(app_.settings.UseEnglish));
    Text1.Show();
}

void Cover::StartCompanion(std::string_view name) {
    if (services_.platform.StartProgram(FindBelow(app_.settings.AppPath, name))) return;
    Say({"The program could not be started", "プログラムを起動できません"}, name);
}

void Cover::Command3_Click() {
    app_.settings.FileListIsRace = true;
    OfferFiles("raceadmin", {"*.txt"});
}

void Cover::Command7_Click() {
    app_.settings.FileListIsRace = false;
    app_.race.BoatLength = 4.7;
    OfferFiles("gpsdat", {"*.dtr", "*.trk"});
}

void Cover::OfferFiles(std::string_view folder, std::initializer_list<std::string_view> patterns) {
    Combo1.Clear();
    std::string first;
    for (const std::string_view pattern : patterns)
        for (const std::string& name : ListFiles(FindBelow(app_.settings.AppPath, folder), pattern)) {
            if (first.empty()) first = name;
            Combo1.AddItem(name);
        }
    Combo1.SetText(first);
    Frame1.Show();
}

void Cover::Command5_Click() {
    const bool isRace = app_.settings.FileListIsRace;
    const std::string name(Trim(Combo1.Text()));
    if (name.empty()) return Say({"Choose a file", "ファイルを選択してください"});
    const auto folder = FindBelow(app_.settings.AppPath, isRace ? "raceadmin" : "gpsdat");
    if (!IsFile(FindBelow(folder, name))) return Say({"File Not Found", "ファイルがありません"}, name);

    ClearRaceState(app_.race);
    (isRace ? app_.race.RaceFileName : app_.race.SingleTrackFile) = name;
    Frame1.Hide();
    Text1.Hide();
    doors_.ShowDisplay();
}

void Cover::Command10_Click() {
    const auto page = FindBelow(app_.settings.AppPath, HelpPage.In(app_.settings.UseEnglish));
    OpenDocument(app_, services_, page.string());
}

void Cover::Say(Text text, std::string_view about) {
    std::string message = text.Str(app_.settings.UseEnglish);
    if (!about.empty()) message.append("\r\n").append(about);
    services_.dialogs.Ok(message, app_.settings.AppTitle);
}

}  // namespace keelview
