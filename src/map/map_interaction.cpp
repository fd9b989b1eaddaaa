#include "map/map_interaction.h"

#include <cmath>
#include <string>
#include <utility>

#include "base/angles.h"
#include "base/numbers.h"

namespace keelview {

namespace {

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
      navigate_(app_.view, app_.area, form_, session.TheStage(), session.TheVoice()),
      placeMark_(app_, form_, session.Changes()),
      placeLine_(app_, form_, session.Changes()),
      orderCourse_(app_, form_, session.Changes()),
      measure_(app_, form_) {
    form_.Picture1.OnMouseDown = [this](const MouseEvent& event) { Picture1_MouseDown(event); };
    form_.Picture1.OnMouseMove = [this](const MouseEvent& event) { Picture1_MouseMove(event); };
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
    form_.Check2.SetValue(false);
    Use(navigate_);
    film_.Release(Film::Hold::MapClick);
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
    if (form_.Check5.Value() || app_.shown.ViewMode != ViewKind::Map) return;
    const Position at = MapProjection(app_).ToEarth({event.X, event.Y});
    film_.HoldFor(Film::Hold::MapClick);  // nothing runs on behind a message
    const Click click = tool_->Press(event, at);
    if (click == Click::Passed) navigate_.Press(event, at);
    if (click == Click::Finished) Use(navigate_);
    // Among marks and lines the boats stand still until the pointer comes to a panel.
    if (click != Click::Picked) film_.Release(Film::Hold::MapClick);
}

void MapInteraction::Picture1_MouseMove(const MouseEvent& event) {
    form_.Text7.SetBackColor(HintBackground);
    app_.shown.PointerOnMap = true;
    form_.Text8.Hide();
    form_.LowerBoatList();
    const Position at = MapProjection(app_).ToEarth({event.X, event.Y});
    if (!form_.Check5.Value())
        form_.ShowInTitle(CoordinateText(at.Lat, "N ", "S ") + "/" +
                          CoordinateText(WrapLongitude(at.Lon), "E ", "W "));
    tool_->Follow(event, at);
}

}  // namespace keelview
