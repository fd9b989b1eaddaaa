#include "distribution/distribution_form.h"

#include <QString>
#include <QSysInfo>
#include <algorithm>
#include <cstddef>

#include "base/files.h"
#include "base/strings.h"
#include "display/form_table.h"
#include "session/documents.h"

namespace keelview {

namespace {

/// No race control file, though its name ends like one.
constexpr std::string_view NotARace = "ver.txt";

/// The kind of system and processor that this program was built for.
std::string OwnSystem() {
    std::string system = QSysInfo::kernelType().toStdString();
    if (system == "linux") system = "Linux";
    std::string processor = QSysInfo::buildCpuArchitecture().toStdString();
    std::ranges::replace(processor, '_', '-');
    return system + " " + processor;
}

/// Which systems a distribution starts on.
std::string SystemsText(const Systems& systems, const Voice& voice) {
    if (!systems.Own && !systems.Windows)
        return voice.Str({"It has races alone, and no program.", "プログラムは含まれていません。"});
    constexpr Text Windows{"Windows 10 or newer (64 bit)", "Windows 10 以降 (64ビット)"};
    std::string names;
    if (systems.Own)
        names = OwnSystem() + voice.Str({", as new as this system or newer", " (このシステム以降)"});
    if (systems.Own && systems.Windows) names += voice.Str({", and for ", "、"});
    if (systems.Windows) names += voice.Str(Windows);
    return voice.Str({"It is for ", "対応システム: "}) + names + (voice.English() ? "." : "");
}

}  // namespace

DistributionForm::DistributionForm(const Settings& settings, Services& services)
    : Form("Haifu", Kind::Fixed, 316, 428),
      settings_(settings),
      services_(services),
      voice_(settings, services.dialogs) {
    SetFont(settings.UiFontName, 9 * settings.FontScale);
    LayOut();
    List1.SetBackColor(Rgb(255, 255, 128));
    Check2.Hide();
    OfferRaces();
    List1.OnMouseDown = [this](const MouseEvent&) { List1_MouseDown(); };
    List2.OnMouseDown = [this](const MouseEvent&) { List2_MouseDown(); };
    for (OptionButton* medium : {&Option1, &Option2, &Option3})
        medium->OnClick = [this] { Medium_Click(); };
    Medium_Click();
    Command1.OnClick = [this] { Command1_Click(); };
    Command2.OnClick = [this] { Close(); };
    Command3.OnClick = [this] { Command3_Click(); };
}

void DistributionForm::LayOut() {
    SetCaption(voice_.In({"Create Distribution File", "配布データの作成"}));
    ApplyTable(
        {
            {Label3,
             {12, 8, 297, 14},  // clear of the box below
             {"Name of the Folder to be Made  ( a new name )",
              "配布データを収納するフォルダー名　(新しい名称）"}},
            {Combo1, {11, 23, 289, 20}},
            {Label1, {8, 56, 289, 17}, {"Choose Race Files to Distribute", "レースファイル選択 "}},
            {List1, {8, 72, 225, 64}},
            {Label2, {12, 148, 209, 17}, {"List of Race Files", "配布レースファイルのリスト"}},
            {List2, {8, 168, 225, 100}},
            {Command3, {248, 168, 57, 25}, {"Redo", "やり直し"}},
            {Label4,
             {8, 280, 305, 17},
             {"Startup Race Name ( Click Name listed above )",
              "ｽﾀｰﾄｱｯﾌﾟ時のﾚｰｽﾌｧｲﾙ名　（上段配布ﾚｰｽﾌｧｲﾙから選択）"}},
            {Text1, {8, 296, 225, 21}},
            {Frame1, {8, 328, 113, 57}, {"Media for Distribution", "ファイルの種類"}},
            {Option1, {8, 13, 97, 14}, {"WEB", "ＷＥＢ配信用"}},
            {Option2, {8, 27, 97, 14}, {"CD-ROM", "CD-ROM作成"}},
            {Option3, {8, 41, 97, 14}, {"PAGE", "ブラウザー用"}},
            {Check1, {136, 336, 137, 17}, {"Attach Map Data", "地図データ添付"}},
            {Check2, {136, 360, 153, 17}, {"Smallest Data Size", "データサイズ最小化"}},
            {Check3, {136, 360, 169, 17}, {"One Page for Each Race", "レースごとに1ページ"}},
            {Command2, {8, 392, 145, 25}, {"Cancel", "キャンセル"}},
            {Command1, {160, 392, 145, 25}, {"Create Distribution File", "配布ファイル作成"}},
        },
        voice_.English());
}

void DistributionForm::OfferRaces() {
    std::size_t left = 0;
    for (const std::string& name : ListFiles(FindBelow(settings_.AppPath, "raceadmin"), "*.txt")) {
        if (name == NotARace) continue;
        if (raceFileChoices_.size() >= MaxRaceChoices) {
            ++left;
            continue;
        }
        raceFileChoices_.push_back(name);
        List1.AddItem(name);
    }
    if (left > 0)
        voice_.SayUnder(settings_.AppTitle,
                        voice_.Str({"Only the first 200 race files are listed. Not listed: ",
                                    "最初の200レースだけを表示します。表示されないファイル数: "}) +
                            std::to_string(left));
}

void DistributionForm::List1_MouseDown() {
    const int row = List1.ListIndex();
    if (row < 0 || row >= static_cast<int>(raceFileChoices_.size())) return;
    if (pendingRaceNames_.size() >= MaxPendingRaces)
        return voice_.Say({"A distribution holds at most 50 races", "配布できるのは50レースまでです"});
    pendingRaceNames_.push_back(raceFileChoices_.at(static_cast<std::size_t>(row)));
    List2.AddItem(pendingRaceNames_.back());
}

void DistributionForm::List2_MouseDown() {
    const int row = List2.ListIndex();
    if (row >= 0 && row < static_cast<int>(pendingRaceNames_.size()))
        Text1.SetText(pendingRaceNames_.at(static_cast<std::size_t>(row)));
}

void DistributionForm::Command3_Click() {
    List2.Clear();
    pendingRaceNames_.clear();
}

void DistributionForm::Command1_Click() {
    if (pendingRaceNames_.empty()) return;
    const DistributionOrder order = Order();
    if (!MayBuild(order)) return;
    services_.platform.SetBusyPointer(true);
    const DistributionResult result = BuildDistribution(settings_.AppPath, order);
    services_.platform.SetBusyPointer(false);
    TellResult(order, result);
    if (!result.Error) Close();
}

void DistributionForm::Medium_Click() {
    Check3.SetEnabled(Target() == Medium::Page);
}

Medium DistributionForm::Target() const {
    if (Option3.Value()) return Medium::Page;
    return Option2.Value() ? Medium::CdRom : Medium::Web;
}

DistributionOrder DistributionForm::Order() const {
    return {.FolderName = std::string(Trim(Combo1.Text())),
            .RaceNames = pendingRaceNames_,
            .StartRace = std::string(Trim(Text1.Text())),
            .Target = Target(),
            .PageForEach = Check3.Value(),
            .AttachMap = Check1.Value(),
            .MinimiseSize = Check2.Value(),
            .UseEnglish = voice_.English()};
}

/// The folder's name can be used, and the person wants it made.
bool DistributionForm::MayBuild(const DistributionOrder& order) const {
    if (const auto trouble = FolderNameTrouble(order.FolderName)) {
        voice_.Say(*trouble);
        return false;
    }
    if (DistributionExists(settings_.AppPath, order.FolderName)) {
        voice_.SayUnder(voice_.In({"Keelview", "フォルダー名"}),
                        voice_.In({"A folder of this name exists. Input another name.",
                                   "同名のフォルダーがあります。新しい名前を入れてください。"}));
        return false;
    }
    return voice_.Ask(
        {"Do you want to create a new folder for distribution ?", "配布データフォルダーを作成しますか？"},
        {"Keelview", "配布用フォルダー名"});
}

/// Why there is no distribution; or where it lies, for which systems it is, and what it lacks.
void DistributionForm::TellResult(const DistributionOrder& order, const DistributionResult& result) {
    if (result.Error)
        return voice_.Say({"The distribution could not be built, and nothing of it was kept:",
                           "配布データを作成できませんでした。途中までのデータは削除しました。"},
                          result.FailedAt.string() + "\r\n(" + result.Error.message() + ")");
    std::string said = voice_.Str({"The distribution is ready:", "配布データを作成しました:"}) + "\r\n" +
                       result.Folder.string() + "\r\n";
    if (!result.Packed.empty()) said += result.Packed.string() + "\r\n";
    const bool onePage = order.Target == Medium::Page && !order.PageForEach;
    said += "\r\n" + (order.Target == Medium::Page
                          ? voice_.Str({"It opens in any browser.", "どのブラウザーでも開けます。"})
                          : SystemsText(result.For, voice_));
    if (order.Target == Medium::Web && result.Packed.empty())
        said += "\r\n\r\n" + voice_.Str({"It could not be packed into one file.",
                                         "圧縮ファイルは作成できませんでした。"});
    if (!result.Missing.empty())
        said += "\r\n\r\n" +
                voice_.Str({"These files were not found, and are not in it:",
                            "次のファイルがなかったため、含まれていません:"}) +
                "\r\n" + LinesOfBox(result.Missing);
    said += "\r\n\r\n" + (onePage ? voice_.Str({"Open it?", "開きますか？"})
                                  : voice_.Str({"Open the folder?", "フォルダーを開きますか？"}));
    if (services_.dialogs.YesNo(said, settings_.AppTitle))
        OpenDocument(settings_, services_, result.Folder.string());
}

}  // namespace keelview
