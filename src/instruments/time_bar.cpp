#include "instruments/time_bar.h"

#include <algorithm>
#include <cmath>

#include "base/angles.h"
#include "base/numbers.h"
#include "instruments/time_axis.h"

namespace keelview {

namespace {

constexpr Colour UpwindColour = White;
constexpr Colour DownwindColour = Rgb(192, 192, 192);
constexpr Colour StartFinishColour = Rgb(0, 255, 0);
constexpr double ZoneLeft = 8.0;
constexpr double ZoneRight = 20.0;
constexpr double BarRight = 30.0;
constexpr double RangeRight = 6.0;
/// Every zone reaches up to here, and each later one lies over the earlier ones.
constexpr int ZoneTop = 50;

}  // namespace

TimeBar::TimeBar(AppState& app, RaceDisp& form) : app_(app), form_(form) {}

void TimeBar::DrawTimeBar() {
    Surface& bar = form_.PicTimeBar;
    bar.Cls();
    double& scale = app_.display.GraphTimeScale;
    scale = GraphTimeScaleOf(app_.race, bar.Height());
    if (scale == 0.0) return;
    DrawZones();
    for (const double y : {TimeToY(app_.race, scale, 0), TimeAxisMargin})
        bar.Line(0, y, BarRight, y, StartFinishColour);
}

// The zones are boxes from each point's row to ZoneTop, painted in the order of time. What stays to be seen
// is the last box that covers a row, so the walk goes backward and paints the rows not painted yet: a track
// of any length costs no more boxes than the bar has rows.
void TimeBar::DrawZones() {
    Surface& bar = form_.PicTimeBar;
    const int bottom = FloorToInt(bar.Height());
    const auto& times = app_.tracks.TrackTime;
    const int count = times.size() > 1 ? app_.tracks.TrackPointCount[1] : 0;
    int first = ZoneTop + 1;  // rows first to last are painted
    int last = ZoneTop;
    for (int point = count; point >= 2; --point) {
        const auto i = static_cast<std::size_t>(point);
        const double exact = TimeToY(app_.race, app_.display.GraphTimeScale, times[1][i]);
        const int y = std::clamp(FloorToInt(exact + 0.5), 0, bottom);
        const int top = std::min(y, ZoneTop);
        const int low = std::max(y, ZoneTop);
        if (top >= first && low <= last) continue;
        const double offWind = WrapDifference(app_.tracks.TrackCourse[1][i] - app_.race.WindDirection);
        const Colour colour = std::abs(offWind) < 90 ? UpwindColour : DownwindColour;
        if (top < first) bar.FilledBox(ZoneLeft, top, ZoneRight, first - 1, colour);
        if (low > last) bar.FilledBox(ZoneLeft, last + 1, ZoneRight, low, colour);
        first = std::min(first, top);
        last = std::max(last, low);
    }
}

void TimeBar::PlaceMark(double time) {
    const double y = TimeToY(app_.race, app_.display.GraphTimeScale, time);
    form_.Line5.Place(0, y, BarRight, y);
}

void TimeBar::MarkRange(double fromY, double toY) {
    WipeRange();
    form_.PicTimeBar.FilledBox(0, fromY, RangeRight, toY, Yellow);
}

void TimeBar::WipeRange() {
    Surface& bar = form_.PicTimeBar;
    bar.FilledBox(0, 0, RangeRight, bar.Height(), bar.BackColor);
}

}  // namespace keelview
