#include "instruments/hint_table.h"

#include <algorithm>

namespace keelview {

namespace {

using enum HintGate;

ControlHint HintOf(Control& owner, HintGate gate, HintSize size, Text words) {
    return {.Owner = &owner, .Gate = gate, .Size = size, .Words = words};
}

/// The film's steps and speed, the race file, its times, the course.
std::vector<ControlHint> RaceDataHints(RaceDisp& form) {
    return {
        HintOf(form.Command6, HintsOn, {130, 16}, {"Go on by one step", "1コマ進めます"}),
        HintOf(form.Command7, HintsOn, {130, 16}, {"Go back by one step", "1コマ戻します"}),
        HintOf(form.Command4, HintsOn, {220, 32},
               {"Set the start and the finish of\n"
                "the race to the times above.",
                "上の時刻をレースのスタートと\n"
                "フィニッシュに設定します"}),
        HintOf(form.Command19, HintsOn, {230, 45},
               {"Looks for start, marks, course and finish\n"
                "in the tracks, tells what was found,\n"
                "and fills it in where you say so.",
                "航跡からスタート・マーク・コース・\n"
                "フィニッシュを探して表示し、\n"
                "確認の上でレースに設定します。"}),
        HintOf(form.Text2, Always, {270, 16},
               {"Change the playback speed by the slide bar", "早送り速度を右のスライドバーで変更します"}),
        HintOf(form.Command2, HintsOn, {200, 45},
               {"Click this button, then click the\n"
                "place of the mark on the map.\n"
                "< Auto trace is to be Off >",
                "このボタンを押してから地図をクリック\n"
                "するとマークを設定できます。\n"
                "<自動追尾をOffにすること>"}),
        HintOf(form.Command3, HintsOn, {220, 45},
               {"Click this button, then click both ends\n"
                "of the line on the map.\n"
                "< Auto trace is to be Off >",
                "このボタンを押してから地図を2点クリック\n"
                "するとラインを設定できます。\n"
                "<自動追尾をOffにすること>"}),
        HintOf(form.Command5, HintsOn, {230, 58},
               {"Click this button, then click lines\n"
                "and marks in the order of the course\n"
                "(Shift: second mark of a gate).\n"
                "< Auto trace is to be Off >",
                "このボタンを押してから地図上のライン、\n"
                "マークを押してコースを設定します。\n"
                "（Shift: ゲートの2つ目のマーク）\n"
                "<自動追尾をOffにすること>"}),
        HintOf(form.Command9, HintsOn, {230, 32},
               {"Choose a race file in the box at the left,\n"
                "then click here to show it.",
                "左の窓でレースを選択してからこの\n"
                "ボタンを押せば選択したレースが見れます"}),
    };
}

ControlHint ChoiceOf(OptionButton& choice, HintSize size, Text words) {
    ControlHint hint = HintOf(choice, HintsOn, size, words);
    hint.Choice = &choice;
    return hint;
}

/// What is chosen of the film, the map and the views.
std::vector<ControlHint> ChoiceHints(RaceDisp& form) {
    return {
        ChoiceOf(form.Option6, {200, 32},
                 {"Play the film forward\n( Space stops it and goes on )",
                  "順方向に再生します\n（スペースキーで停止・再開）"}),
        ChoiceOf(form.Option7, {200, 16}, {"Stop the film ( Space )", "再生を停止します（スペース）"}),
        ChoiceOf(form.Option8, {200, 16}, {"Play the film backward", "逆方向に再生します"}),
        ChoiceOf(form.Option3, {230, 16},
                 {"Turn the map so that the wind is up", "風上が上になるように表示します"}),
        ChoiceOf(form.Option2, {230, 16}, {"Turn the map so that north is up", "北を上に表示します"}),
        ChoiceOf(form.Option9, {230, 16},
                 {"Show the map with boats and tracks", "艇と航跡の地図を表示します"}),
        ChoiceOf(form.Option10, {230, 16},
                 {"Show courses and speeds over time", "針路と速度のグラフを表示します"}),
        ChoiceOf(form.Option11, {230, 16},
                 {"Show the tables of all legs", "レグごとのデータ表を表示します"}),
        ChoiceOf(form.Option1, {230, 16}, {"When each boat passed the marks", "各マークの通過時刻"}),
        ChoiceOf(form.Option4, {230, 16}, {"What each boat sailed on each leg", "各レグの航走距離"}),
        ChoiceOf(form.Option5, {230, 16}, {"The mean speeds on each leg", "各レグの平均速度"}),
        ChoiceOf(form.Option12, {230, 16},
                 {"Port and starboard, up and down the wind", "風上・風下、両タックの解析"}),
    };
}

/// The side panel: the ways in and what its buttons do.
std::vector<ControlHint> SidePanelHints(RaceDisp& form) {
    return {
        HintOf(form.Command14, HintsOn, {200, 32},
               {"What a coach asks: takes the side\npanel out, or puts it away.",
                "コーチ用のサイドパネルを\n引き出します・しまいます"}),
        HintOf(form.Command15, HintsOn, {220, 32},
               {"Copies the tables of this tab,\nto be pasted into a spreadsheet.",
                "このタブの表をコピーします\n（表計算ソフトに貼り付けられます）"}),
        HintOf(form.Command16, HintsOn, {230, 32},
               {"Writes the estimated wind into the\nwind file of the race. It asks first.",
                "推定風をレースの風データファイルに\n書き込みます（確認あり）"}),
        HintOf(form.Command17, HintsOn, {230, 32},
               {"Saves this tab as a page to be printed,\nin the folder attachment.",
                "このタブを印刷用のページとして\nattachmentフォルダに保存します"}),
        HintOf(form.Check11, HintsOn, {220, 32},
               {"Takes the current off the speeds:\nthose through the water are left.",
                "潮流を差し引いて\n対水速度で表示します"}),
    };
}

std::vector<ControlHint> CheckBoxHints(RaceDisp& form) {
    ControlHint enlarge = HintOf(form.Check10, HintsOn, {200, 30},
                                 {"When checked, boats are drawn no\n"
                                  "smaller than can be seen well.",
                                  "艇の最低表示サイズを拡大します。\n"
                                  "ﾁｪｯｸを外すと実ｻｲｽﾞで表示します。"});
    enlarge.HidesBoatLabel = true;
    return {
        HintOf(form.Check9, Always, {150, 15},
               {"Show all boat names or not", "全艇名の表示をon-offします"}),
        HintOf(form.Check7, Always, {170, 16}, {"Draw the coastline or not", "海岸線の表示をon-offします"}),
        HintOf(form.Check3, Always, {170, 16}, {"Switch the hints on or off", "ヒントをON/OFFします"}),
        enlarge,
        HintOf(form.Check4, HintsOn, {170, 32},
               {"Draw a line across the wind\n"
                "to compare the heights.",
                "各艇の高さを比較します\n"
                "（風上が上の時に有効です）"}),
        HintOf(form.Check6, HintsOn, {170, 32},
               {"Draw all tracks or not.\n"
                "( When auto trace is off )",
                "航跡描画をON/OFFします\n"
                "（自動追尾時は無効です）"}),
        HintOf(form.Check2, Always, {220, 81},
               {"When checked, range and bearing are\n"
                "measured from the first click on the\n"
                "map to the place of the pointer.\n"
                "< Uncheck to end measuring >",
                "地図で距離・方位を測定します。\n"
                "このボタンを押すと測定モードになります\n"
                "測定モードの状態で地図をクリックすると\n"
                "測定の基点が設定され、マウスを移動して\n"
                "そこからの距離・方位を測定します\n"
                "（再度押すと測定モードを解除）"}),
        HintOf(form.Check5, HintsOn, {170, 16}, {"Switch auto trace on or off", "自動追尾をON/OFFします"}),
        HintOf(form.Check1, HintsOn, {230, 45},
               {"Draw a dot for each minute on the\n"
                "tracks of the boats in focus.\n"
                "( When auto trace is off )",
                "選択した艇の航跡に1分ごとの点を\n"
                "表示します\n"
                "（自動追尾時は無効です）"}),
        HintOf(form.Check8, Always, {170, 15},
               {"Draw the lay lines or not", "レイラインの表示をon-offします"}),
    };
}

/// Each cell tells its hint on its own colour.
std::vector<ControlHint> ColourCellHints(RaceDisp& form) {
    std::vector<ControlHint> hints;
    for (Surface* cell : form.ColourCells()) {
        ControlHint hint =
            HintOf(*cell, HintsOn, {160, 17}, {"Change the sea colour", "海面の色を変更します"});
        hint.OnOwnColour = true;
        hint.Ink = cell == &form.BCOL1 ? Black : White;
        hints.push_back(hint);
    }
    return hints;
}

/// Picture, documents, manual, web page, exit.
std::vector<ControlHint> DoorHints(RaceDisp& form) {
    return {
        HintOf(form.btnHATENA, Always, {160, 32},
               {"Show the manual\n( the key ? shows all keys )",
                "操作マニュアルを表示します。\n（キー ? で全キーを表示）"}),
        HintOf(form.Command10, Always, {220, 40},
               {"Start the graphics software and\n"
                "show the present screen in it.\n"
                "( to retouch, print or save )",
                "画像処理ソフトを立ち上げて現在\n"
                "表示されている画面の画像を表示します。\n"
                "（書き加え、修正、保存など可能）"}),
        HintOf(form.Command13, Always, {220, 32},
               {"Show the documents of the race.\n"
                "<ex. Sailing Instructions, Results >",
                "関係する資料を参照します。\n"
                "<　例.　帆走指示書、レース結果、写真>"}),
        HintOf(form.Command1, MenuBehind, {180, 17},
               {"Exit and return to the menu", "メニュー画面に戻ります。"}),
        HintOf(form.Label1, Always, {280, 32},
               {"Open the site of Quaymark Ltd\n"
                "( for the latest information )",
                "ｸｴｲﾏｰｸ（QMK）のﾎｰﾑﾍﾟｰｼﾞを開きます\n"
                "ここから最新データをﾀﾞｳﾝﾛｰﾄﾞできます(準備中)"}),
    };
}

/// The entry of wind on the graphs.
ControlHint WindEntryHint(RaceDisp& form) {
    constexpr Text Words{
        "Click here to enter wind directions.\n"
        "Then click the left graph at the direction the wind\n"
        "had at that time.\n"
        "( In any order: more can be added between )\n"
        "\n"
        "Click here again to save the wind and to go on.",
        "ここをクリックすると風向入力モードになります。\n"
        "入力モードにしてからグラフをクリックして風向を\n"
        "入力していきます\n"
        "（時間軸の順序は問いませんので途中追加もＯＫです）\n"
        "\n"
        "再度このボタンを押すとデータが記録されて入力モード\n"
        "から脱出できます。"};
    ControlHint hint = HintOf(form.Command12, HintsOn, {300, 90}, Words);
    hint.HidesBoatLabel = true;
    return hint;
}

/// The smoothing of the graphs.
std::vector<ControlHint> SmoothingHints(RaceDisp& form) {
    std::vector<ControlHint> hints;
    for (OptionButton* option : {&form.Option13, &form.Option14, &form.Option15})
        hints.push_back(HintOf(*option, HintsOn, {230, 45},
                               {"Raw shows every fix as it is;\n"
                                "means over 5 or 15 seconds make\n"
                                "the lines calmer.",
                                "「生」は全測位点をそのまま表示します。\n"
                                "5秒、15秒の平均にすると線が\n"
                                "滑らかになります。"}));
    return hints;
}

bool IsOneOf(std::initializer_list<const Control*> controls, const Control& owner) {
    return std::ranges::find(controls, &owner) != controls.end();
}

/// What stands in the place of the map with what a hint stands below on it: the control itself or the frame
/// round it.
struct OnPage {
    const Surface* Page = nullptr;
    const Control* Above = nullptr;
};

OnPage PageOf(const Control& owner, const RaceDisp& form) {
    if (&owner == &form.Command12) return {&form.GPIC, &owner};
    if (IsOneOf({&form.Option13, &form.Option14, &form.Option15}, owner)) return {&form.GPIC, &form.Frame5};
    if (IsOneOf({&form.Option1, &form.Option4, &form.Option5, &form.Option12}, owner))
        return {&form.PicTime, &form.Frame2};
    return {};
}

/// Where the top of a control lies on its panel; choices stand in frames.
double TopOnPanel(const Control& owner, const RaceDisp& form) {
    const bool inFrame = IsOneOf({&form.Option6, &form.Option7, &form.Option8, &form.Option3, &form.Option2,
                                  &form.Option9, &form.Option10, &form.Option11},
                                 owner);
    return owner.Top() + (inFrame ? form.Frame3.Top() : 0.0);  // the frames stand beside each other
}

}  // namespace

std::vector<ControlHint> ControlHints(RaceDisp& form) {
    std::vector<ControlHint> hints{WindEntryHint(form)};
    for (const auto& group :
         {SmoothingHints(form), ChoiceHints(form), SidePanelHints(form), RaceDataHints(form),
          CheckBoxHints(form), ColourCellHints(form), DoorHints(form)})
        hints.insert(hints.end(), group.begin(), group.end());
    return hints;
}

std::vector<ControlHint> GreyHints(RaceDisp& form) {
    std::vector<ControlHint> hints;
    for (Control* tool : std::initializer_list<Control*>{&form.Command2, &form.Command3, &form.Command5})
        hints.push_back(HintOf(*tool, AutoTrace, {230, 32},
                               {"Grey while AutoTrace follows the boats:\n"
                                "untick AutoTrace first.",
                                "自動追尾中は使えません。\n"
                                "先に自動追尾をOffにしてください。"}));
    const ControlHint lacksMarks = HintOf(form.Command5, Always, {230, 45},
                                          {"Grey: a course needs two marks or lines.\n"
                                           "Set them with \"Set Mark\" and\n"
                                           "\"Set Line\" first.",
                                           "マークとラインが合わせて2つ以上必要です。\n"
                                           "先にマーク設定、ライン設定で\n"
                                           "設定してください。"});
    const ControlHint lacksCourse = HintOf(form.Option11, Editing, {230, 45},
                                           {"Grey: the tables need a course.\n"
                                            "Set marks and lines, then their order\n"
                                            "with \"Set Course\".",
                                            "コースがないため表を表示できません。\n"
                                            "マークとラインを設定し、ｺｰｽ設定で\n"
                                            "順番を指定してください。"});
    const ControlHint noCourse =
        HintOf(form.Option11, Always, {230, 17},
               {"Grey: this race has no course", "このレースにはコースがありません"});
    const ControlHint noDocuments =
        HintOf(form.Command13, Always, {230, 17},
               {"Grey: this race has no documents", "このレースには資料がありません"});
    hints.insert(hints.end(), {lacksMarks, lacksCourse, noCourse, noDocuments});
    return hints;
}

HintPlace BesidePanel(const RaceDisp& form, double top, double width, double height) {
    constexpr double gap = 5.0;
    const double mapTop = form.Picture1.Top();
    const double lowest = mapTop + form.Text15.Top() - gap - height;  // above the readouts at the foot
    HintPlace place{.Left = form.Picture1.Left() + form.MapSide() - width - gap,
                    .Top = std::max(std::min(top, lowest), mapTop + gap),
                    .Width = width,
                    .Height = height};
    // The finish list grows down the same edge of the map.
    const Surface& list = form.Position;
    if (list.Visible() && form.Picture1.Visible() && place.Top < mapTop + list.Top() + list.Height() + gap)
        place.Left = form.Picture1.Left() + list.Left() - width - gap;
    return place;
}

HintPlace PlaceOf(const ControlHint& hint, const RaceDisp& form, bool useEnglish) {
    const double width = useEnglish ? hint.Size.Width : hint.Size.WidthJapanese;
    const Control& owner = *hint.Owner;
    const OnPage on = PageOf(owner, form);
    if (on.Page == nullptr)
        return BesidePanel(form, form.Picture7.Top() + TopOnPanel(owner, form), width, hint.Size.Height);
    // A frame may stand at the right end of its page.
    const double left =
        std::max(0.0, on.Page->Left() + std::min(on.Above->Left(), on.Page->Width() - width - 4));
    return {.Left = left,
            .Top = on.Page->Top() + on.Above->Top() + on.Above->Height() + 4,
            .Width = width,
            .Height = hint.Size.Height};
}

}  // namespace keelview
