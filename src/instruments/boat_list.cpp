#include "instruments/boat_list.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include "analysis/track_derivation.h"
#include "base/dates.h"
#include "base/numbers.h"
#include "map/boat_label.h"
#include "session/livery.h"

namespace keelview {

namespace {

constexpr double SpriteSide = 15.0;  // of a boat at its usual size on the map
constexpr double TitleTop = 25.0;

constexpr Text FocusHint{
    "Checked boats are focused.\nUnchecked boats are out of focus.\n\nRight button to focus only 1 boat.",
    "チェックを入れた艇をフォーカスします\nフォーカスを外すと航跡、速度グラフなどが"
    "\n除外されてフォーカス艇が見やすくなります\n\n右ｸﾘｯｸで1艇だけのﾌｫｰｶｽも可能です。"};
constexpr Text RingHint{"A checked boat is focused, and its\nname is shown while it is checked.",
                        "チェックを入れた艇をフォーカスします\nこれにより常時艇名,艇速が表示されます"};
constexpr Text AllHint{"Click to focus all boats", "ここをクリックすると全艇にチェックが入ります"};

}  // namespace

BoatList::BoatList(RaceSession& session)
    : app_(session.App()),
      form_(session.Display()),
      stage_(session.TheStage()),
      film_(session.TheFilm()),
      voice_(session.TheVoice()) {
    form_.Label5.OnClick = [this] { Label5_Click(); };
    form_.Label5.OnMouseMove = [this](const MouseEvent&) { Label5_MouseMove(); };
    form_.Picture5.OnMouseMove = [this](const MouseEvent&) { Picture5_MouseMove(); };
    form_.Picture7.OnMouseMove = [this](const MouseEvent&) { Picture7_MouseMove(); };
    form_.Picture8.OnMouseMove = [this](const MouseEvent&) { Picture8_MouseMove(); };
    form_.Picture8.OnWheel = [this](const WheelEvent& turn) {
        form_.VScroll1.SetValue(form_.VScroll1.Value() + turn.Lines);
    };
    form_.VScroll1.OnChange = [this] { VScroll1_Change(); };
    form_.OnMouseMove = [this](const MouseEvent&) { Form_MouseMove(); };
}

void BoatList::Repaint(Changed changed) {
    if (Any(changed, Changed::Boats)) {
        form_.Ticks.Assign(app_.race.Boats.Count(), {});
        form_.VScroll1.SetValue(0);
        ConnectBoats();
    }
    if (Any(changed, Changed::Boats | Changed::Race)) {
        numbers_.Assign(app_.race.Boats.Count(), {});
        hintBoat_ = 0;
    }
    if (Any(changed, Changed::Boats | Changed::Race | Changed::Size)) {
        ConnectRows();
        FillRows();
    } else if (Any(changed, Changed::Focus)) {  // boats in focus have broader bars
        for (int row = 0; row < form_.Bnam.Count(); ++row) ShowNumbers(row);
    }
}

/// Rows that were there before are connected already.
void BoatList::ConnectRows() {
    for (int row = 0; row < form_.Bnam.Count(); ++row) {
        CheckBox& name = form_.Bnam[row];
        CheckBox& ring = form_.Maru[row];
        if (name.OnClick) continue;
        name.OnClick = [this, row] { Bnam_Click(row); };
        name.OnMouseUp = [this, row](const MouseEvent& event) { Bnam_MouseUp(row, event.Button); };
        name.OnMouseMove = [this, row](const MouseEvent&) { Bnam_MouseMove(row); };
        name.OnTabbedTo = [this, row] { Row_TabbedTo(row, form_.Bnam); };
        ring.OnClick = [this, row] { Maru_Click(row); };
        ring.OnMouseMove = [this, row](const MouseEvent&) { Maru_MouseMove(row); };
        ring.OnTabbedTo = [this, row] { Row_TabbedTo(row, form_.Maru); };
        for (TextBox* number : {&form_.Text5[row], &form_.Text6[row]})
            number->OnMouseMove = [this](const MouseEvent&) { Picture8_MouseMove(); };
        for (CheckBox* box : {&name, &ring}) box->OnMouseLeave = [this] { Hover(0); };
    }
}

void BoatList::ConnectBoats() {
    for (int boat = 1; boat <= app_.race.Boats.Count(); ++boat) {
        Sprite& sprite = form_.Boat[boat - 1];
        if (!sprite.OnMouseMove)
            sprite.OnMouseMove = [this, boat](const MouseEvent&) { Boat_MouseMove(boat); };
    }
}

void BoatList::FillRows() {
    numbers_.Resize(app_.race.Boats.Count());
    form_.Picture8.Cls();
    PrintTitles();
    firstBoat_ = form_.BoatOfRow(0);
    for (int row = 0; row < form_.Bnam.Count(); ++row) {
        const int boat = form_.BoatOfRow(row);
        CheckBox& name = form_.Bnam[row];
        name.SetBackColor(BoatColour(boat));
        name.SetForeColor(InkOn(BoatColour(boat)));
        name.SetStripes(LiveryOf(boat).Stripes);
        name.SetCaption(app_.race.Boats[boat].BoatName);
        ShowNumbers(row);
    }
    ShowTicks();
}

/// Those of the first column are a control.
void BoatList::PrintTitles() {
    const ListShape& list = form_.List();
    Surface& panel = form_.Picture8;
    const double points = std::exchange(panel.FontSize, 8 * app_.settings.FontScale);
    for (int column = 1; column < list.Columns; ++column) {
        const double left = column * list.RowWidth();
        panel.PrintAt(left + 25, TitleTop, "BOAT NAME");
        panel.PrintAt(left + 121, TitleTop, "BSP");
        panel.PrintAt(left + list.RowWidth() - 42, TitleTop, "TWA");
    }
    panel.FontSize = points;
}

void BoatList::ShowTicks() {
    focusing_ = true;
    for (int row = 0; row < form_.Bnam.Count(); ++row) {
        form_.Bnam[row].SetValue(form_.InFocus(form_.BoatOfRow(row)));
        form_.Maru[row].SetValue(form_.HasRing(form_.BoatOfRow(row)));
    }
    focusing_ = false;
}

void BoatList::Show(const Moment& now) {
    if (const auto& start = app_.race.Start.At())
        form_.Text1.SetText(DateTimeText(*start + FloorToInt(now.Time)));
    for (int boat = 1; boat <= now.Boats.Count(); ++boat) {
        const int row = boat - firstBoat_;
        if (TakeNumbers(boat, now.Boats[boat]) && row >= 0 && row < form_.Bnam.Count()) ShowNumbers(row);
    }
    if (app_.shown.HoverBoat > 0) PlaceLabel(app_.shown.HoverBoat);
    if (hintBoat_ > 0 && form_.Text7.Visible() && form_.Text7.Text() == hint_)
        PlaceHint();
    else
        hintBoat_ = 0;
}

/// True if the boat's row tells something else from now on.
bool BoatList::TakeNumbers(int boat, const BoatMoment& moment) {
    std::optional<Numbers>& told = numbers_[boat];
    if (!moment.IsSomewhere()) return std::exchange(told, std::nullopt).has_value();
    if (moment.On.Speed <= 0) return false;
    const Numbers now{moment.On.Speed, moment.TrueWindAngle};
    const bool same =
        told && told->Speed == now.Speed && std::lround(told->WindAngle) == std::lround(now.WindAngle);
    if (!same) told = now;
    return !same;
}

void BoatList::ShowNumbers(int row) {
    Surface& panel = form_.Picture8;
    const int boat = form_.BoatOfRow(row);
    const std::optional<Numbers>& told = numbers_[boat];
    const ListShape& list = form_.List();
    const double left = form_.Text5[row].Left() + form_.Text5[row].Width() + 2;
    const double end = list.RowLeft(row) + list.RowWidth();
    const double top = list.RowTop(row);
    panel.FilledBox(left, top, end, top + list.Pitch - 1, ButtonFace);
    form_.Text6[row].SetText(told ? WholeText(told->WindAngle) : "");
    form_.Text5[row].SetText(told ? SpeedText(told->Speed) : "");
    if (!told) return;
    const double right = std::min(left + told->Speed * SpeedBarScale(app_.tracks.TypicalSpeed), end);
    const bool inFocus = form_.InFocus(boat);
    DrawLiveryField(panel, boat, {left, top + (inFocus ? 0 : 4)}, {right, top + (inFocus ? 9 : 5)});
}

// The left button or the space bar.
void BoatList::Bnam_Click(int row) {
    if (focusing_) return;
    form_.Ticks[form_.BoatOfRow(row)].InFocus = form_.Bnam[row].Value();
    const bool anyFocused = std::ranges::any_of(form_.Ticks, &RaceDisp::BoatTicks::InFocus);
    FocusOn([&](int boat) { return anyFocused ? form_.InFocus(boat) : boat == 1; });
}

void BoatList::Bnam_MouseUp(int row, MouseButton button) {
    if (button == MouseButton::Left) return;  // the tick has told itself
    FocusOn([picked = form_.BoatOfRow(row)](int boat) { return boat == picked; });
}

void BoatList::Maru_Click(int row) {
    if (focusing_) return;
    form_.Ticks[form_.BoatOfRow(row)].Ring = form_.Maru[row].Value();
    FocusOn([this](int boat) { return form_.InFocus(boat); });
}

/// Where more boats are beyond the row, it comes to the middle of the list.
void BoatList::Row_TabbedTo(int row, ControlArray<CheckBox>& boxes) {
    const int rows = form_.Bnam.Count();
    if (row > 0 && row < rows - 1) return;
    const int boat = form_.BoatOfRow(row);
    form_.VScroll1.SetValue(boat - rows / 2);
    boxes[boat - form_.BoatOfRow(0)].SetFocus();
}

void BoatList::VScroll1_Change() {
    const int pointed = app_.shown.HoverBoat + form_.BoatOfRow(0) - firstBoat_;
    FillRows();
    if (app_.shown.HoverBoat > 0 && app_.now.Boats.Holds(pointed)) PointAtBoat(pointed);
}

void BoatList::Label5_Click() {
    FocusOn([](int) { return true; });
    if (app_.shown.ViewMode == ViewKind::Map) form_.HScroll2.SetValue(100);
}

/// Ticks the boats that are in focus; a boat with a ring always is.
void BoatList::FocusOn(const std::function<bool(int boat)>& inFocus) {
    for (int boat = 1; boat <= form_.Ticks.Count(); ++boat)
        form_.Ticks[boat].InFocus = inFocus(boat) || form_.HasRing(boat);
    ShowTicks();
    stage_.Repaint(Changed::Focus);
}

void BoatList::Bnam_MouseMove(int row) {
    const bool wasRaised = form_.PanelRaised();
    form_.RaiseBoatList();
    if (!wasRaised) {  // another row lies under the pointer now
        HideHints();
        return;
    }
    constexpr double Width = 240.0;
    const double height = voice_.English() ? 62 : 70;
    const double rowTop = form_.Bnam[row].Top() + form_.Picture8.Top();
    const double above = rowTop - height - 5;
    ShowListHint(FocusHint, {.Left = form_.Picture8.Left() + form_.Bnam[row].Left(),
                             .Top = above < 0 ? rowTop + 25 : above,
                             .Width = Width,
                             .Height = height});
    PointAtBoat(form_.BoatOfRow(row));
}

void BoatList::Maru_MouseMove(int row) {
    constexpr double Width = 240.0;
    ShowListHint(RingHint, {.Left = form_.Picture8.Left() + form_.Maru[row].Left() - 5 - Width,
                            .Top = form_.Maru[row].Top() + form_.Picture8.Top() + 20,
                            .Width = Width,
                            .Height = 30});
    PointAtBoat(form_.BoatOfRow(row));
}

void BoatList::Label5_MouseMove() {
    const double width = voice_.English() ? 140 : 240;
    ShowListHint(AllHint, {.Left = form_.Picture8.Left() - width - 5,
                           .Top = form_.Label5.Top() + form_.Picture8.Top(),
                           .Width = width,
                           .Height = 18});
    form_.Text8.Hide();
}

void BoatList::ShowListHint(const Text& hint, const HintPlace& place) {
    if (form_.Check3.Value()) ShowHint(form_.Text7, voice_.In(hint), place);
}

/// The boat of the row under the pointer gets its ring, and its label at once.
void BoatList::PointAtBoat(int boat) {
    Hover(boat);
    PlaceLabel(boat);
}

/// The label goes along with the boat on the map.
void BoatList::PlaceLabel(int boat) {
    if (app_.shown.ViewMode != ViewKind::Map || !app_.now.Boats[boat].IsSomewhere()) {
        form_.Text8.Hide();
        return;
    }
    const Sprite& sprite = form_.Boat[boat - 1];
    const std::string label = LabelOf(boat);
    const double width = form_.Text8.TextWidth(label);
    const double right = sprite.Left() + sprite.Width();
    const bool fits = right + 6 + width + 13 <= form_.MapSide();
    form_.Text8.SetBackColor(BoatColour(boat));
    form_.Text8.SetForeColor(InkOn(BoatColour(boat)));
    form_.Text8.SetText(label);
    form_.Text8.Move(fits ? right + 6 : sprite.Left() - width - 15, sprite.Top(), width + 6, 17);
    form_.Text8.Show();
}

void BoatList::Boat_MouseMove(int boat) {
    if (!form_.Check3.Value()) return;
    hintBoat_ = boat;
    PlaceHint();
}

/// The hint that names a boat on the map goes along with it too.
void BoatList::PlaceHint() {
    if (!app_.now.Boats[hintBoat_].IsSomewhere()) {
        form_.Text7.Hide();
        return;
    }
    const Sprite& sprite = form_.Boat[hintBoat_ - 1];
    hint_ = LabelOf(hintBoat_);
    const double width = form_.Text7.TextWidth(hint_);
    ShowHint(form_.Text7, hint_,
             {.Left = sprite.Left() - width / 2 + SpriteSide / 2,
              .Top = sprite.Top() - 15,
              .Width = width + 10,
              .Height = 17});
    form_.Text7.SetForeColor(ReadableOn(HintBackground, BoatColour(hintBoat_)));
}

std::string BoatList::LabelOf(int boat) const {
    return NameAndSpeed(app_.race.Boats[boat].BoatName, app_.now.Boats[boat], "");
}

void BoatList::Picture5_MouseMove() {
    EnterPanel();
    form_.LowerBoatList();
}

void BoatList::Picture8_MouseMove() {
    EnterPanel();
    HideHints();
    form_.RaiseBoatList();
}

void BoatList::Picture7_MouseMove() {
    HideHints();
    form_.LowerBoatList();
}

void BoatList::Form_MouseMove() {
    HideHints();
    form_.LowerBoatList();
}

void BoatList::EnterPanel() {
    film_.Release(Film::Hold::MapClick);
    form_.Text7.SetBackColor(White);
}

/// Ring and label of the boat under the pointer come and go also while the film stands.
void BoatList::Hover(int boat) {
    if (boat == 0) form_.Text8.Hide();
    if (std::exchange(app_.shown.HoverBoat, boat) != boat) stage_.Repaint(Changed::Nothing);
}

void BoatList::HideHints() {
    form_.Text7.Hide();
    form_.Text8.Hide();
}

}  // namespace keelview
