#include "map/course_picture.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "analysis/course_on_water.h"
#include "base/angles.h"
#include "base/dates.h"
#include "base/numbers.h"
#include "map/clear_line.h"
#include "map/screen_geometry.h"

namespace keelview {

namespace {

constexpr int LayLineWidth = 2;  // soft edges leave too little of a line of one pixel on a sea of mid blue
constexpr Colour LayLineColour = Rgb(192, 192, 255);
constexpr double LabelPoints = 9.0;
constexpr double LineLabelPoints = 12.0;
constexpr double PassClockPoints = 16.0;
constexpr double EntryDiskRadius = 3.0;
constexpr int PassClockSeconds = 300;

/// A gate of the course, and how boats come to it.
struct GateOnWay {
    CourseKey Key;
    bool Running = false;  ///< off the wind; else on it
};

/// The gates of the course whose marks are there.
std::vector<GateOnWay> GatesOf(const AppState& app) {
    std::vector<GateOnWay> gates;
    for (int entry = 1; entry <= app.race.CourseOrder.Count(); ++entry) {
        const CourseKey key = ParseCourseKey(app.race.CourseOrder[entry]);
        const auto to = app.race.Marks.Holds(key.OtherMark) ? MiddleOf(app.race, key) : std::nullopt;
        if (!to) continue;
        const auto from =
            entry > 1 ? MiddleOf(app.race, ParseCourseKey(app.race.CourseOrder[entry - 1])) : std::nullopt;
        const double way =
            from ? BearingOf((to->Lon - from->Lon) * app.scale.LonScale, to->Lat - from->Lat) : 0.0;
        gates.push_back({key, from && std::abs(TurnBetween(app.now.WindNow.DirectionTrue, way)) > 90});
    }
    return gates;
}

/// One drawing of the course.
class CourseDrawing {
  public:
    CourseDrawing(Canvas& map, const AppState& app, bool layLines, bool passClock)
        : map_(map), app_(app), projection_(MapProjection(app)), layLines_(layLines), gates_(GatesOf(app)) {
        const auto clock = passClock ? PassClockAt(app.passes, app.now.Time) : std::nullopt;
        if (!clock) return;
        clock_ = clock->Text;
        clockAt_ = ParseCourseKey(app.race.CourseOrder[clock->Entry]);
    }

    void DrawMark(int mark) {
        const Point at = projection_.ToScreen(app_.race.Marks[mark].At());
        if (layLines_) DrawLayLinesOf(mark, at);
        DrawDisk(at);
        DrawName(CourseKeyText({.IsLine = false, .Number = mark}), at, LabelPoints);
        if (!clock_.empty() && clockAt_.HasMark(mark)) DrawPassClock(at);
    }

    /// A dotted line makes a pair of the two marks of each; the way through goes between them.
    void DrawGates() {
        for (const GateOnWay& gate : gates_) {
            const Point from = projection_.ToScreen(app_.race.Marks[gate.Key.Number].At());
            const Point to = projection_.ToScreen(app_.race.Marks[gate.Key.OtherMark].At());
            if (layLines_) DrawOffWind({(from.X + to.X) / 2, (from.Y + to.Y) / 2}, gate.Running ? 0 : 180);
            map_.Style = DrawStyle::Dotted;
            DrawClearLine(map_, std::array{from, to}, Yellow, app_.shown.SeaColour);
            map_.Style = DrawStyle::Solid;
        }
    }

    void DrawLine(int line) {
        const Point from = projection_.ToScreen(app_.race.Lines[line].FirstEnd());
        const Point to = projection_.ToScreen(app_.race.Lines[line].SecondEnd());
        if (layLines_) {
            DrawLayLines(from, 180, app_.race.LayLineUp);
            DrawLayLines(to, 180, app_.race.LayLineUp);
        }
        DrawClearLine(map_, std::array{from, to}, Yellow, app_.shown.SeaColour);
        DrawDisk(from);
        DrawDisk(to);
        DrawName(CourseKeyText({.IsLine = true, .Number = line}), from, LineLabelPoints);
        if (!clock_.empty() && clockAt_.IsLine && clockAt_.Number == line) DrawPassClock(to);
    }

