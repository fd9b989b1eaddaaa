#include "map/order_course.h"

#include <algorithm>
#include <string>

#include "analysis/nearest_entry.h"
#include "display/hint_box.h"

namespace keelview {

namespace {

constexpr int RowHeight = 12;          // of an entry in the course panel
constexpr double LeastListWidth = 75;  // there
constexpr Text GateHint{
    "Shift + click joins a mark to the one\nbefore it: a gate. On a gate it takes\nthe two apart.",
    "Shift + クリックで直前のマークと合わせて\nゲートにします。ゲート上では2つの\nマークに戻します。"};
constexpr double GateHintWidth = 230.0, GateHintHeight = 45.0;

/// What a click would take: "MK3", or a line by its negative number, "LINE-2".
std::string HoverName(const CourseKey& entry) {
    return entry.IsLine ? "LINE" + std::to_string(-entry.Number) : CourseKeyText(entry);
}

}  // namespace

OrderCourse::OrderCourse(const AppState& app, RaceDisp& form, RaceChanges& changes)
    : app_(app), form_(form), changes_(changes) {
    form_.Command8.OnClick = [this] { changes_.ClearCourse(); };
    form_.List1.OnMouseDown = [this](const MouseEvent& event) { List1_MouseDown(event); };
    form_.List1.OnMouseMove = [this](const MouseEvent&) { List1_MouseMove(); };
    form_.List1.OnMouseLeave = [this] { form_.Text7.Hide(); };
}

void OrderCourse::List1_MouseDown(const MouseEvent& event) {
    const int entry = form_.List1.ListIndex() + 1;
    if (event.Shift && app_.race.CourseOrder.Holds(entry)) changes_.ToggleGate(entry);
}

void OrderCourse::List1_MouseMove() {
    if (!form_.Check3.Value()) return;
    const double left = form_.Picture1.Left() + form_.Picture9.Left() - GateHintWidth - 5;
    ShowHint(form_.Text7, GateHint.In(app_.settings.UseEnglish),
             {.Left = left,
              .Top = form_.Picture1.Top() + form_.Picture9.Top(),
              .Width = GateHintWidth,
              .Height = GateHintHeight});
}

void OrderCourse::Enter() {
    form_.Command5.SetBackColor(Yellow);
    ShowCoursePanel();
}

void OrderCourse::Leave() {
    form_.Command5.SetBackColor(ButtonFace);
    form_.Picture9.Hide();
}

Click OrderCourse::Press(const MouseEvent& event, const Position& at) {
    const auto entry = NearestEntry(app_.race, app_.scale, app_.view.ZoomFactor, at);
    if (entry && !(event.Shift && changes_.MakeGate(*entry))) changes_.AddToCourse(*entry);
    return Click::Picked;
}

void OrderCourse::Follow(const MouseEvent& event, const Position& at) {
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

void OrderCourse::ShowCoursePanel() {
    const int count = app_.race.CourseOrder.Count();
    constexpr double LeastHeight = 15.0;
    const double height = count > 0 ? count * RowHeight : LeastHeight;
    form_.List1.SetRowHeight(RowHeight);
    form_.List1.Clear();
    double wide = LeastListWidth;
    for (int entry = 1; entry <= count; ++entry) {
        const std::string row = std::to_string(entry) + "  " + app_.race.CourseOrder[entry];
        form_.List1.AddItem(row);
        wide = std::max(wide, form_.Text7.TextWidth(row) + 12);  // a gate of large numbers
    }
    form_.Picture9.Move(form_.Picture1.Width() - wide - 25, 10, wide + 15, height + 55);
    form_.Label4.Move(8, 5, 97, 17);
    form_.List1.Move(5, 20, wide, count * RowHeight + 10);
    form_.Command8.Move(5, height + 30, wide + 1, 17);
    form_.Picture9.Show();
    // Over the finish list, but below the label of the boat under the pointer.
    form_.Picture9.Raise();
    form_.Text8.Raise();
}

}  // namespace keelview
