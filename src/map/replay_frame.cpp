#include "map/replay_frame.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>

#include "analysis/track_at.h"
#include "base/angles.h"
#include "base/dates.h"
#include "base/numbers.h"
#include "instruments/time_axis.h"
#include "map/boat_sprite.h"
#include "session/save_race.h"

namespace keelview {

namespace {

constexpr double WakeSeconds = 30.0;
constexpr int WakePoints = 5;  // with the point that the boat comes from
constexpr double FinishRowPitch = 14.0;

std::size_t At(int index) {
    return static_cast<std::size_t>(index);
}

/// The earliest time of any boat at the last entry of the course.
int FirstFinish(const AppState& app) {
    return app.passes.FirstPassTime[At(app.race.CourseCount)];
}

/// A boat's name and speed as the map writes them: "Alpha (5.32)".
std::string NameAndSpeed(const AppState& app, int boat) {
    return app.race.BoatName[At(boat)] + " (" + ShownSpeed(app, boat) + ")";
}

}  // namespace

std::string ShownSpeed(const AppState& app, int boat) {
    return SurfaceNumberText(RoundDecimals(app.fleet.BoatSpeedNow[At(boat)], 2));
}

ReplayFrame::ReplayFrame(AppState& app, RaceDisp& form, Services& services, Chart& chart,
                         Instruments& instruments)
    : app_(app), form_(form), services_(services), chart_(chart), instruments_(instruments) {}

void ReplayFrame::DrawFrame() {
    KeepClockInRange();
    ShowRaceClock();
    ShowStartSignals();
    FireStartGun();
    UpdateFinishList();
    for (int boat = 1; boat <= app_.race.BoatCount; ++boat) PlaceBoat(boat);
    if (app_.fleet.BoatInView) UpdateBoatPanel();
}

void ReplayFrame::ResetFinishList() {
    app_.fleet.BoatFinished.fill(false);
    app_.fleet.FinishedCount = 0;
    form_.Position.Hide();
}

void ReplayFrame::ResetCursors(bool toFirst) {
    for (int boat = 1; boat <= app_.race.BoatCount; ++boat)
        app_.fleet.TrackCursor[At(boat)] = toFirst ? 1 : app_.tracks.TrackPointCount[At(boat)];
}

void ReplayFrame::KeepClockInRange() {
    double& t = app_.clock.ReplayTime;
    if (t >= app_.clock.ReplayRangeEnd || t > app_.clock.LastFixTime) {
        t = app_.clock.ReplayRangeStart;
        if (t < FirstFinish(app_)) ResetFinishList();
        ResetCursors(true);
        form_.PlaceSignals();
    }
    if (t < app_.clock.ReplayRangeStart) {  // backward play has run out
        t = std::min(app_.clock.ReplayRangeEnd, app_.clock.LastFixTime);
        ResetCursors(false);
        form_.PlaceSignals();
    }
}

void ReplayFrame::ShowRaceClock() {
    const double t = app_.clock.ReplayTime;
    const int seconds = std::abs(FloorToInt(t));
    form_.Text11.SetForeColor(t >= 0 ? Blue : Red);
    form_.Text11.SetText(DurationText(seconds));
    const bool nearStart = t >= -30 && t <= 10;
    if (nearStart) {
        form_.Text4.SetBackColor(t >= 1 ? Blue : Red);
        form_.Text4.SetText(std::to_string(seconds));
    }
    form_.Text4.SetVisible(nearStart);
}

void ReplayFrame::SlideDown(Surface& flag) {
    if (flag.Top() < app_.view.MapSide) flag.SetTop(flag.Top() + app_.view.MapSide / 30);
}

void ReplayFrame::ShowStartSignals() {
    const double t = app_.clock.ReplayTime;
    const bool forward = app_.clock.ReplayStep > 0;
    const bool blueFalls = forward && t >= -60 && t <= -55;
    form_.Blue_P.SetVisible((t >= -240 && t < -60) || blueFalls);
    if (blueFalls) SlideDown(form_.Blue_P);
    const bool sevenFalls = forward && t > 0.5 && t <= 5;
    form_.Seven.SetVisible((t >= -60 && t <= 0.5) || sevenFalls);
    if (sevenFalls) SlideDown(form_.Seven);
}

void ReplayFrame::FireStartGun() {
    const double t = app_.clock.ReplayTime;
    if (t < 0) gunFired_ = false;
    if (t < 0 || t >= 2 || app_.clock.ReplayStep <= 0 || gunFired_) return;
    PlayGun(app_, services_);
    gunFired_ = true;
}

void ReplayFrame::UpdateFinishList() {
    const int last = app_.race.CourseCount;
    const double t = app_.clock.ReplayTime;
    const bool visible = last > 0 && t >= FirstFinish(app_);
    form_.Position.SetVisible(visible);
    if (!visible) return;
    const int listed = app_.fleet.FinishedCount;
    for (int boat = 1; boat <= app_.race.BoatCount; ++boat) {
        const int finish = app_.passes.MarkPassTime[At(boat)][At(last)];
        if (finish > 0 && t >= finish && !app_.fleet.BoatFinished[At(boat)]) AppendFinisher(boat);
    }
    if (app_.fleet.FinishedCount == listed) return;
    PlayGun(app_, services_);  // once, however many finished since the last frame
    DrawFinishList();
}

void ReplayFrame::AppendFinisher(int boat) {
    app_.fleet.FinishOrder[At(++app_.fleet.FinishedCount)] = boat;
    app_.fleet.BoatFinished[At(boat)] = true;
}

void ReplayFrame::DrawFinishList() {
    Surface& list = form_.Position;
    list.SetHeight(app_.fleet.FinishedCount * FinishRowPitch + 5);
    list.Cls();
    for (int rank = 1; rank <= app_.fleet.FinishedCount; ++rank) {
        const int boat = app_.fleet.FinishOrder[At(rank)];
        const int finish = app_.passes.MarkPassTime[At(boat)][At(app_.race.CourseCount)];
        const double y = (rank - 1) * FinishRowPitch + 2;
        list.ForeColor = Black;
        list.PrintAt(3, y + 1, std::to_string(rank));
        list.FilledBox(16, y, 98, y + 12, app_.display.BoatColour[At(boat)]);
        list.ForeColor = White;
        list.PrintAt(17, y + 1, app_.race.BoatName[At(boat)]);
        list.ForeColor = Black;
        list.PrintAt(105, y + 1,
                     DurationText(finish) + "  <" + std::to_string(finish - FirstFinish(app_)) + ">");
    }
}

void ReplayFrame::PlaceBoat(int boat) {
    const double t = app_.clock.ReplayTime;
    const int k =
        FindSegment(app_.tracks, boat, t, app_.fleet.TrackCursor[At(boat)], app_.clock.ReplayStep > 0);
    if (k == 0) {
        form_.Boat[boat - 1].SetVisible(false);
        app_.fleet.BoatLatNow[At(boat)] = 0;
        app_.fleet.BoatLonNow[At(boat)] = 0;
        return;
    }
    const TrackMoment moment = MomentOn(app_.tracks, boat, k, t);
    app_.fleet.BoatLatNow[At(boat)] = moment.Lat;
    app_.fleet.BoatLonNow[At(boat)] = moment.Lon;
    app_.fleet.BoatSpeedNow[At(boat)] = moment.Speed;
    app_.fleet.TrueWindAngle[At(boat)] = WrapDifference(moment.Course - app_.windNow.WindNow);
    if (app_.display.ViewMode == ViewKind::Map)
        DrawBoatOnMap(boat, k);
    else
        ShowGraphLine();
    if (app_.fleet.BoatInView && !app_.display.PointerOnTimeBar) instruments_.overview.PlaceMarker(boat);
    app_.fleet.TrackCursor[At(boat)] = k;
    instruments_.timeBar.PlaceMark(t);
    RefreshWind();
}

void ReplayFrame::ShowGraphLine() {
    app_.fleet.BoatInView = true;
    if (app_.display.PointerOnTimeBar) return;
    const double y = TimeToY(app_.race, app_.display.GraphTimeScale, app_.clock.ReplayTime);
    form_.Line1.Place(30, y, form_.GPIC.Width(), y);
}

void ReplayFrame::RefreshWind() {
    const int second = FloorToInt(app_.clock.ReplayTime);
    if (app_.race.WindFileName.empty() || second == lastWholeSecond_) return;
    instruments_.windPanel.UpdateWindPanel();
    const double wind = app_.windNow.WindNow;
    if (lastWholeSecond_ % 5 == 0 && !form_.Check5.Value() && wind != lastCourseWind_) {
        chart_.DrawCourse();
        lastCourseWind_ = wind;
    }
    lastWholeSecond_ = second;
}

void ReplayFrame::DrawBoatOnMap(int boat, int point) {
    const ScreenPoint at =
        MapToScreen(app_.view, app_.fleet.BoatLatNow[At(boat)], app_.fleet.BoatLonNow[At(boat)]);
    const double side = DrawBoatSprite(app_, form_, boat, point, app_.clock.ReplayTime);
    PlaceCrossWindLine(boat, at);
    Sprite& sprite = form_.Boat[boat - 1];
    sprite.Move(at.X - side / 2, at.Y - side / 2);
    sprite.SetVisible(true);
    const bool autoTrace = form_.Check5.Value();
    if (autoTrace && (form_.Check9.Value() || form_.Maru[boat - 1].Value()))
        DrawNameLabel(boat, at.X + side / 2 + 5, at.Y - 5);
    if (at.X >= 0 && at.X < app_.view.MapWidth && at.Y >= 0 && at.Y <= app_.view.MapHeight)
        app_.fleet.BoatInView = true;
    if (autoTrace || !form_.Check6.Value()) DrawWake(boat, point, at);
}

void ReplayFrame::PlaceCrossWindLine(int boat, const ScreenPoint& at) {
    LineObject& bar = form_.Bar[boat - 1];
    const bool visible = form_.Check4.Value() && form_.Option3.Value();
    bar.SetVisible(visible);
    if (!visible) return;
    const double side = app_.view.MapHeight;
    const double d = WrapDifference(app_.windNow.WindNow - app_.view.ScreenUpDirection);
    if (d == 90) {
        bar.Place(at.X, 0, at.X, side);
        return;
    }
    const double slope = std::tan(d * DegToRad);
    const double atLeftEdge = at.Y - slope * at.X;
    bar.Place(0, atLeftEdge, side, slope * side + atLeftEdge);
}

void ReplayFrame::DrawNameLabel(int boat, double x, double y) {
    Surface& map = form_.Picture1;
    map.ForeColor = app_.display.BoatColour[At(boat)];
    map.FontSize = 9 * app_.settings.FontScale;
    map.PrintAt(x, y, NameAndSpeed(app_, boat));
}

void ReplayFrame::DrawWake(int boat, int point, const ScreenPoint& at) {
    const auto& lat = app_.tracks.TrackLat[At(boat)];
    const auto& lon = app_.tracks.TrackLon[At(boat)];
    const auto& times = app_.tracks.TrackTime[At(boat)];
    std::vector<Point> wake{{at.X, at.Y}};
    for (int j = point; j > std::max(0, point - WakePoints); --j) {
        const ScreenPoint p = MapToScreen(app_.view, lat[At(j)], lon[At(j)]);
        wake.push_back({p.X, p.Y});
        form_.Picture1.Circle(p.X, p.Y, 1, White);
        if (j < point && std::abs(app_.clock.ReplayTime - times[At(j)]) > WakeSeconds) break;
    }
    form_.Picture1.Polyline(wake, White);
}

void ReplayFrame::UpdateBoatPanel() {
    if (const auto start = ParseDateTime(app_.race.StartTimeText))
        form_.Text1.SetText(DateTimeText(*start + FloorToInt(app_.clock.ReplayTime)));
    for (int boat = 1; boat <= app_.race.BoatCount; ++boat) UpdateBoatRow(boat);
}

void ReplayFrame::UpdateBoatRow(int boat) {
    const int row = boat - 1;
    Surface& panel = form_.Picture8;
    const double left = form_.Text5[0].Left() + form_.Text5[0].Width() + 2;
    const double top = form_.Bnam[row].Top();
    const double speed = app_.fleet.BoatSpeedNow[At(boat)];
    const auto wipe = [&] { panel.FilledBox(left, top, left + 150, top + 13, ButtonFace); };
    if (app_.fleet.BoatLatNow[At(boat)] > 0) {
        if (speed > 0 && speed != app_.fleet.BoatSpeedShown[At(boat)]) {
            wipe();
            const double right = left + speed * app_.display.SpeedBarScale;
            const Colour colour = app_.display.BoatColour[At(boat)];
            if (form_.Bnam[row].Value())
                panel.FilledBox(left, top, right, top + 9, colour);
            else
                panel.FilledBox(left, top + 4, right, top + 5, colour);
            form_.Text6[row].SetText(WholeText(app_.fleet.TrueWindAngle[At(boat)]));
            form_.Text5[row].SetText(SpeedText(speed));
        }
    } else if (!form_.Text5[row].Text().empty()) {
        wipe();
        form_.Text6[row].SetText("");
        form_.Text5[row].SetText("");
    }
    app_.fleet.BoatSpeedShown[At(boat)] = speed;
}

}  // namespace keelview