  private:
    /// Those of a gate's mark alone are for boats that come to the gate, and its axis lies between both.
    void DrawLayLinesOf(int mark, const Point& at) {
        bool beating = false;
        bool running = false;
        for (const GateOnWay& gate : gates_)
            if (gate.Key.HasMark(mark)) (gate.Running ? running : beating) = true;
        const bool alone = std::ranges::any_of(app_.race.CourseOrder, [mark](const std::string& entry) {
            const CourseKey key = ParseCourseKey(entry);
            return key.HasMark(mark) && !key.IsGate();
        });
        if (alone || (!beating && !running)) {
            DrawLayLines(at, 180, app_.race.LayLineUp);
            DrawLayLines(at, 0, app_.race.LayLineDown);
            return;
        }
        if (beating) DrawTacks(at, app_.race.LayLineUp);
        if (running) DrawTacks(at, app_.race.LayLineDown);
    }

    void DrawLayLines(const Point& from, double axis, double layAngle) {
        DrawOffWind(from, axis);
        DrawTacks(from, layAngle);
    }

    void DrawTacks(const Point& from, double layAngle) {
        for (const double offWind : {180 - layAngle, 180 + layAngle}) DrawOffWind(from, offWind);
    }

    void DrawOffWind(const Point& from, double offWind) {
        const double length = app_.area.AreaSpan / 2 * projection_.PerLatMinute();
        const double wind = app_.now.WindNow.DirectionTrue - app_.view.ScreenUpDirection;
        const Point end = PointBeside(from, offWind + wind, length);
        map_.Style = DrawStyle::Dotted;
        map_.DrawWidth = LayLineWidth;
        map_.Line(from.X, from.Y, end.X, end.Y, ReadableOn(app_.shown.SeaColour, LayLineColour));
        map_.Style = DrawStyle::Solid;
        map_.DrawWidth = 1;
    }

    void DrawDisk(const Point& at) { map_.Circle(at.X, at.Y, EntryDiskRadius, Black); }

    void DrawName(const std::string& name, const Point& at, double points) {
        map_.FontSize = points * app_.settings.FontScale;
        PrintClear(map_, {at.X + 8, at.Y - 5}, name, app_.shown.InkColour);
    }

    void DrawPassClock(const Point& at) {
        map_.FontSize = PassClockPoints * app_.settings.FontScale;
        PrintClear(map_, {at.X - map_.TextWidth(clock_) / 2, at.Y - 50}, clock_,
                   ReadableOn(app_.shown.SeaColour, Red));
    }

    Canvas& map_;
    const AppState& app_;
    Projection projection_;
    bool layLines_;
    std::vector<GateOnWay> gates_;
    std::string clock_;  ///< since the last passing; empty where none runs
    CourseKey clockAt_;  ///< where it stands
};

}  // namespace

std::optional<PassClock> PassClockAt(const MarkPasses& passes, double time) {
    for (int entry = passes.FirstPassTime.Count(); entry >= 2; --entry) {
        const std::optional<int> first = passes.FirstPassTime[entry];
        if (!first) continue;
        const double since = time - *first;
        if (since < 0 || since > PassClockSeconds) continue;
        return PassClock{entry, ShortDurationText(FloorToInt(since))};
    }
    return {};
}

void DrawCourse(Canvas& map, const AppState& app, bool layLines, bool passClock) {
    map.Fill = FillStyle::Solid;
    map.FillColor = Yellow;
    CourseDrawing drawing(map, app, layLines, passClock);
    drawing.DrawGates();
    for (int mark = 1; mark <= app.race.Marks.Count(); ++mark) drawing.DrawMark(mark);
    for (int line = 1; line <= app.race.Lines.Count(); ++line) drawing.DrawLine(line);
    map.ForeColor = Black;
    map.FontSize = LabelPoints * app.settings.FontScale;
}

}  // namespace keelview
