#include "map/place_tools.h"

#include <cmath>

#include "analysis/nearest_entry.h"
#include "display/hint_box.h"
#include "session/held_keys.h"

namespace keelview {

namespace {

constexpr Text MarkHint{"Click the place of the mark", "地図をクリックしてマーク設定"};
constexpr Text FirstEndHint{"Click the first end", "まずは１点目をクリック"};
constexpr Text SecondEndHint{"Click the second end", "続いて2点目をクリック"};
constexpr double MarkHintWidth = 200.0;
constexpr double LineHintWidth = 150.0;

constexpr double TrembleOfHand = 3.0;  // pixels between the clicks of a double click

}  // namespace

PlaceTool::PlaceTool(const AppState& app, RaceDisp& form, RaceChanges& changes)
    : app_(app), form_(form), changes_(changes) {}

Click PlaceTool::Press(const MouseEvent& event, const Position& at) {
    if (event.Button != MouseButton::Right) return ShiftHeld(form_, event) ? Click::Passed : Place(at);
    const auto entry = NearestEntry(app_.race, app_.scale, app_.view.ZoomFactor, at);
    if (entry) changes_.Remove(*entry);
    return Click::Picked;
}

void PlaceTool::ShowToolHint(const MouseEvent& event, const Text& hint, double width) {
    constexpr double Gap = 10.0;
    const double mapLeft = form_.Picture1.Left();
    double left = mapLeft + event.X - width - Gap;
    if (left < mapLeft) left = mapLeft + event.X + Gap;
    if (form_.Check3.Value())
        ShowHint(form_.Text7, hint.In(app_.settings.UseEnglish),
                 {.Left = left, .Top = event.Y, .Width = width, .Height = 17});
    else
        form_.Text7.Hide();
    form_.Picture1.Refresh();
}

Click PlaceTool::Finish() {
    form_.Text7.Hide();
    return Click::Finished;
}

PlaceMark::PlaceMark(const AppState& app, RaceDisp& form, RaceChanges& changes)
    : PlaceTool(app, form, changes) {}

void PlaceMark::Enter() {
    form_.Command2.SetBackColor(Yellow);
}

void PlaceMark::Leave() {
    form_.Command2.SetBackColor(ButtonFace);
}

Click PlaceMark::Place(const Position& at) {
    return changes_.AddMark(at) ? Finish() : Click::Taken;
}

void PlaceMark::Follow(const MouseEvent& event, const Position& /*at*/) {
    ShowToolHint(event, MarkHint, MarkHintWidth);
}

PlaceLine::PlaceLine(const AppState& app, RaceDisp& form, RaceChanges& changes)
    : PlaceTool(app, form, changes) {}

void PlaceLine::Enter() {
    form_.Command3.SetBackColor(Yellow);
}

void PlaceLine::Leave() {
    form_.Command3.SetBackColor(ButtonFace);
    form_.Line4.SetVisible(false);
    start_.reset();
}

Click PlaceLine::Place(const Position& at) {
    if (!start_) {
        if (changes_.MayAddLine()) BeginAt(at);
        return Click::Taken;
    }
    // A double click does not make a line that nobody could cross.
    const Projection projection = MapProjection(app_);
    const Point from = projection.ToScreen(*start_);
    const Point to = projection.ToScreen(at);
    if (std::hypot(to.X - from.X, to.Y - from.Y) < TrembleOfHand) return Click::Taken;
    changes_.AddLine(*start_, at);
    return Finish();
}

void PlaceLine::BeginAt(const Position& at) {
    start_ = at;
    Stretch(at, MapProjection(app_).ToScreen(at));
    form_.Line4.SetVisible(true);
}

void PlaceLine::Stretch(const Position& start, const Point& pointer) {
    const Point from = MapProjection(app_).ToScreen(start);
    form_.Line4.Place(from.X, from.Y, pointer.X, pointer.Y);
}

void PlaceLine::Follow(const MouseEvent& event, const Position& /*at*/) {
    if (start_) Stretch(*start_, {event.X, event.Y});
    ShowToolHint(event, start_ ? SecondEndHint : FirstEndHint, LineHintWidth);
}

}  // namespace keelview
