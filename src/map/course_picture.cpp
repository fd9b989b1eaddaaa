#include "map/course_picture.h"

#include <array>

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

/// One drawing of the course.
class CourseDrawing {
  public:
    CourseDrawing(Canvas& map, const AppState& app, bool layLines, bool passClock)
        : map_(map), app_(app), projection_(MapProjection(app)), layLines_(layLines) {
        const auto clock = passClock ? PassClockAt(app.passes, app.now.Time) : std::nullopt;
        if (!clock) return;
        clock_ = clock->Text;
        clockAt_ = ParseCourseKey(app.race.CourseOrder[clock->Entry]);
    }

    void DrawMark(int mark) {
        const Point at = projection_.ToScreen(app_.race.Marks[mark].At());
        if (layLines_) {
            DrawLayLines(at, 180, app_.race.LayLineUp);
            DrawLayLines(at, 0, app_.race.LayLineDown);
        }
        DrawDisk(at);
        DrawName(CourseKeyText({.IsLine = false, .Number = mark}), at, LabelPoints);
        if (!clock_.empty() && clockAt_.HasMark(mark)) DrawPassClock(at);
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
    void DrawLayLines(const Point& from, double first, double layAngle) {
        const double length = app_.area.AreaSpan / 2 * projection_.PerLatMinute();
        const double wind = app_.now.WindNow.DirectionTrue - app_.view.ScreenUpDirection;
        map_.Style = DrawStyle::Dotted;
        map_.DrawWidth = LayLineWidth;
        for (const double offWind : {first, 180 - layAngle, 180 + layAngle}) {
            const Point end = PointBeside(from, offWind + wind, length);
            map_.Line(from.X, from.Y, end.X, end.Y, ReadableOn(app_.shown.SeaColour, LayLineColour));
        }
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
    for (int mark = 1; mark <= app.race.Marks.Count(); ++mark) drawing.DrawMark(mark);
    for (int line = 1; line <= app.race.Lines.Count(); ++line) drawing.DrawLine(line);
    map.ForeColor = Black;
    map.FontSize = LabelPoints * app.settings.FontScale;
}

}  // namespace keelview
