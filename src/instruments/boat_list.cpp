#include "instruments/boat_list.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include "analysis/track_derivation.h"
#include "base/dates.h"
#include "base/numbers.h"
#include "map/boat_label.h"
#include "session/boat_colours.h"

namespace keelview {

namespace {

constexpr double SpriteSide = 15.0;  // of a boat at its usual size on the map

constexpr Text FocusHint{
    "Cecked boats are focused.\nUnchecked boats are out of focus.\n\nRight button to focus only 1 boat.",
    "チェックを入れた艇をフォーカスします\nフォーカスを外すと航跡、速度グラフなどが"
    "\n除外されてフォーカス艇が見やすくなります\n\n右ｸﾘｯｸで1艇だけのﾌｫｰｶｽも可能です。"};
constexpr Text RingHint{"Cecked boat is focused and his\nname are shown during it is checked.",
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
    form_.OnMouseMove = [this](const MouseEvent&) { Form_MouseMove(); };
}

void BoatList::Repaint(Changed changed) {
    if (Any(changed, Changed::Boats)) {
        ConnectRows();
        focusing_ = true;
        for (int row = 0; row < app_.race.Boats.Count(); ++row) {
            form_.Bnam[row].SetValue(true);
            form_.Maru[row].SetValue(false);
        }
        focusing_ = false;
    }
    if (Any(changed, Changed::Boats | Changed::Race)) FillRows();
    // Boats in focus have broader bars.
    if (Any(changed, Changed::Focus)) rowShown_.Assign(app_.race.Boats.Count(), {});
}

/// Rows that were there before are connected already.
void BoatList::ConnectRows() {
    const int boats = app_.race.Boats.Count();
    for (int row = std::min(connectedRows_, boats); row < boats; ++row) {
        CheckBox& name = form_.Bnam[row];
        name.OnClick = [this] { Bnam_Click(); };
        name.OnMouseUp = [this, row](const MouseEvent& event) { Bnam_MouseUp(row, event.Button); };
        name.OnMouseMove = [this, row](const MouseEvent&) { Bnam_MouseMove(row); };
        form_.Maru[row].OnClick = [this] { Maru_Click(); };
        form_.Maru[row].OnMouseMove = [this, row](const MouseEvent&) { Maru_MouseMove(row); };
        for (CheckBox* box : {&name, &form_.Maru[row]}) box->OnMouseLeave = [this] { Hover(0); };
        form_.Boat[row].OnMouseMove = [this, row](const MouseEvent&) { Boat_MouseMove(row); };
    }
    connectedRows_ = boats;
}

void BoatList::FillRows() {
    form_.Picture8.Cls();
    rowShown_.Assign(app_.race.Boats.Count(), {});
    hintBoat_ = 0;
    for (int boat = 1; boat <= app_.race.Boats.Count(); ++boat) {
        CheckBox& name = form_.Bnam[boat - 1];
        name.SetBackColor(BoatColour(boat));
        name.SetForeColor(White);
        name.SetCaption(app_.race.Boats[boat].BoatName);
        form_.Text5[boat - 1].SetText("");
        form_.Text6[boat - 1].SetText("");
    }
}

void BoatList::Show(const Moment& now) {
    if (const auto& start = app_.race.Start.At())
        form_.Text1.SetText(DateTimeText(*start + FloorToInt(now.Time)));
    for (int boat = 1; boat <= now.Boats.Count(); ++boat) ShowRow(boat, now.Boats[boat]);
    if (app_.shown.HoverBoat > 0) PlaceLabel(app_.shown.HoverBoat);
    if (hintBoat_ > 0 && form_.Text7.Visible() && form_.Text7.Text() == hint_)
        PlaceHint();
    else
        hintBoat_ = 0;
}

void BoatList::ShowRow(int boat, const BoatMoment& moment) {
    RowShown row;
    if (moment.IsSomewhere())
        row = {.Speed = moment.On.Speed, .WindAngle = static_cast<int>(std::lround(moment.TrueWindAngle))};
    const bool isNew = moment.IsSomewhere() ? row.Speed > 0 && row != rowShown_[boat]
                                            : !form_.Text5[boat - 1].Text().empty();
    if (isNew) ShowSpeed(boat, moment);
    rowShown_[boat] = row;
}

void BoatList::ShowSpeed(int boat, const BoatMoment& moment) {
    const int row = boat - 1;
    Surface& panel = form_.Picture8;
    const double left = form_.Text5[0].Left() + form_.Text5[0].Width() + 2;
    const double top = form_.Bnam[row].Top();
    panel.FilledBox(left, top, left + 150, top + 13, ButtonFace);
    const bool somewhere = moment.IsSomewhere();
    form_.Text6[row].SetText(somewhere ? WholeText(moment.TrueWindAngle) : "");
    form_.Text5[row].SetText(somewhere ? SpeedText(moment.On.Speed) : "");
    if (!somewhere) return;
    const double right = left + moment.On.Speed * SpeedBarScale(app_.tracks.TypicalSpeed);
    const bool inFocus = form_.InFocus(boat);
    panel.FilledBox(left, top + (inFocus ? 0 : 4), right, top + (inFocus ? 9 : 5), BoatColour(boat));
}

// The left button or the space bar.
void BoatList::Bnam_Click() {
    if (focusing_) return;
    bool anyFocused = false;
    for (int boat = 1; boat <= app_.race.Boats.Count(); ++boat)
        anyFocused = anyFocused || form_.InFocus(boat);
    FocusOn([&](int row) { return anyFocused ? form_.Bnam[row].Value() : row == 0; });
}

void BoatList::Bnam_MouseUp(int row, MouseButton button) {
    if (button == MouseButton::Left) return;  // the tick has told itself
    FocusOn([row](int other) { return other == row; });
}

void BoatList::Maru_Click() {
    if (focusing_) return;
    FocusOn([this](int row) { return form_.Bnam[row].Value(); });
}

void BoatList::Label5_Click() {
    FocusOn([](int) { return true; });
    if (app_.shown.ViewMode == ViewKind::Map) form_.HScroll2.SetValue(100);
}

/// Ticks the boats that are in focus; a boat with a ring always is.
void BoatList::FocusOn(const std::function<bool(int row)>& inFocus) {
    focusing_ = true;
    for (int row = 0; row < app_.race.Boats.Count(); ++row)
        form_.Bnam[row].SetValue(inFocus(row) || form_.Maru[row].Value());
    focusing_ = false;
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
    ShowListHint(FocusHint, {.Left = form_.Picture8.Left() + 5,
                             .Top = above < 0 ? rowTop + 25 : above,
                             .Width = Width,
                             .Height = height});
    PointAtBoat(row);
}

void BoatList::Maru_MouseMove(int row) {
    constexpr double Width = 240.0;
    ShowListHint(RingHint, {.Left = form_.Picture8.Left() + 235 - Width,
                            .Top = form_.Maru[row].Top() + form_.Picture8.Top() + 20,
                            .Width = Width,
                            .Height = 30});
    PointAtBoat(row);
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

/// The boat of a row gets its ring, and its label at once.
void BoatList::PointAtBoat(int row) {
    Hover(row + 1);
    PlaceLabel(row + 1);
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
    form_.Text8.SetForeColor(BoatColour(boat));
    form_.Text8.SetText(label);
    form_.Text8.Move(fits ? right + 6 : sprite.Left() - width - 15, sprite.Top(), width + 6, 17);
    form_.Text8.Show();
}

void BoatList::Boat_MouseMove(int row) {
    if (!form_.Check3.Value()) return;
    hintBoat_ = row + 1;
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
    form_.Text7.SetForeColor(BoatColour(hintBoat_));
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
