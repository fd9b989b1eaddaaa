#include "distribution/distribution.h"

#include <cstddef>

#include "base/files.h"
#include "base/strings.h"

namespace keelview {

namespace {

/// No race control file, though its name ends like one.
constexpr std::string_view NotARace = "ver.txt";

/// So many missing files are named in the message; the rest is counted.
constexpr std::size_t MissingFilesNamed = 15;

}  // namespace

Haifu::Haifu(const AppState& app, Services& services)
    : Form("Haifu", Kind::Fixed, 316, 428),
      Label3(*this, "Label3"),
      Combo1(*this, "Combo1"),
      Label1(*this, "Label1"),
      List1(*this, "List1"),
      Label2(*this, "Label2"),
      List2(*this, "List2"),
      Command3(*this, "Command3"),
      Label4(*this, "Label4"),
      Text1(*this, "Text1", TextBox::Kind{}),
      Frame1(*this, "Frame1"),
      Option1(Frame1, "Option1", {}, true),
      Option2(Frame1, "Option2"),
      Check1(*this, "Check1", {}, true),
      Check2(*this, "Check2", "データサイズ最小化", true),
      Command2(*this, "Command2"),
      Command1(*this, "Command1"),
      app_(app),
      services_(services) {
    SetFont(app.settings.UiFontName, 9 * app.settings.FontScale);
    ApplyCaptions();
    Place();
    List1.SetBackColor(Rgb(255, 255, 128));
    Check2.Hide();
    OfferRaces();
    List1.OnMouseDown = [this](const MouseEvent&) { List1_MouseDown(); };
    List2.OnMouseDown = [this](const MouseEvent&) { List2_MouseDown(); };
    Command1.OnClick = [this] { Command1_Click(); };
    Command2.OnClick = [this] { Close(); };
    Command3.OnClick = [this] { Command3_Click(); };
}

void Haifu::ApplyCaptions() {
    const bool english = English();
    SetCaption(Text{"Create Distribution File", "配布データの作成"}.In(english));
    Label3.SetCaption(Text{"Folder Name to be Saved  ( to be New Name ) ",
                           "配布データを収納するフォルダー名　(新しい名称）"}
                          .In(english));
    Label1.SetCaption(Text{"Choose Race File Name to Distribute ", "レースファイル選択 "}.In(english));
    Label2.SetCaption(Text{"List of Race File", "配布レースファイルのリスト"}.In(english));
    Command3.SetCaption(Text{"ReDO", "やり直し"}.In(english));
    Label4.SetCaption(Text{"Startup Race Name ( Click Name listed above )",
                           "ｽﾀｰﾄｱｯﾌﾟ時のﾚｰｽﾌｧｲﾙ名　（上段配布ﾚｰｽﾌｧｲﾙから選択）"}
                          .In(english));
    Frame1.SetCaption(Text{"Media for Distribution", "ファイルの種類"}.In(english));
    Option1.SetCaption(Text{"WEB", "ＷＥＢ配信用"}.In(english));
    Option2.SetCaption(Text{"CD-ROM", "CD-ROM作成"}.In(english));
    Check1.SetCaption(Text{"Attach Map Data", "地図データ添付"}.In(english));
    Command2.SetCaption(Text{"Cancel", "キャンセル"}.In(english));
    Command1.SetCaption(Text{"Create Distribution File", "配布ファイル作成"}.In(english));
}

void Haifu::Place() {
    Label3.Move(12, 8, 297, 14);  // clear of the box below
    Combo1.Move(11, 23, 289, 20);
    Label1.Move(8, 56, 289, 17);
    List1.Move(8, 72, 225, 64);
    Label2.Move(12, 148, 209, 17);
    List2.Move(8, 168, 225, 100);
    Command3.Move(248, 168, 57, 25);
    Label4.Move(8, 280, 305, 17);
    Text1.Move(8, 296, 225, 21);
    Frame1.Move(8, 328, 113, 57);
    Option1.Move(8, 14, 97, 17);
    Option2.Move(8, 33, 97, 17);
    Check1.Move(136, 336, 137, 17);
    Check2.Move(136, 360, 153, 17);
    Command2.Move(8, 392, 145, 25);
    Command1.Move(160, 392, 145, 25);
}

void Haifu::OfferRaces() {
    std::size_t left = 0;
    for (const std::string& name : ListFiles(FindBelow(app_.settings.AppPath, "raceadmin"), "*.txt")) {
        if (name == NotARace) continue;
        if (raceFileChoices_.size() >= MaxRaceChoices) {
            ++left;
            continue;
        }
        raceFileChoices_.push_back(name);
        List1.AddItem(name);
    }
    if (left > 0)
        Say(Text{"Only the first 200 race files are listed. Not listed: ",
                 "最初の200レースだけを表示します。表示されないファイル数: "}
                .Str(English()) +
            std::to_string(left));
}

void Haifu::List1_MouseDown() {
    const int row = List1.ListIndex();
    if (row < 0 || row >= static_cast<int>(raceFileChoices_.size())) return;
    if (pendingRaceNames_.size() >= MaxPendingRaces)
        return Say(
            Text{"A distribution holds at most 50 races", "配布できるのは50レースまでです"}.In(English()));
    pendingRaceNames_.push_back(raceFileChoices_.at(static_cast<std::size_t>(row)));
    List2.AddItem(pendingRaceNames_.back());
}

void Haifu::List2_MouseDown() {
    const int row = List2.ListIndex();
    if (row >= 0 && row < static_cast<int>(pendingRaceNames_.size()))
        Text1.SetText(pendingRaceNames_.at(static_cast<std::size_t>(row)));
}

void Haifu::Command3_Click() {
    List2.Clear();
    pendingRaceNames_.clear();
}

void Haifu::Command1_Click() {
    if (pendingRaceNames_.empty()) return;
    const bool english = English();
    const DistributionOrder order{.FolderName = std::string(Trim(Combo1.Text())),
                                  .RaceNames = pendingRaceNames_,
                                  .StartRace = std::string(Trim(Text1.Text())),
                                  .Target = Option2.Value() ? Medium::CdRom : Medium::Web,
                                  .AttachMap = Check1.Value(),
                                  .MinimiseSize = Check2.Value(),
                                  .UseEnglish = english};
    if (const auto trouble = FolderNameTrouble(order.FolderName)) return Say(trouble->In(english));
    if (DistributionExists(app_.settings.AppPath, order.FolderName))
        return Say(Text{"The same name folder exists. Input other name.",
                        "同名のフォルダーがあります。新しい名前を入れてください。"}
                       .In(english),
                   Text{"Keelview", "フォルダー名"}.In(english));
    const Text question{"Do you want to create new folder for distribution ?",
                        "配布データフォルダーを作成しますか？"};
    if (!services_.dialogs.YesNo(question.In(english), Text{"Keelview", "配布用フォルダー名"}.In(english)))
        return;

    services_.platform.SetBusyPointer(true);
    const DistributionResult result = BuildDistribution(app_.settings.AppPath, order);
    services_.platform.SetBusyPointer(false);
    TellResult(order, result);
    if (!result.Error) Close();
}

void Haifu::TellResult(const DistributionOrder& order, const DistributionResult& result) {
    const bool english = English();
    if (result.Error)
        return Say(Text{"The distribution could not be built, and nothing of it was kept:\r\n",
                        "配布データを作成できませんでした。途中までのデータは削除しました。\r\n"}
                       .Str(english) +
                   result.FailedAt.string() + "\r\n(" + result.Error.message() + ")");
    if (!result.Missing.empty()) {
        std::string message = Text{"The distribution was built, but these files were not found:",
                                   "配布データを作成しましたが、次のファイルがありませんでした:"}
                                  .Str(english);
        for (std::size_t i = 0; i < result.Missing.size() && i < MissingFilesNamed; ++i)
            message += "\r\n" + result.Missing.at(i);
        if (result.Missing.size() > MissingFilesNamed)
            message += "\r\n... + " + std::to_string(result.Missing.size() - MissingFilesNamed);
        Say(message);
    }
    if (order.Target == Medium::Web && !result.Packed)
        Say(Text{"The folder was built, but it could not be packed.",
                 "フォルダーは作成しましたが、圧縮ファイルを作成できませんでした。"}
                .In(english));
}

void Haifu::Say(std::string_view text, std::string_view title) {
    services_.dialogs.Ok(text, title.empty() ? std::string_view(app_.settings.AppTitle) : title);
}

}  // namespace keelview
