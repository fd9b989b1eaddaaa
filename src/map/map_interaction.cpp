#include "map/map_interaction.h"

#include <cmath>
#include <string>
#include <utility>

#include "base/angles.h"
#include "base/numbers.h"

namespace keelview {

namespace {

constexpr double TrembleOfHand = 4.0;  // pixels; a button that goes no further makes a click
constexpr double ZoomOfNotch = 1.25;
constexpr double FollowedZoomOfNotch = 10.0;  // hundredths of the map

/// "N 35:17.25'": whole degrees and minutes cut to three decimals.
std::string CoordinateText(double minutes, const char* positive, const char* negative) {
    const double size = std::abs(minutes);
    const double degrees = std::floor(size / 60);
    const double rest = std::floor((size - degrees * 60) * 1000) / 1000;
    return (minutes < 0 ? negative : positive) + NumberText(degrees) + ":" + NumberText(rest) + "'";
}

}  // namespace

MapInteraction::MapInteraction(RaceSession& session)
    : app_(session.App()),
      form_(session.Display()),
      film_(session.TheFilm()),
      stage_(session.TheStage()),
      navigate_(app_, form_, stage_, session.TheVoice()),
      placeMark_(app_, form_, session.Changes()),
      placeLine_(app_, form_, session.Changes()),
      orderCourse_(app_, form_, session.Changes()),
      measure_(app_, form_) {
    form_.Picture1.OnMouseDown = [this](const MouseEvent& event) { Picture1_MouseDown(event); };
    form_.Picture1.OnMouseMove = [this](const MouseEvent& event) { Picture1_MouseMove(event); };
    form_.Picture1.OnMouseUp = [this](const MouseEvent& event) { Picture1_MouseUp(event); };
    form_.Picture1.OnWheel = [this](const WheelEvent& turn) { Picture1_Wheel(turn); };
    form_.Picture1.OnMouseLeave = [this] { app_.shown.PointerOnMap = false; };
    form_.Command2.OnClick = [this] { Toggle(placeMark_); };
    form_.Command3.OnClick = [this] { Toggle(placeLine_); };
    form_.Command5.OnClick = [this] { Toggle(orderCourse_); };
    form_.Check2.OnClick = [this] { Check2_Click(); };
}

void MapInteraction::Repaint(Changed changed) {
    if (Any(changed, Changed::Race)) GiveUp();
    if (Any(changed, Changed::Course | Changed::Size)) ShowCourse();
    if (Any(changed, Changed::View)) form_.ShowInTitle({});
    // Range and bearing are for a map that stands still. The tick of Check2 stays.
    if (Any(changed, Changed::Film) && !film_.Stopped()) EndMeasuring();
}

/// What was begun on the race before.
void MapInteraction::GiveUp() {
    PutToolAway();
    LetGo();
    film_.Release(Film::Hold::MapClick);
}

bool MapInteraction::PutToolAway() {
    const bool inHand = tool_ != &navigate_;
    form_.Check2.SetValue(false);
    Use(navigate_);
    return inHand;
}

void MapInteraction::ShowCourse() {
    form_.Option11.SetEnabled(HasLegs(app_.race));
    form_.Command5.SetEnabled(CourseCanBeSet(app_.race) && !form_.Check5.Value());
    if (tool_ == &orderCourse_) orderCourse_.ShowCoursePanel();
}

void MapInteraction::Use(MapTool& tool) {
    if (tool_ == &tool) return;
    std::exchange(tool_, &tool)->Leave();
    tool.Enter();
}

void MapInteraction::Toggle(MapTool& tool) {
    const bool on = tool_ != &tool;
    form_.Check2.SetValue(false);
    Use(on ? tool : navigate_);
}

void MapInteraction::Check2_Click() {
    if (form_.Check2.Value())
        Use(measure_);
    else
        EndMeasuring();
}

void MapInteraction::EndMeasuring() {
    if (tool_ == &measure_) Use(navigate_);
}

void MapInteraction::Picture1_MouseDown(const MouseEvent& event) {
    if (held_ || app_.shown.ViewMode != ViewKind::Map) return;
    held_ = {event, MapProjection(app_).ToEarth({event.X, event.Y})};
}

/// A click is what was pressed and let go of at one place, and it means the place where it began.
void MapInteraction::Picture1_MouseUp(const MouseEvent& event) {
    if (!held_ || held_->Event.Button != event.Button) return;
    const HeldButton held = *held_;
    LetGo();
    if (!held.Drags && !form_.Check5.Value()) ClickAt(held.Event, held.Place);
}

void MapInteraction::ClickAt(const MouseEvent& event, const Position& at) {
    film_.HoldFor(Film::Hold::MapClick);  // nothing runs on behind a message
    const Click click = tool_->Press(event, at);
    if (click == Click::Passed) navigate_.Press(event, at);
    if (click == Click::Finished) Use(navigate_);
    // Among marks and lines the boats stand still until the pointer comes to a panel.
    if (click != Click::Picked) film_.Release(Film::Hold::MapClick);
}

/// True while the map is dragged.
bool MapInteraction::FollowDrag(const MouseEvent& event) {
    if (event.Button == MouseButton::None) LetGo();  // it was let go of elsewhere
    if (!held_ || held_->Event.Button == MouseButton::Right) return false;
    HeldButton& held = *held_;
    const double moved = std::hypot(event.X - held.Event.X, event.Y - held.Event.Y);
    if (!held.Drags && moved <= TrembleOfHand) return false;
    if (!held.Drags) BeginDrag(held);
    BringUnder(held.Place, {event.X, event.Y}, app_.area, app_.scale, app_.view);
    stage_.Repaint(Changed::View);
    return true;
}

/// The view stays as auto trace has it. The film stands meanwhile: it would look for boats.
void MapInteraction::BeginDrag(HeldButton& held) {
    held.Drags = true;
    held.Place = MapProjection(app_).ToEarth({held.Event.X, held.Event.Y});
    film_.HoldFor(Film::Hold::MapDrag);
    form_.Text7.Hide();
    if (!form_.Check5.Value()) return;
    app_.view.ManualZoom = app_.view.ZoomFactor;
    form_.Check5.SetValue(false);
}

void MapInteraction::LetGo() {
    held_.reset();
    film_.Release(Film::Hold::MapDrag);
}

void MapInteraction::Picture1_Wheel(const WheelEvent& turn) {
    if (form_.Check5.Value()) {
        const double wider = std::round(FollowedZoomOfNotch * turn.Notches);
        form_.HScroll2.SetValue(FloorToInt(form_.HScroll2.Value() - wider));
        return;
    }
    const Point pointer{turn.X, turn.Y};
    ZoomAt(pointer, std::pow(ZoomOfNotch, -turn.Notches), app_.area, app_.scale, app_.view);
    stage_.Repaint(Changed::View);
    tool_->Follow({.X = turn.X, .Y = turn.Y}, MapProjection(app_).ToEarth(pointer));
}

void MapInteraction::Picture1_MouseMove(const MouseEvent& event) {
    form_.Text7.SetBackColor(HintBackground);
    app_.shown.PointerOnMap = true;
    form_.Text8.Hide();
    form_.LowerBoatList();
    const bool drags = FollowDrag(event);
    const Position at = MapProjection(app_).ToEarth({event.X, event.Y});
    if (!form_.Check5.Value())
        form_.ShowInTitle(CoordinateText(at.Lat, "N ", "S ") + "/" +
                          CoordinateText(WrapLongitude(at.Lon), "E ", "W "));
    if (!drags || tool_ != &navigate_) tool_->Follow(event, at);
}

}  // namespace keelview
