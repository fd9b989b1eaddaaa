#include "instruments/data_view.h"

#include <cmath>
#include <optional>
#include <utility>

#include "instruments/data_page.h"
#include "instruments/factor_page.h"

namespace keelview {

namespace {

constexpr double DragFrom = 3.0;  // pixels; a hand trembles less than that

constexpr Text RoundedNow{"Rounded now", "今回航した"};
constexpr Text NotRounded{"Not rounded", "回航していない"};
constexpr Text AsFound{"As found", "航跡からの値に戻す"};

}  // namespace

DataView::DataView(RaceSession& session)
    : app_(session.App()),
      form_(session.Display()),
      stage_(session.TheStage()),
      film_(session.TheFilm()),
      changes_(session.Changes()),
      voice_(session.TheVoice()) {
    for (OptionButton* option : {&form_.Option1, &form_.Option4, &form_.Option5, &form_.Option12})
        option->OnClick = [this] { ShowPage(); };
    form_.Command11.OnClick = [this] { Command11_Click(); };
    form_.PicTime.OnMouseDown = [this](const MouseEvent& event) { PicTime_MouseDown(event); };
    form_.PicTime.OnMouseMove = [this](const MouseEvent& event) { PicTime_MouseMove(event); };
    form_.PicTime.OnMouseUp = [this](const MouseEvent& event) { PicTime_MouseUp(event); };
    form_.PicTime.OnWheel = [this](const WheelEvent& turn) { ScrollBy(turn.Lines * DataRowPitch); };
    form_.Picture14.OnWheel = [this](const WheelEvent& turn) { ScrollBy(turn.Lines * DataRowPitch); };
    form_.VScroll2.OnChange = [this] { VScroll2_Change(); };
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
    dragY_ = event.Y;
    dragged_ = false;
}

void DataView::PicTime_MouseMove(const MouseEvent& event) {
    form_.LowerBoatList();
    if (!dragY_) return;
    dragged_ = dragged_ || std::abs(event.Y - *dragY_) > DragFrom;
    if (dragged_) ScrollBy(*dragY_ - event.Y);
}

void DataView::VScroll2_Change() {
    const double scrolled = form_.VScroll2.Value();
    form_.PicTime.SetTop(DataPageTop - scrolled);
    const PageHead head = form_.Option12.Value() ? FactorHead(app_.race) : TableHead(app_.race);
    form_.Picture14.SetVisible(head.Stays(scrolled));
}

void DataView::ScrollBy(double pixels) {
    form_.VScroll2.SetValue(form_.VScroll2.Value() + FloorToInt(pixels));
}

void DataView::PicTime_MouseUp(const MouseEvent& event) {
    const bool clicked = std::exchange(dragY_, std::nullopt) && !dragged_;
    const auto cell = StatCellAt(app_.race, {event.X, event.Y});
    if (!clicked || !cell || form_.Option12.Value()) return;
    if (event.Button == MouseButton::Left)
        GoTo(*cell);
    else if (app_.settings.EditMode)
        PutRight(*cell);
}

/// The film and the map go to where the boat was when it passed the entry.
void DataView::GoTo(const StatCell& cell) {
    const std::optional<int> time = PassTime(app_.passes, cell.Boat, cell.Entry);
    if (!time) return;
    form_.Option9.SetValue(true);
    const Track& track = app_.tracks.Boats[cell.Boat];
    if (const int segment = FindSegment(track, *time); segment > 0) {
        app_.view.CentreOn(PositionOn(track, segment, *time));
        stage_.Repaint(Changed::View);
    }
    film_.Seek(*time);
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
