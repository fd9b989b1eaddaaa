#include "instruments/data_view.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "base/numbers.h"
#include "display/hint_box.h"

namespace keelview {

namespace {

constexpr double DragFrom = 3.0;  // pixels; a hand trembles less than that

constexpr Text RoundedNow{"Rounded now", "今回航した"};
constexpr Text NotRounded{"Not rounded", "回航していない"};
constexpr Text AsFound{"As found", "航跡からの値に戻す"};

}  // namespace

DataView::DataView(RaceSession& session, LegTables& tables)
    : session_(session),
      app_(session.App()),
      form_(session.Display()),
      stage_(session.TheStage()),
      changes_(session.Changes()),
      voice_(session.TheVoice()),
      tables_(tables) {
    for (OptionButton* option : {&form_.Option1, &form_.Option4, &form_.Option5, &form_.Option12})
        option->OnClick = [this] { ShowPage(); };
    form_.Command11.OnClick = [this] { Command11_Click(); };
    form_.PicTime.OnMouseDown = [this](const MouseEvent& event) { PicTime_MouseDown(event); };
    form_.PicTime.OnMouseMove = [this](const MouseEvent& event) { PicTime_MouseMove(event); };
    form_.PicTime.OnMouseUp = [this](const MouseEvent& event) { PicTime_MouseUp(event); };
    form_.PicTime.OnWheel = [this](const WheelEvent& turn) { ScrollBy(turn.Lines * DataRowPitch); };
    form_.PicTime.OnMouseLeave = [this] { form_.Text7.Hide(); };
    for (ScrollBar* bar : {&form_.VScroll2, &form_.HScroll3}) bar->OnChange = [this] { tables_.Draw(); };
}

void DataView::ShowPage() {
    prevViewMode_ = std::exchange(app_.shown.ViewMode, ViewKind::Data);
    form_.PicTime.Show();
    stage_.Repaint(Changed::Mode);
}

/// Back to the map if the person came from there straight, else to the graphs.
void DataView::Command11_Click() {
    OptionButton& back = prevViewMode_ == ViewKind::Map ? form_.Option9 : form_.Option10;
    back.SetValue(true);
    back.SetFocus();  // the button goes with the page; the keyboard goes on where the person is now
}

void DataView::PicTime_MouseDown(const MouseEvent& event) {
    dragFrom_ = {event.X, event.Y};
    dragged_ = false;
}

void DataView::PicTime_MouseMove(const MouseEvent& event) {
    form_.LowerBoatList();
    TellWhatIsAt({event.X, event.Y});
    if (!dragFrom_) return;
    const double across = dragFrom_->X - event.X;
    const double down = dragFrom_->Y - event.Y;
    dragged_ = dragged_ || std::max(std::abs(across), std::abs(down)) > DragFrom;
    if (!dragged_) return;
    ScrollBy(down, across);
    dragFrom_ = {event.X, event.Y};
}

void DataView::ScrollBy(double down, double across) {
    form_.VScroll2.SetValue(form_.VScroll2.Value() + FloorToInt(down));
    form_.HScroll3.SetValue(form_.HScroll3.Value() + FloorToInt(across));
}

void DataView::TellWhatIsAt(const Point& at) {
    const std::string text = tables_.TextUnder(at);
    if (text.empty()) return form_.Text7.Hide();
    const Surface& page = form_.PicTime;
    const double width = page.TextWidth(text) + 12;
    form_.Text7.SetBackColor(HintBackground);
    ShowHint(form_.Text7, text,
             {.Left = std::max(std::min(page.Left() + at.X + 12, page.Left() + page.Width() - width), 5.0),
              .Top = page.Top() + at.Y - 22,
              .Width = width,
              .Height = 16});
}

void DataView::PicTime_MouseUp(const MouseEvent& event) {
    const bool clicked = std::exchange(dragFrom_, std::nullopt) && !dragged_;
    const Point at{event.X, event.Y};
    if (!clicked) return;
    if (tables_.InHead(at)) return tables_.SwitchClock();
    const auto cell = tables_.CellAt(at);
    if (!cell) return;
    if (event.Button == MouseButton::Left)
        GoTo(*cell);
    else if (app_.settings.EditMode)
        PutRight(*cell);
}

/// To where the boat was when it passed the entry.
void DataView::GoTo(const StatCell& cell) {
    if (const auto time = PassTime(app_.passes, cell.Boat, cell.Entry)) session_.GoTo(cell.Boat, *time);
}

void DataView::PutRight(const StatCell& cell) {
    const auto chosen = voice_.Choose({RoundedNow, NotRounded, AsFound});
    if (chosen == 0)
        changes_.SetPass(cell.Boat, cell.Entry, FloorToInt(app_.clock.ReplayTime + 0.5));
    else if (chosen == 1)
        changes_.SetPass(cell.Boat, cell.Entry, std::nullopt);
    else if (chosen == 2)
        changes_.PassAsFound(cell.Boat, cell.Entry);
}

}  // namespace keelview
