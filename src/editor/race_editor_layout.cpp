#include "display/form_table.h"
#include "editor/race_editor.h"

namespace keelview {

namespace {

constexpr double BorderWidth = 6.0;
constexpr double CornerRadius = 24.0;

/// A filled box with round corners that takes the whole surface less `inset` on each side.
void FillRounded(Surface& surface, double inset, double radius, Colour colour) {
    const double right = surface.ScaleWidth() - 1 - inset;
    const double bottom = surface.ScaleHeight() - 1 - inset;
    surface.Fill = FillStyle::Solid;
    surface.FillColor = colour;
    surface.FilledBox(inset + radius, inset, right - radius, bottom, colour);
    surface.FilledBox(inset, inset + radius, right, bottom - radius, colour);
    for (const double x : {inset + radius, right - radius})
        for (const double y : {inset + radius, bottom - radius}) surface.Circle(x, y, radius, colour);
}

}  // namespace

void RaceEditor::LayOut() {
    SetCaption(voice_.In({"Edit Race Control File", "レース管理ファイル編集"}));
    for (Label* label : {&Label14, &Label10, &Label2, &Label3, &Label1, &Label6, &Label15, &Label4,
                         &Label16, &Label11, &Label17})
        label->SetAlignment(Align::Centre);
    LayOutRequired();
    LayOutOptional();
    const Text save{"Save File and Show Race", "データ保存→レース表示"};
    ApplyTable(
        {
            {Command6, {96, 336, 161, 25}, {"Open Race Control File", "レース管理ファイル読込"}},
            {Command9, {376, 336, 153, 25}, save},
            {Command4, {480, 536, 161, 25}, save},
            {Command8, {480, 568, 161, 22}, {"EXIT", "戻　　　　る"}},
            {Command12,
             {64, 540, 257, 22},
             {"Take marks and course from ...", "他のレースからマーク、コースを取込"}},
            {Label17, {64, 570, 257, 17}},
        },
        voice_.English());
}

void RaceEditor::LayOutRequired() {
    const Text instructions{
        "To show a race, GPS files at least must be chosen (* can be left out). When all data are filled "
        "in, click\r\n'Save File and Show Race'. Marks, lines and other data can be set in the race "
        "screen.",
        "最低限GPSファイルを選択、指定してください。　この枠内のデータを入力後「保存→レース表示ボタンで\r\n"
        "レースを表示してからマーク、ライン、スタート時刻などを入力可能です。　(*印は省略可)"};
    ApplyTable(
        {
            {Shape1, {16, 8, 625, 318}},
            {Label14, {64, 24, 537, 30}, instructions},
            {Label8, {35, 76, 65, 17}, {"Title 1 <*>", "ﾀｲﾄﾙ1 (*)"}},
            {Text7, {96, 72, 329, 18}},
            {Label9, {34, 98, 63, 17}, {"Title 2 <*>", "ﾀｲﾄﾙ2 (*)"}},
            {Text8, {96, 96, 329, 18}},
            {Label12,
             {249, 115, 361, 17},
             {"BOAT NAME  &  GPS FILE          ( Shift + click deletes )",
              "BOAT NAME　＆  GPS FILE　　　　　 (　Shift + ｸﾘｯｸで削除　）"}},
            {List1, {248, 136, 377, 124}},
            {Command1, {32, 136, 209, 25}, {"Choose GPS file", "GPSﾃﾞｰﾀﾌｧｲﾙ選択"}},
            {Command14,
             {32, 166, 209, 25},
             {"Choose several GPS files ...", "複数のGPSﾃﾞｰﾀﾌｧｲﾙを選択 ..."}},
            {Frame1, {32, 166, 209, 73}},
            {Combo1, {8, 16, 193, 20}},
            {Command2, {8, 48, 89, 17}, Both("OK")},
            {Command3, {112, 48, 89, 17}, {"CANCEL", "キャンセル"}},
            {Label10, {27, 244, 89, 17}, {"LayLine <UP>", "ﾚｲﾗｲﾝ(UP)"}},
            {Text9, {112, 242, 37, 18}},
            {Label7, {168, 245, 25, 12}, Both("(DN)")},
            {Text10, {200, 242, 41, 18}},
            {Label2, {24, 275, 84, 17}, {"Start Time", "ｽﾀｰﾄ日時"}},
            {Text1, {104, 272, 201, 18}},
            {Label3, {24, 296, 81, 17}, {"Finish Time", "ﾌｨﾆｯｼｭ日時"}},
            {Text2, {104, 296, 201, 18}},
            {Label1, {312, 275, 65, 14}, {"Time Diff", "時差"}},
            {Text3, {376, 272, 33, 18}},
            {Label5, {331, 299, 81, 17}, Both("LOA           m")},
            {Text5, {357, 296, 34, 18}},
            {Label6, {424, 275, 121, 17}, {"Mag Variation <W=->", "磁気偏差(W = - )"}},
            {Text6, {544, 273, 41, 18}},
            {Label13, {436, 299, 177, 17}, {"Pre Start Time <min>", "スタート前の表示時間         分"}},
            {Text12, {559, 297, 24, 18}},
        },
        voice_.English());
}

void RaceEditor::LayOutOptional() {
    ApplyTable(
        {
            {Shape2, {16, 368, 625, 161}},
            {Label15,
             {40, 376, 577, 17},
             {"All data in this frame can be changed in the race screen.",
              "この枠内のデータはレース表示画面で設定可能です。"}},
            {Frame2, {344, 400, 97, 65}, {"Map Direction", "コース表示"}},
            {Option2, {8, 16, 81, 17}, {"WindWd", "風向が上"}},
            {Option1, {8, 40, 81, 17}, {"NorthWd", "北が上"}},
            {Label4, {456, 408, 109, 17}, {"Wind Direction", "平均風向"}},
            {Text4, {569, 405, 49, 18}},
            {Label16, {32, 408, 73, 17}, {"Att Files", "添付資料"}},
            {List2, {112, 408, 209, 52}},
            {Command10, {112, 472, 153, 17}, {"Choose Attachment Files", "添付資料選択"}},
            {Command11, {272, 472, 49, 19}, {"Clear", "クリア"}},
            {Label11, {352, 474, 105, 17}, {"Wind Data", "風ﾃﾞｰﾀﾌｧｲﾙ"}},
            {Text11, {448, 472, 177, 18}},
            {Command5, {64, 496, 257, 17}, {"Edit Race Control File with Notepad", "直接テキストを編集"}},
            {Command7, {376, 496, 193, 17}, {"Choose Wind Data File", "風データを選択"}},
            {Command13, {576, 496, 49, 19}, {"Clear", "クリア"}},
        },
        voice_.English());
}

void RaceEditor::ApplyColours() {
    const Colour needed = Rgb(192, 255, 192);
    const Colour optional = Rgb(192, 255, 255);
    SetBackColor(White);
    Shape1.SetBackColor(White);
    FillRounded(Shape1, 0, CornerRadius, Rgb(255, 128, 128));
    FillRounded(Shape1, BorderWidth, CornerRadius - BorderWidth, needed);
    Shape2.SetBackColor(White);
    FillRounded(Shape2, 0, CornerRadius, Black);
    FillRounded(Shape2, 1, CornerRadius - 1, optional);
    Label14.SetBackColor(Red);
    Label14.SetForeColor(White);
    Label15.SetBackColor(Blue);
    Label15.SetForeColor(White);
    Label16.SetBackColor(optional);
    Label12.SetBackColor(needed);
    Frame1.SetBackColor(ButtonFace);
    Frame2.SetBackColor(optional);
    List1.SetBackColor(Rgb(255, 255, 192));
    Text13.SetBackColor(Rgb(255, 224, 192));
}

}  // namespace keelview
