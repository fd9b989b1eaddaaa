#include <functional>
#include <string>
#include <string_view>

#include "base/bilingual.h"
#include "session/race_disp.h"

namespace keelview {

namespace {

/// One control and its caption in both languages.
struct ControlCaption {
    std::function<void(std::string_view)> Set;
    Text Words;
};

template <class ControlType>
ControlCaption Of(ControlType& control, std::string_view english, std::string_view japanese) {
    return {[&control](std::string_view words) { control.SetCaption(words); }, Text{english, japanese}};
}

template <class ControlType>
ControlCaption Both(ControlType& control, std::string_view words) {
    return Of(control, words, words);
}

}  // namespace

void RaceDisp::ApplyCaptions(bool useEnglish) {
    const ControlCaption captions[] = {
        Both(Frame3, "TRACK"),
        Both(Option6, "FWD"),
        Both(Option7, "STOP"),
        Both(Option8, "BACK"),
        Both(Command6, "+"),
        Both(Command7, "-"),
        Both(Check3, "HINT"),
        Both(Label7, "ZOOM"),
        Both(btnHATENA, "? "),
        Both(Label5, "    BOAT NAME           BSP                          TWA"),
        Of(Frame1, "Direction", "表示方向"),
        Of(Option3, "Windwd", "風向が上"),
        Of(Option2, "Northwd", "北が上"),
        Of(Frame4, "Screen", "図選択"),
        Of(Option9, "Track", "軌跡"),
        Of(Option10, "Graph", "ｸﾞﾗﾌ"),
        Of(Option11, "Data", "ﾃﾞｰﾀ"),
        Of(Command2, "Set Mark", "マーク設定"),
        Of(Command3, "Set Line", "ライン設定"),
        Of(Command5, "Set Course", "コース設定"),
        Of(Label6, "Race File", "ﾚｰｽﾌｧｲﾙ"),
        Of(Command9, "Show", "表示"),
        Of(Label2, "Start", "ｽﾀｰﾄ日時"),
        Of(Label3, "Finish", "ﾌｨﾆｯｼｭ"),
        Of(Command4, "Above time OK", "時刻設定OK"),
        Of(Check9, "Name", "艇名"),
        Of(Check7, "Map", "地図"),
        Of(Check10, "Enlarge", "艇拡大"),
        Of(Check4, "Ref Line", "比較ライン"),
        Of(Check6, "Wake", "航跡"),
        Of(Check2, "R/B", "距離方位"),
        Of(Check5, "AutoTrace", "自動追尾"),
        Of(Check1, "TimeMk", "時間点"),
        Of(Check8, "LayLine", "ﾚｲﾗｲﾝ"),
        Of(Command10, "Save/Print", "画像処理"),
        Of(Command13, "Refference", "資料参照"),
        Of(Command1, "EXIT", "戻る"),
        Of(Option1, "Time", "時間"),
        Of(Option4, "Dist", "距離"),
        Of(Option5, "SPD", "速度"),
        Of(Option12, "ANA", "解析"),
        Of(Command11, "Exit", "戻る"),
        Of(Command8, "Delete Order", "ﾃﾞｰﾀ消去"),
        Of(Label4, "Course Order", "レースコース"),
        Of(Command12, "Make Wind Data", "風データ手動作成"),
    };
    for (const ControlCaption& caption : captions) caption.Set(caption.Words.In(useEnglish));
    Label1.SetCaption(Text{"Further Info: ", "お問い合わせ　"}.Str(useEnglish) + std::string(MakerAddress));
}

}  // namespace keelview
