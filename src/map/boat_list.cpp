#include "map/boat_list.h"

#include "base/bilingual.h"
#include "map/replay_frame.h"
#include "session/replay_clock.h"

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

template <class... Events>
void Clear(Events&... events) {
    (events.Clear(), ...);
}

}  // namespace

BoatList::BoatList(AppState& app, RaceDisp& form, ViewSwitch& views)
    : app_(app), form_(form), views_(views) {
    form_.Label5.OnClick = [this] { Label5_Click(); };
    form_.Label5.OnMouseMove = [this](const MouseEvent&) { Label5_MouseMove(); };
    form_.Picture5.OnMouseMove = [this](const MouseEvent&) { Picture5_MouseMove(); };
    form_.Picture7.OnMouseMove = [this](const MouseEvent&) { Picture7_MouseMove(); };
    form_.Picture8.OnMouseMove = [this](const MouseEvent&) { Picture8_MouseMove(); };
    form_.OnMouseMove = [this](const MouseEvent&) { Form_MouseMove(); };
}

void BoatList::ConnectRows() {
    for (int row = 0; row < app_.race.BoatCount; ++row) {
        CheckBox& name = form_.Bnam[row];
        CheckBox& ring = form_.Maru[row];
        Sprite& boat = form_.Boat[row];
        // The first row stays from race to race.
        Clear(name.OnClick, name.OnMouseUp, name.OnMouseMove, ring.OnClick, ring.OnMouseMove,
              boat.OnMouseMove);
        name.OnClick = [this] { Bnam_Click(); };
        name.OnMouseUp = [this, row](const MouseEvent& event) { Bnam_MouseUp(row, event.Button); };
        name.OnMouseMove = [this, row](const MouseEvent&) { Bnam_MouseMove(row); };
        ring.OnClick = [this] { Maru_Click(); };
        ring.OnMouseMove = [this, row](const MouseEvent&) { Maru_MouseMove(row); };
        boat.OnMouseMove = [this, row](const MouseEvent&) { Boat_MouseMove(row); };
    }
}

// The left button or the space bar.
void BoatList::Bnam_Click() {
    if (focusing_ || !app_.display.BoatControlsBuilt) return;
    bool anyFocused = false;
    for (int row = 0; row < app_.race.BoatCount; ++row) anyFocused = anyFocused || form_.Bnam[row].Value();
    FocusOn([&](int row) { return anyFocused ? form_.Bnam[row].Value() : row == 0; });
    views_.RedrawView();
}

void BoatList::Bnam_MouseUp(int row, MouseButton button) {
    if (button == MouseButton::Left) return;  // the tick has told itself
    FocusOn([row](int other) { return other == row; });
    views_.RedrawView();
}

void BoatList::Maru_Click() {
    if (!app_.display.BoatControlsBuilt) return;
    FocusOn([this](int row) { return form_.Bnam[row].Value(); });
}

void BoatList::Label5_Click() {
    FocusOn([](int) { return true; });
    if (app_.display.ViewMode == ViewKind::Map) form_.HScroll2.SetValue(100);
    views_.RedrawView();
}

/// Ticks the boats that are in focus; a boat with a ring always is.
void BoatList::FocusOn(const std::function<bool(int row)>& inFocus) {
    focusing_ = true;
    for (int row = 0; row < app_.race.BoatCount; ++row)
        form_.Bnam[row].SetValue(inFocus(row) || form_.Maru[row].Value());
    focusing_ = false;
}

void BoatList::Bnam_MouseMove(int row) {
    const bool wasRaised = form_.PanelRaised();
    form_.RaiseBoatList();
    if (!wasRaised) {  // another row lies under the pointer now
        HideHints();
        return;
    }
    constexpr double Width = 240.0;
    const double height = app_.settings.UseEnglish ? 62 : 70;
    const double rowTop = form_.Bnam[row].Top() + form_.Picture8.Top();
    const double above = rowTop - height - 5;
    ShowListHint(FocusHint.In(app_.settings.UseEnglish), {.Left = form_.Picture8.Left() + 5,
                                                          .Top = above < 0 ? rowTop + 25 : above,
                                                          .Width = Width,
                                                          .Height = height});
    PointAtBoat(row);
}

void BoatList::Maru_MouseMove(int row) {
    constexpr double Width = 240.0;
    ShowListHint(RingHint.In(app_.settings.UseEnglish),
                 {.Left = form_.Picture8.Left() + 235 - Width,
                  .Top = form_.Maru[row].Top() + form_.Picture8.Top() + 20,
                  .Width = Width,
                  .Height = 30});
    PointAtBoat(row);
}

void BoatList::Label5_MouseMove() {
    const double width = app_.settings.UseEnglish ? 140 : 240;
    ShowListHint(AllHint.In(app_.settings.UseEnglish), {.Left = form_.Picture8.Left() - width - 5,
                                                        .Top = form_.Label5.Top() + form_.Picture8.Top(),
                                                        .Width = width,
                                                        .Height = 18});
    app_.display.HoverBoat = -1;
    form_.Text8.Hide();
}

void BoatList::ShowListHint(std::string_view hint, const HintPlace& place) {
    if (app_.display.HintsOn) ShowHint(form_.Text7, hint, place);
}

/// The boat of a row gets its ring at the next frame, and its label at once.
void BoatList::PointAtBoat(int row) {
    app_.display.HoverBoat = row;
    if (app_.display.ViewMode != ViewKind::Map) return;
    if (app_.fleet.BoatLatNow[row + 1] <= 0) {  // it is nowhere at this moment
        form_.Text8.Hide();
        return;
    }
    const Sprite& boat = form_.Boat[row];
    const std::string label = NameAndSpeed(row);
    const double width = form_.Text8.TextWidth(label);
    const double right = boat.Left() + boat.Width();
    const bool fits = right + 6 + width + 13 <= form_.MapSide();
    form_.Text8.SetForeColor(ColourOf(row));
    form_.Text8.SetText(label);
    form_.Text8.Move(fits ? right + 6 : boat.Left() - width - 15, boat.Top(), width + 6, 17);
    form_.Text8.Show();
}

void BoatList::Boat_MouseMove(int row) {
    if (!app_.display.HintsOn) return;
    const Sprite& boat = form_.Boat[row];
    const std::string label = NameAndSpeed(row);
    const double width = form_.Text7.TextWidth(label);
    ShowHint(form_.Text7, label,
             {.Left = boat.Left() - width / 2 + SpriteSide / 2,
              .Top = boat.Top() - 15,
              .Width = width + 10,
              .Height = 17});
    form_.Text7.SetForeColor(ColourOf(row));
}

std::string BoatList::NameAndSpeed(int row) const {
    return app_.race.BoatName[row + 1] + "(" + ShownSpeed(app_, row + 1) + ")";
}

Colour BoatList::ColourOf(int row) const {
    return app_.display.BoatColour[row + 1];
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
    PointAtNothing();
    HideHints();
    form_.LowerBoatList();
}

void BoatList::Form_MouseMove() {
    PointAtNothing();
    HideHints();
    form_.LowerBoatList();
}

void BoatList::EnterPanel() {
    ResumeFilm(app_, form_);
    PointAtNothing();
    form_.Text7.SetBackColor(White);
}

/// No boat of the list and no moment of the time bar is under the pointer.
void BoatList::PointAtNothing() {
    app_.display.PointerOnTimeBar = false;
    app_.display.HoverBoat = -1;
}

void BoatList::HideHints() {
    form_.Text7.Hide();
    form_.Text8.Hide();
}

}  // namespace keelview
