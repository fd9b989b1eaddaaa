#include <initializer_list>

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

void FmCompile::ApplyCaptions() {
    const bool english = English();
    SetCaption(Text{"Edit Race Control FIle", "レース管理ファイル編集"}.In(english));
    Label14.SetCaption(Text{
        "At least, GPS data are to be filled to show the race, (* can be ignored)  When all data are "
        "filled, click ' Save \r\nand Show Race' button. Mark ,Line and other data can be set in Race "
        "Screen.",
        "最低限GPSファイルを選択、指定してください。　この枠内のデータを入力後「保存→レース表示ボタンで\r\n"
        "レースを表示してからマーク、ライン、スタート時刻などを入力可能です。　(*印は省略可)"}
                           .In(english));
    Label15.SetCaption(Text{"All data in this frame can be changed at Show Race Screen.",
                            "この枠内のデータはレース表示画面で設定可能です。"}
                           .In(english));
    Label8.SetCaption(Text{"Title 1 <*>", "ﾀｲﾄﾙ1 (*)"}.In(english));
    Label9.SetCaption(Text{"Title 2 <*>", "ﾀｲﾄﾙ2 (*)"}.In(english));
    Label12.SetCaption("BOAT NAME　＆  GPS FILE　　　　　 (　Shift + ｸﾘｯｸで削除　）");
    Label10.SetCaption(Text{"LayLine <UP>", "ﾚｲﾗｲﾝ(UP)"}.In(english));
    Label7.SetCaption("(DN)");
    Label2.SetCaption(Text{"Start Time", "ｽﾀｰﾄ日時"}.In(english));
    Label3.SetCaption(Text{"FinishTime", "ﾌｨﾆｯｼｭ日時"}.In(english));
    Label1.SetCaption(Text{"Time Diff", "時差"}.In(english));
    Label5.SetCaption("LOA           m");
    Label6.SetCaption(Text{"Mag Variation <W=->", "磁気偏差(W = - )"}.In(english));
    Label13.SetCaption(Text{"Pre Start Time <min>", "スタート前の表示時間         分"}.In(english));
    Label4.SetCaption(Text{"Wind Direction", "平均風向"}.In(english));
    Label16.SetCaption(Text{"Att Files", "添付資料"}.In(english));
    Label11.SetCaption(Text{"Wind Data", "風ﾃﾞｰﾀﾌｧｲﾙ"}.In(english));
    Frame2.SetCaption(Text{"Map Direction", "コース表示"}.In(english));
    Option2.SetCaption(Text{"WindWd", "風向が上"}.In(english));
    Option1.SetCaption(Text{"NothWd", "北が上"}.In(english));
    Command1.SetCaption(Text{"Choose GPS file", "GPSﾃﾞｰﾀﾌｧｲﾙ選択"}.In(english));
    Command2.SetCaption("OK");
    Command3.SetCaption("CANCEL");
    Command6.SetCaption(Text{"Open Race Control File", "レース管理ファイル読込"}.In(english));
    const Text save{"Save File and Show Race", "データ保存→レース表示"};
    Command9.SetCaption(save.In(english));
    Command4.SetCaption(save.In(english));
    Command10.SetCaption(Text{"Choose Attachment Files", "添付資料選択"}.In(english));
    Command11.SetCaption(Text{"Clear", "クリア"}.In(english));
    Command5.SetCaption(Text{"Edit Race Control File with NotePad", "直接テキストを編集"}.In(english));
    Command7.SetCaption(Text{"Choose Wind Data File", "風データを選択"}.In(english));
    Command8.SetCaption(Text{"EXIT", "戻　　　　る"}.In(english));
}

void FmCompile::ApplyColours() {
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

void FmCompile::Place() {
    for (Label* label :
         {&Label14, &Label10, &Label2, &Label3, &Label1, &Label6, &Label15, &Label4, &Label16, &Label11})
        label->SetAlignment(Align::Centre);
    Shape1.Move(16, 8, 625, 318);
    Shape2.Move(16, 368, 625, 161);
    PlaceRequired();
    Command6.Move(96, 336, 161, 25);
    Command9.Move(376, 336, 153, 25);
    PlaceOptional();
    Command4.Move(480, 536, 161, 25);
    Command8.Move(480, 568, 161, 22);
}

void FmCompile::PlaceRequired() {
    Label14.Move(64, 24, 537, 30);
    Label8.Move(35, 76, 65, 17);
    Text7.Move(96, 72, 329, 18);
    Label9.Move(34, 98, 63, 17);
    Text8.Move(96, 96, 329, 18);
    Label12.Move(249, 115, 361, 17);
    List1.Move(248, 136, 377, 124);
    Command1.Move(32, 136, 209, 25);
    Frame1.Move(32, 166, 209, 73);
    Combo1.Move(8, 16, 193, 20);
    Command2.Move(8, 48, 89, 17);
    Command3.Move(112, 48, 89, 17);
    Label10.Move(27, 244, 89, 17);
    Text9.Move(112, 242, 37, 18);
    Label7.Move(168, 245, 25, 12);
    Text10.Move(200, 242, 41, 18);
    Label2.Move(24, 275, 84, 17);
    Text1.Move(104, 272, 201, 18);
    Label3.Move(24, 296, 81, 17);
    Text2.Move(104, 296, 201, 18);
    Label1.Move(312, 275, 65, 14);
    Text3.Move(376, 272, 33, 18);
    Label5.Move(331, 299, 81, 17);
    Text5.Move(357, 296, 34, 18);
    Label6.Move(424, 275, 121, 17);
    Text6.Move(544, 273, 41, 18);
    Label13.Move(436, 299, 177, 17);
    Text12.Move(559, 297, 24, 18);
}

void FmCompile::PlaceOptional() {
    Label15.Move(40, 376, 577, 17);
    Frame2.Move(344, 400, 97, 65);
    Option2.Move(8, 16, 81, 17);
    Option1.Move(8, 40, 81, 17);
    Label4.Move(456, 408, 109, 17);
    Text4.Move(569, 405, 49, 18);
    Label16.Move(32, 408, 73, 17);
    List2.Move(112, 408, 209, 52);
    Command10.Move(112, 472, 153, 17);
    Command11.Move(272, 472, 49, 19);
    Label11.Move(352, 474, 105, 17);
    Text11.Move(448, 472, 177, 18);
    Command5.Move(64, 496, 257, 17);
    Command7.Move(376, 496, 249, 17);
}

}  // namespace keelview
