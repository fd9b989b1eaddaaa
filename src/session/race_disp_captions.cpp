#include <string>

#include "display/form_table.h"
#include "session/race_disp.h"

namespace keelview {

void RaceDisp::PlaceAndCaption(bool useEnglish) {
    LayOutFilm(useEnglish);
    LayOutRace(useEnglish);
    LayOutChoices(useEnglish);
    ApplyTable(
        {
            {Label7, {11, 2, 49, 17}, Both("ZOOM")},
            {Label5, Both("    BOAT NAME           BSP                          TWA")},
            {Command12, {5, 5, 113, 17}, {"Make Wind Data", "風データ手動作成"}},
            {Frame5, {0, 2, 154, 25}},
            {Option13, {6, 4, 48, 17}, {"Raw", "生"}},
            {Option14, {56, 4, 42, 17}, {"5 s", "5秒"}},
            {Option15, {100, 4, 50, 17}, {"15 s", "15秒"}},
            {Option1, {"Time", "時間"}},
            {Option4, {"Dist", "距離"}},
            {Option5, {"SPD", "速度"}},
            {Option12, {"ANA", "解析"}},
            {Command11, {"Exit", "戻る"}},
            {Command8, {"Delete Order", "ﾃﾞｰﾀ消去"}},
            {Label4, {"Course Order", "レースコース"}},
            {Option16, {"Board", "順位"}},
            {Option17, {"Start", "スタート"}},
            {Option18, {"Turns", "ターン"}},
            {Option19, {"Wind", "風"}},
            {Option20, {"Polar", "ポーラー"}},
            {Option21, {"Debrief", "講評"}},
            {Command15, {"Copy", "コピー"}},
            {Command16, {"Take as the wind", "推定風を採用"}},
            {Check11, {"Less current", "潮流を差し引く"}},
            {Command17, {"Save page", "ページ保存"}},
        },
        useEnglish);
    Label1.SetCaption(Text{"Further Info: ", "お問い合わせ　"}.Str(useEnglish) + std::string(MakerAddress));
}

/// The control panel from its top down to the speed of the film.
void RaceDisp::LayOutFilm(bool useEnglish) {
    ApplyTable(
        {
            {Frame3, {10, 14, 84, 60}, Both("TRACK")},
            {Option6, {7, 12, 65, 17}, Both("FWD")},
            {Option7, {7, 26, 65, 17}, Both("STOP")},
            {Option8, {7, 40, 65, 17}, Both("BACK")},
            {Command6, {61, 13, 17, 17}, Both("+")},
            {Command7, {61, 39, 17, 17}, Both("-")},
            {Frame1, {100, 14, 77, 60}, {"Direction", "表示方向"}},
            {Option3, {4, 17, 68, 17}, {"Windwd", "風向が上"}},
            {Option2, {4, 34, 68, 17}, {"Northwd", "北が上"}},
            {Frame4, {183, 14, 74, 60}, {"Screen", "図選択"}},
            {Option9, {4, 14, 62, 15}, {"Track", "軌跡"}},
            {Option10, {4, 28, 62, 15}, {"Graph", "ｸﾞﾗﾌ"}},
            {Option11, {4, 42, 62, 15}, {"Data", "ﾃﾞｰﾀ"}},
            {Text2, {16, 80, 57, 18}},
            {HScroll1, {80, 80, 121, 17}},
        },
        useEnglish);
}

/// Its middle: the course, the race's file and times.
void RaceDisp::LayOutRace(bool useEnglish) {
    ApplyTable(
        {
            {Command2, {8, 104, 75, 17}, {"Set Mark", "マーク設定"}},
            {Command3, {89, 104, 80, 17}, {"Set Line", "ライン設定"}},
            {Command5, {176, 104, 77, 17}, {"Set Course", "コース設定"}},
            {Label6, {7, 106, 65, 17}, {"Race File", "ﾚｰｽﾌｧｲﾙ"}},
            {Combo1, {64, 103, 147, 20}},
            {Command9, {213, 104, 40, 17}, {"Show", "表示"}},
            {Label2, {9, 131, 73, 13}, {"Start", "ｽﾀｰﾄ日時"}},
            {Text9, {64, 128, 137, 18}},
            {btnHATENA, {211, 128, 33, 65}, Both("? ")},
            {Label3, {9, 152, 57, 13}, {"Finish", "ﾌｨﾆｯｼｭ"}},
            {Text10, {64, 152, 137, 18}},
            {Command4, {108, 176, 95, 17}, {"Above time OK", "時刻設定OK"}},
            {Command19, {8, 176, 95, 17}, {"Find the race", "レースを探す"}},
        },
        useEnglish);
}

/// Its lower part: what is shown, and where it leads.
void RaceDisp::LayOutChoices(bool useEnglish) {
    ApplyTable(
        {
            {Check9, {16, 200, 49, 17}, {"Name", "艇名"}},
            {Check7, {72, 200, 57, 17}, {"Map", "地図"}},
            {Check3, {128, 200, 57, 17}, Both("HINT")},
            {Check10, {184, 200, 73, 17}, {"Enlarge", "艇拡大"}},
            {Check4, {16, 216, 81, 17}, {"Ref Line", "比較ライン"}},
            {Check6, {96, 216, 73, 17}, {"Wake", "航跡"}},
            {Check2, {168, 216, 81, 17}, {"R/B", "距離方位"}},
            {Check5, {16, 232, 73, 17}, {"AutoTrace", "自動追尾"}},
            {Check1, {96, 232, 65, 17}, {"TimeMk", "時間点"}},
            {Check8, {168, 232, 73, 17}, {"LayLine", "ﾚｲﾗｲﾝ"}},
            {Command10, {16, 276, 89, 17}, {"Save/Print", "画像処理"}},
            {Command13, {112, 276, 65, 17}, {"Reference", "資料参照"}},
            {Command1, {184, 276, 65, 17}, {"EXIT", "戻る"}},
            {Command18, {8, 295, 54, 17}, {"Page ...", "ﾍﾟｰｼﾞ..."}},
            {Label1, {64, 295, 185, 17}},
        },
        useEnglish);
    double left = 16;
    for (Surface* cell : ColourCells()) {
        cell->Move(left, 256, 30, 13);
        left += 35;
    }
}

}  // namespace keelview
