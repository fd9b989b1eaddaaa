#include "map/course_setting.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include "analysis/nearest_entry.h"
#include "display/hint_box.h"

namespace keelview {

namespace {

// These hints exist in Japanese only.
constexpr std::string_view MarkHint = "地図をクリックしてマーク設定";
constexpr std::string_view FirstEndHint = "まずは１点目をクリック";
constexpr std::string_view SecondEndHint = "続いて2点目をクリック";

constexpr int RowHeight = 12;          // of an entry in the course panel
constexpr double TrembleOfHand = 3.0;  // pixels between the clicks of a double click

/// What a click would take: "MK3", or a line by its negative number, "LINE-2".
std::string HoverName(const CourseKey& entry) {
    return entry.IsLine ? "LINE" + std::to_string(-entry.Number) : CourseKeyText(entry);
}

}  // namespace

CourseSetting::CourseSetting(AppState& app, RaceDisp& form, Services& services, Chart& chart,
                             ReplayFrame& frame)
    : app_(app), form_(form), chart_(chart), frame_(frame), changes_(app, services) {
    form_.Command2.OnClick = [this] { Command2_Click(); };
    form_.Command3.OnClick = [this] { Command3_Click(); };
    form_.Command5.OnClick = [this] { Command5_Click(); };
    form_.Command8.OnClick = [this] { Command8_Click(); };
}

void CourseSetting::Command2_Click() {
    const bool on = !setMarkMode_;
    Leave();
    setMarkMode_ = on;
    if (on) form_.Command2.SetBackColor(Yellow);
}

void CourseSetting::Command3_Click() {
    const bool on = setLineMode_ == LineMode::Off;
    Leave();
    setLineMode_ = on ? LineMode::FirstEnd : LineMode::Off;
    if (on) form_.Command3.SetBackColor(Yellow);
}

void CourseSetting::Command5_Click() {
    const bool on = !setCourseMode_;
    Leave();
    setCourseMode_ = on;
    if (!on) return;
    form_.Command5.SetBackColor(Yellow);
    ShowCoursePanel();
}

void CourseSetting::Command8_Click() {
    changes_.ClearCourse();
    CourseChanged();
}

void CourseSetting::Leave() {
    setMarkMode_ = false;
    setLineMode_ = LineMode::Off;
    setCourseMode_ = false;
    for (Button* button : {&form_.Command2, &form_.Command3, &form_.Command5})
        button->SetBackColor(ButtonFace);
    form_.Line4.SetVisible(false);
    form_.Picture9.Hide();
    app_.passes.StatsReady = false;
}

bool CourseSetting::PickEntry(const MouseEvent& event, const MapPosition& at) {
    const bool removing = Placing() && event.Button == MouseButton::Right;
    if (!setCourseMode_ && !removing) return false;
    const auto entry = NearestEntry(app_.race, app_.scale, app_.view.ZoomFactor, at);
    if (!entry) return true;
    if (removing) {
        changes_.Remove(*entry);
        CourseChanged();
        chart_.DrawAll();
    } else if (changes_.AddToCourse(*entry)) {
        CourseChanged();
        chart_.DrawCourse();
    }
    return true;
}

bool CourseSetting::PlaceAt(const MapPosition& at) {
    if (setMarkMode_)
        PlaceMark(at);
    else if (setLineMode_ != LineMode::Off)
        PlaceLineEnd(at);
    else
        return false;
    return true;
}

void CourseSetting::PlaceMark(const MapPosition& at) {
    if (!changes_.AddMark(at)) return;
    EndPlacing();
}

void CourseSetting::PlaceLineEnd(const MapPosition& at) {
    if (setLineMode_ == LineMode::FirstEnd) {
        if (!changes_.MayAddLine()) return;
        lineStart_ = at;
        setLineMode_ = LineMode::SecondEnd;
        const ScreenPoint start = MapToScreen(app_.view, at.Lat, at.Lon);
        form_.Line4.Place(start.X, start.Y, start.X, start.Y);
        form_.Line4.SetVisible(true);
        return;
    }
    // A double click does not make a line that nobody could cross.
    if (NearLineStart(MapToScreen(app_.view, at.Lat, at.Lon))) return;
    changes_.AddLine(lineStart_, at);
    EndPlacing();
}

void CourseSetting::EndPlacing() {
    chart_.DrawCourse();
    Leave();
    form_.Text7.Hide();  // its hint has been followed, and may lie where the next click goes
    form_.Command5.SetEnabled(CourseCanBeSet(app_.race));
}

bool CourseSetting::NearLineStart(const ScreenPoint& at) const {
    const ScreenPoint start = MapToScreen(app_.view, lineStart_.Lat, lineStart_.Lon);
    return std::hypot(at.X - start.X, at.Y - start.Y) < TrembleOfHand;
}

void CourseSetting::FollowPlacing(const MouseEvent& event) {
    if (setLineMode_ == LineMode::SecondEnd) {
        const ScreenPoint start = MapToScreen(app_.view, lineStart_.Lat, lineStart_.Lon);
        form_.Line4.Place(start.X, start.Y, event.X, event.Y);
    }
    form_.Line4.SetVisible(setLineMode_ == LineMode::SecondEnd);
    if (!app_.display.HintsOn)
        form_.Text7.Hide();
    else if (setMarkMode_)
        ShowModeHint(event, MarkHint, 200);
    else
        ShowModeHint(event, setLineMode_ == LineMode::FirstEnd ? FirstEndHint : SecondEndHint, 150);
    form_.Picture1.Refresh();
}

void CourseSetting::ShowModeHint(const MouseEvent& event, std::string_view hint, double width) {
    constexpr double Gap = 10.0;
    const double mapLeft = form_.Picture1.Left();
    double left = mapLeft + event.X - width - Gap;
    if (left < mapLeft) left = mapLeft + event.X + Gap;
    ShowHint(form_.Text7, hint, {.Left = left, .Top = event.Y, .Width = width, .Height = 17});
}

void CourseSetting::FollowOrdering(const MouseEvent& event, const MapPosition& at) {
    const auto entry = NearestEntry(app_.race, app_.scale, app_.view.ZoomFactor, at);
    if (!entry) {
        form_.Text7.Hide();
        return;
    }
    const std::string name = HoverName(*entry);
    const double width = form_.Text7.TextWidth(name) + 5;
    ShowHint(form_.Text7, name,
             {.Left = event.X - width / 2, .Top = event.Y - 20, .Width = width, .Height = 14});
    form_.Picture1.Refresh();
}

void CourseSetting::CourseChanged() {
    frame_.ResetFinishList();  // it was that of the course before
    form_.Option11.SetEnabled(HasLegs(app_.race));
    if (setCourseMode_) ShowCoursePanel();
}

void CourseSetting::ShowCoursePanel() {
    const int count = app_.race.CourseCount;
    constexpr double LeastHeight = 15.0;
    const double height = count > 0 ? count * RowHeight : LeastHeight;
    form_.Picture9.Move(form_.Picture1.Width() - 100, 10, 90, height + 55);
    form_.Label4.Move(8, 5, 97, 17);
    form_.List1.Move(5, 20, 75, count * RowHeight + 10);
    form_.Command8.Move(5, height + 30, 76, 17);
    form_.List1.SetRowHeight(RowHeight);
    form_.List1.Clear();
    for (int entry = 1; entry <= count; ++entry)
        form_.List1.AddItem(std::to_string(entry) + "  " + app_.race.CourseOrder[entry]);
    form_.Picture9.Show();
    // Over the finish list, but below the label of the boat under the pointer.
    form_.Picture9.Raise();
    form_.Text8.Raise();
}

}  // namespace keelview
