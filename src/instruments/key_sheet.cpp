#include "instruments/key_sheet.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "base/bilingual.h"

namespace keelview {

namespace {

constexpr double Margin = 15.0;
constexpr double MeaningLeft = 150.0;
constexpr double LinePitch = 21.0;

constexpr Text Title{"Keys and mouse", "キーとマウス"};

struct KeyLine {
    Text Keys;
    Text Meaning;
};

constexpr KeyLine Lines[] = {
    {{"Space", "スペース"}, {"plays and stops", "再生・停止"}},
    {{"←  →", "←  →"}, {"one step back, one step on", "1ステップ戻る・進む"}},
    {{"Shift + ←  →", "Shift + ←  →"}, {"ten steps", "10ステップ戻る・進む"}},
    {{"Home", "Home"}, {"to the start", "スタートへ"}},
    {{"End", "End"}, {"to the finish of the last boat", "最後の艇のフィニッシュへ"}},
    {{"Wheel", "ホイール"},
     {"zooms around the pointer; in AutoTrace around the boats",
      "ポインタを中心に拡大・縮小（自動追尾中は艇を中心に）"}},
    {{"Drag", "ドラッグ"}, {"moves the map; ends AutoTrace", "地図を移動（自動追尾は解除）"}},
    {{"Left, right click", "左・右クリック"}, {"enlarges, shrinks the map", "地図を拡大・縮小"}},
    {{"F11", "F11"}, {"whole screen, and back", "全画面表示・解除"}},
    {{"Esc", "Esc"}, {"leaves a tool, the whole screen", "ツール・全画面表示を終える"}},
    {{"Return", "Enter"}, {"pushes the button that Tab has led to", "Tabで選んだボタンを押す"}},
    {{"?", "?"}, {"this sheet", "この表"}},
};

constexpr double Height = 2 * Margin + LinePitch * (std::size(Lines) + 1.5);

}  // namespace

KeySheet::KeySheet(RaceDisp& form, const Voice& voice) : form_(form), voice_(voice) {
    form_.Picture15.OnMouseDown = [this](const MouseEvent&) { form_.Picture15.Hide(); };
}

void KeySheet::Toggle() {
    if (PutAway()) return;
    const double side = form_.MapSide();
    double width = 0;
    for (const KeyLine& line : Lines)
        width = std::max(width, form_.Picture15.TextWidth(voice_.In(line.Meaning)));
    width = std::ceil(MeaningLeft + width + Margin);
    form_.Picture15.Move(form_.Picture1.Left() + std::floor((side - width) / 2),
                         form_.Picture1.Top() + std::floor((side - Height) / 2), width, Height);
    Draw();
    form_.Picture15.Show();
}

bool KeySheet::PutAway() {
    const bool shown = form_.Picture15.Visible();
    form_.Picture15.Hide();
    return shown;
}

void KeySheet::Draw() {
    Surface& sheet = form_.Picture15;
    sheet.Cls();
    sheet.ForeColor = Blue;
    sheet.PrintAt(Margin, Margin, voice_.In(Title));
    double y = Margin + 1.5 * LinePitch;
    for (const KeyLine& line : Lines) {
        sheet.ForeColor = Blue;
        sheet.PrintAt(Margin, y, voice_.In(line.Keys));
        sheet.ForeColor = Black;
        sheet.PrintAt(MeaningLeft, y, voice_.In(line.Meaning));
        y += LinePitch;
    }
}

}  // namespace keelview
